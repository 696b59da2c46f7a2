#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

/// What every room asks of the operating system. Names and texts are UTF-8 on every platform.
namespace os {

/// The path that a name stands for; where names are bytes, these very bytes.
inline std::filesystem::path PathOf(std::string_view name) {
    return {std::u8string_view(reinterpret_cast<const char8_t*>(name.data()), name.size())};
}

/// The name of a path.
inline std::string NameOf(const std::filesystem::path& path) {
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}

/// std::fopen by a name in UTF-8: null, and the reason in errno, when it fails.
std::FILE* OpenFile(const std::string& name, const char* mode);

/// Gives the file `from` the name `to`, in place of a file that has it. The reason when that fails.
std::error_code Rename(const std::string& from, const std::string& to);

} // namespace os
