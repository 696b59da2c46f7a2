#pragma once

namespace text {

/// Whether it is one of the ten digits of ASCII, whatever the locale.
constexpr bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }

} // namespace text
