#include "import/cells/ReadCell.h"

namespace importing {

std::optional<Reading> RefuseUnlessTextOrNumber(const Cell& cell) {
    switch (cell.kind) {
    case Cell::Kind::error:
        return Reading::Refuse({Message::cellError, {cell.text}});
    case Cell::Kind::noValue:
        return Reading::Refuse({Message::cellNoValue, {cell.text}});
    case Cell::Kind::noDate:
        return Reading::Refuse({Message::cellNoDate, {cell.text}});
    case Cell::Kind::boolean:
    case Cell::Kind::date:
        return Reading::Refuse({Message::cellOfOtherKind, {cell.text}});
    case Cell::Kind::empty:
    case Cell::Kind::text:
    case Cell::Kind::number:
        break;
    }
    return std::nullopt;
}

} // namespace importing
