#pragma once

#include <string>
#include <string_view>

namespace refhost {

/// `text` as a T-SQL literal, quotes inside doubled.
inline std::string SqlText(std::string_view text) {
    std::string literal = "N'";
    for (std::size_t quote = text.find('\''); quote != std::string_view::npos; quote = text.find('\'')) {
        literal.append(text.substr(0, quote + 1)).append("'");
        text.remove_prefix(quote + 1);
    }
    return literal.append(text).append("'");
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
