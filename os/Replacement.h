#pragma once

#include <string>

namespace os {

/// A file that is written beside another and takes its place when it is complete: whoever opens the other one finds it
/// as it was or wholly new. What is no file, a pipe or a device, is written as it stands.
class Replacement {
public:
    /// @param name the file to replace or to make (UTF-8)
    explicit Replacement(std::string name);
    /// Removes what was written unless it was kept.
    ~Replacement();
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    /// The file to write: NAME.part, or NAME itself where that is no file. Links are followed.
    const std::string& path() const noexcept { return path_; }
    /// Puts what was written in its place. Throws text::Fault.
    void Keep();

private:
    std::string name_;
    /// What is replaced: where links lead to.
    std::string target_;
    std::string path_;
};

} // namespace os
