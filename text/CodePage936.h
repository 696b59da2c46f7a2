#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

/// Whether code page 936 (simplified Chinese), in which a Chinese account keeps its char and varchar texts, has the
/// character.
bool InCodePage936(char32_t character) noexcept;

/// Where the first character stands that the code page lacks; npos without any. A byte that begins no character is one.
std::size_t FirstOutsideCodePage936(std::string_view text) noexcept;

/// The text as the code page holds it: "?" for each UTF-16 unit of what it lacks.
std::string ThroughCodePage936(std::string_view text);

} // namespace text
