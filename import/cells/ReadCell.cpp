#include "import/cells/ReadCell.h"

#include "import/cells/Characters.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace importing {
namespace {

/// The errors of a spreadsheet's formulas (ECMA-376 part 1, 18.17.2.7).
constexpr std::array<std::string_view, 7> errors = {"#DIV/0!", "#N/A", "#NAME?", "#NULL!", "#NUM!", "#REF!", "#VALUE!"};

} // namespace

std::optional<Reading> RefuseUnlessTextOrNumber(const Cell& cell) {
    switch (cell.kind) {
    case Cell::Kind::error:
        return Reading::Refuse({message::cellError, {cell.text}});
    case Cell::Kind::noValue:
        return Reading::Refuse({message::cellNoValue, {cell.text}});
    case Cell::Kind::noDate:
        return Reading::Refuse({message::cellNoDate, {cell.text}});
    case Cell::Kind::boolean:
    case Cell::Kind::date:
        return Reading::Refuse({message::cellOfOtherKind, {cell.text}});
    case Cell::Kind::text:
        // As a file of texts alone has them, and cells that were formatted as text before a formula was typed.
        if (std::ranges::find(errors, TrimBlanks(cell.text)) != errors.end()) {
            return Reading::Refuse({message::cellError, {cell.text}});
        }
        if (cell.text.starts_with('=')) {
            return Reading::Refuse({message::cellNoValue, {cell.text}});
        }
        break;
    case Cell::Kind::empty:
    case Cell::Kind::number:
        break;
    }
    return std::nullopt;
}

} // namespace importing
