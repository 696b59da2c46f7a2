#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace ModPub {

/// The pieces one behind the other, in one allocation: most statements are a value between two of the rule's texts.
inline std::string Joined(std::initializer_list<std::string_view> pieces) {
    std::size_t size = 0;
    for (const std::string_view piece : pieces) {
        size += piece.size();
    }
    std::string text;
    text.reserve(size);
    for (const std::string_view piece : pieces) {
        text.append(piece);
    }
    return text;
}

} // namespace ModPub
