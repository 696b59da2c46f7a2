#include "os/Replacement.h"

#include "os/FileError.h"
#include "os/Files.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace os {

namespace fs = std::filesystem;

Replacement::Replacement(std::string name) : name_(std::move(name)), target_(name_), path_(name_) {
    std::error_code unknown;
    const fs::path path = PathOf(name_);
    const fs::file_status status = fs::status(path, unknown);
    if (fs::is_symlink(path, unknown) && fs::exists(status)) {
        target_ = NameOf(fs::canonical(path, unknown));
    }
    if (!fs::exists(status) || fs::is_regular_file(status)) {
        path_ = target_ + ".part";
    }
}

Replacement::~Replacement() {
    if (path_ != target_) {
        std::error_code unknown;
        fs::remove(PathOf(path_), unknown);
    }
}

void Replacement::Keep() {
    if (path_ == target_) {
        return;
    }
    std::error_code unknown;
    if (const fs::file_status status = fs::status(PathOf(target_), unknown); fs::exists(status)) {
        fs::permissions(PathOf(path_), status.permissions(), unknown);
    }
    if (const std::error_code reason = Rename(path_, target_)) {
        throw FileFault(name_, reason);
    }
    path_ = target_;
}

} // namespace os
