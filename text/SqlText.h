#pragma once

#include <string>
#include <string_view>

namespace refhost {

/// `text` as a T-SQL literal, quotes inside doubled.
inline std::string SqlText(std::string_view text) {
    std::string literal = "N'";
    for (const char c : text) {
        literal.append(c == '\'' ? 2 : 1, c);
    }
    return literal.append("'");
}

/// `name` as T-SQL writes it between brackets, brackets that close inside doubled.
inline std::string SqlName(std::string_view name) {
    std::string bracketed = "[";
    for (const char c : name) {
        bracketed.append(c == ']' ? 2 : 1, c);
    }
    return bracketed.append("]");
}

} // namespace refhost
