#include "import/cells/ReadCode.h"

#include "ModPub/Numbers.h"
#include "import/cells/Characters.h"
#include "import/cells/ReadCell.h"
#include "text/Utf16.h"

#include <string>
#include <string_view>
#include <utility>

namespace importing {
namespace {

/// Whether `text` is what a spreadsheet makes of a long row of digits: "6.9E+12".
bool IsExponent(std::string_view text) {
    const std::size_t letter = text.find_first_of("eE");
    if (letter == 0 || letter == std::string_view::npos || letter + 2 >= text.size() || text[letter + 1] != '+') {
        return false;
    }
    return text.substr(0, letter).find_first_not_of("0123456789.") == std::string_view::npos &&
           text.substr(letter + 2).find_first_not_of("0123456789") == std::string_view::npos;
}

Reading ReadUnknown(const Cell& cell, const std::string& code, const CodeRules& rules) {
    if (const std::optional<std::string> zeros = rules.known->WithLeadingZeros(code)) {
        return rules.fixLeadingZeros ? Reading::Take(*zeros)
                                     : Reading::Refuse({message::codeLeadingZeros, {cell.text, *zeros}}, *zeros);
    }
    if (const std::optional<std::string> digits = rules.known->WithDigitForLetter(code)) {
        return Reading::Refuse({message::codeDigitForLetter, {cell.text, *digits}}, *digits);
    }
    if (const std::optional<KnownCodes::Known> nearest = rules.known->Nearest(code)) {
        return Reading::Refuse({message::codeUnknownNear, {cell.text, nearest->code, nearest->name}}, nearest->code);
    }
    return Reading::Refuse({message::codeUnknown, {cell.text}});
}

} // namespace

Reading ReadCode(const Cell& cell, const CodeRules& rules) {
    if (std::optional<Reading> refused = RefuseUnlessTextOrNumber(cell)) {
        return *std::move(refused);
    }
    std::string code(TrimBlanks(ToHalfWidth(TrimBlanks(cell.text))));
    if (code.empty()) {
        return Reading::Take({});
    }
    if (code.find('\'') != std::string::npos) {
        return Reading::Refuse({message::codeQuote, {cell.text}});
    }
    if (IsExponent(code)) {
        return Reading::Refuse({message::codeExponent, {cell.text}});
    }
    if (text::Utf16Length(code) > rules.length) {
        return Reading::Refuse({message::codeLong, {cell.text, std::to_string(rules.length)}});
    }
    if (rules.known == nullptr) {
        return Reading::Take(std::move(code));
    }
    std::optional<std::string> known = rules.known->Find(code);
    if (!known) {
        return ReadUnknown(cell, code, rules);
    }
    // As a number, 1 may be what is left of 01.
    const std::optional<std::string> zeros =
        cell.kind == Cell::Kind::number ? rules.known->AlsoWithLeadingZeros(*known) : std::nullopt;
    return zeros ? Reading::Refuse({message::codeLeadingZerosAmbiguous, {cell.text, *zeros}})
                 : Reading::Take(*std::move(known));
}

} // namespace importing
