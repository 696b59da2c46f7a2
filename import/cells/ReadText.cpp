#include "import/cells/ReadText.h"

#include "import/cells/Characters.h"
#include "import/cells/ReadCell.h"
#include "text/Utf16.h"
#include "text/Utf8.h"

#include <string_view>
#include <utility>

namespace importing {

Reading ReadText(const Cell& cell, const TextRules& rules, const CodePage& codePage) {
    // A date is shown as one, so it is taken as its text.
    if (cell.kind != Cell::Kind::date) {
        if (std::optional<Reading> refused = RefuseUnlessTextOrNumber(cell)) {
            return *std::move(refused);
        }
    }
    const std::string_view text = TrimBlanks(cell.text);
    if (const std::size_t length = text::Utf16Length(text); length > rules.length) {
        return Reading::Refuse({Message::textLong, {std::to_string(length), std::to_string(rules.length)}});
    }
    if (rules.compared && text.find('\'') != std::string_view::npos) {
        return Reading::Refuse({Message::textQuote, {std::string(text)}});
    }
    for (std::size_t at = 0; at < text.size();) {
        const text::Utf8Character character = text::ReadUtf8(text, at);
        if (!codePage(character.codePoint)) {
            return Reading::Refuse({Message::textCodePage, {std::string(text.substr(at, character.length))}});
        }
        at += character.length;
    }
    return Reading::Take(std::string(text));
}

} // namespace importing
