#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace test {

/// The Chinese text literals of C++ source, in order; adjacent ones are one, comments are left out. "Chinese" is every
/// literal that holds more than ASCII.
std::vector<std::string> ChineseLiterals(std::string_view source);

/// The sources of a folder (*.h, *.cpp), sorted by path.
std::vector<std::filesystem::path> Sources(const std::filesystem::path& folder);

} // namespace test
