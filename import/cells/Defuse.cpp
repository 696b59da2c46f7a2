#include "import/cells/Defuse.h"

namespace importing {
namespace {

bool IsDangerous(std::string_view text) noexcept {
    constexpr std::string_view beginnings = "=+-@\t\r";
    const std::size_t first = text.find_first_not_of('\'');
    return first != std::string_view::npos && beginnings.find(text[first]) != std::string_view::npos;
}

} // namespace

std::string Defused(std::string_view text) { return (IsDangerous(text) ? "'" : "") + std::string(text); }

std::string_view Undefused(std::string_view text) noexcept {
    return text.starts_with('\'') && IsDangerous(text) ? text.substr(1) : text;
}

} // namespace importing
