#pragma once

#include <cstddef>
#include <filesystem>

namespace test {

/// A pipe for the trace of a program (`--trace`). It holds little, so that the program waits near the place that was
/// read to, however fast it and the machine are.
class TracePipe {
public:
    /// The bytes by which the program may be ahead of what was read; a line of the trace that it begins with included.
    static constexpr std::size_t ahead = 8192;

    /// Makes the pipe under this path, before the program starts.
    explicit TracePipe(const std::filesystem::path& path);
    ~TracePipe();
    TracePipe(const TracePipe&) = delete;
    TracePipe& operator=(const TracePipe&) = delete;

    /// Reads so many bytes, fewer where the trace ends before. @return how many
    std::size_t Read(std::size_t bytes) const;
    /// Reads to the trace's end. @return how many bytes
    std::size_t ReadAll() const;

private:
    int pipe_;
};

} // namespace test
