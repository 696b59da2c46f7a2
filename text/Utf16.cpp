#include "text/Utf16.h"

namespace text {

std::size_t Utf16Length(std::string_view text) noexcept {
    std::size_t length = 0;
    for (std::size_t position = 0; position < text.size();) {
        const Utf8Character character = ReadUtf8(text, position);
        length += character.codePoint < 0x10000 ? 1 : 2;
        position += character.length;
    }
    return length;
}

} // namespace text
