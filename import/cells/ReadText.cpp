#include "import/cells/ReadText.h"

#include "import/cells/Characters.h"
#include "import/cells/ReadCell.h"
#include "text/CodePage936.h"
#include "text/Utf16.h"
#include "text/Utf8.h"

#include <string_view>
#include <utility>

namespace importing {

Reading ReadText(const Cell& cell, const TextRules& rules) {
    // A date is shown as one, so it is taken as its text.
    if (cell.kind != Cell::Kind::date) {
        if (std::optional<Reading> refused = RefuseUnlessTextOrNumber(cell)) {
            return *std::move(refused);
        }
    }
    const std::string_view text = TrimBlanks(cell.text);
    if (const std::size_t length = text::Utf16Length(text); length > rules.length) {
        return Reading::Refuse({message::textLong, {std::to_string(length), std::to_string(rules.length)}});
    }
    if (rules.compared && text.find('\'') != std::string_view::npos) {
        return Reading::Refuse({message::textQuote, {std::string(text)}});
    }
    if (const std::size_t at = text::FirstOutsideCodePage936(text); at != std::string_view::npos) {
        const std::size_t length = text::ReadUtf8(text, at).length;
        return Reading::Refuse({message::textCodePage, {std::string(text.substr(at, length))}});
    }
    return Reading::Take(std::string(text));
}

} // namespace importing
