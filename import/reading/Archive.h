#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace importing {

/// How much of an archive is read at most. A bomb is a small file whose parts unpack to gigabytes.
struct ArchiveBounds {
    /// All parts together, unpacked, in bytes.
    std::uint64_t unpacked = std::uint64_t{2} << 30;
    /// Parts of the archive.
    std::uint64_t parts = 10'000;
    /// Cells of one sheet, missing ones before a row's last included: 40 columns of the most rows that a sheet has.
    std::uint64_t cells = std::uint64_t{40} << 20;
};

/// A zip archive, as the Office Open XML packages are (ECMA-376, part 2). Its parts are read one at a time.
class Archive {
public:
    /// Throws UnreadableFile when `path` (UTF-8) is no zip archive or has too many parts.
    explicit Archive(const std::string& path, ArchiveBounds bounds = {});
    ~Archive();
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;

    const ArchiveBounds& bounds() const noexcept { return bounds_; }

    /// Whether there is a part of this name ("xl/workbook.xml"), letter case aside as packages have it.
    bool Has(const std::string& part) const;

    /// Begins to read a part. Throws UnreadableFile when it is not there or encrypted.
    void Open(const std::string& part);

    /// Reads on in the open part: at most `size` bytes into `buffer`; 0 at its end. Throws UnreadableFile when it is
    /// damaged or when more was unpacked than the bounds allow.
    std::size_t Read(char* buffer, std::size_t size);

private:
    struct Close {
        void operator()(void* file) const noexcept;
    };

    std::unique_ptr<void, Close> file_;
    ArchiveBounds bounds_;
    std::uint64_t unpacked_ = 0;
    std::string part_;
};

} // namespace importing
