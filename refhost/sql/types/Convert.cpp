#include "refhost/sql/types/Convert.h"

#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"
#include "refhost/sql/types/ExactNumber.h"
#include "text/CodePage936.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace refhost::sql {
namespace {

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

[[noreturn]] void FailDisallowed(Base from, Base to) {
    Fail(257, "Implicit conversion from data type {} to {} is not allowed. Use the CONVERT function to run this query.",
         NameOf(from), NameOf(to));
}

[[noreturn]] void FailText(std::string_view text, Base from, Base to) {
    Fail(245, "Conversion failed when converting the {} value '{}' to data type {}.", NameOf(from), text, NameOf(to));
}

[[noreturn]] void FailNumber(Base from, Base to) {
    Fail(8114, "Error converting data type {} to {}.", NameOf(from), NameOf(to));
}

[[noreturn]] void FailOverflow(Base to) {
    Fail(8115, "Arithmetic overflow error converting expression to data type {}.", NameOf(to));
}

[[noreturn]] void FailTextOverflow(std::string_view text, Base from, Base to) {
    const bool whole = to != Base::smallint && to != Base::tinyint;
    Fail(whole ? Native(248) : Native(244), "The conversion of the {} value '{}' overflowed an {} column.",
         NameOf(from), text,
         whole                  ? NameOf(to)
         : to == Base::smallint ? "INT2"
                                : "INT1");
}

std::int64_t IntegerFromText(std::string_view text, Base from, Base to) {
    std::string_view digits = Trimmed(text);
    if (to == Base::bit) {
        if (EqualNames(digits, "true")) {
            return 1;
        }
        if (EqualNames(digits, "false")) {
            return 0;
        }
    }
    if (digits.empty()) {
        return 0;
    }
    if (digits.front() == '+' && digits.size() > 1 && digits[1] != '-') {
        digits.remove_prefix(1);
    }
    std::int64_t value = 0;
    const auto [end, code] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (end != digits.data() + digits.size() || code == std::errc::invalid_argument) {
        if (to == Base::bigint) {
            FailNumber(from, to);
        }
        FailText(text, from, to);
    }
    if (code == std::errc::result_out_of_range && to == Base::bigint) {
        FailOverflow(to);
    }
    if (code == std::errc::result_out_of_range) {
        FailTextOverflow(text, from, to);
    }
    if (to == Base::bit) {
        return value != 0 ? 1 : 0;
    }
    if (!IsInRange(value, to)) {
        FailTextOverflow(text, from, to);
    }
    return value;
}

double RealFromText(std::string_view text, Base from, Base to) {
    std::string_view digits = Trimmed(text);
    if (digits.empty()) {
        return 0;
    }
    if (digits.front() == '+' && digits.size() > 1 && digits[1] != '-') {
        digits.remove_prefix(1);
    }
    double value = 0;
    const auto [end, code] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    // from_chars also knows "inf" and "nan", which are no numbers to SQL Server.
    if (code != std::errc() || end != digits.data() + digits.size() || !std::isfinite(value)) {
        FailNumber(from, to);
    }
    return value;
}

ExactNumber MoneyFromText(std::string_view text) {
    std::string digits;
    for (const char c : Trimmed(text)) {
        if (c != ',' && c != '$') {
            digits += c;
        }
    }
    if (digits.empty()) {
        return ExactNumber();
    }
    const std::optional<ExactNumber> number = ExactNumber::Parse(digits);
    if (!number) {
        Fail(235, "Cannot convert a char value to money. The char value has incorrect syntax.");
    }
    return *number;
}

/// Bytes as a whole number, the last one lowest.
std::int64_t IntegerFromBytes(std::string_view bytes) {
    std::uint64_t value = 0;
    for (const char c : bytes.substr(bytes.size() > 8 ? bytes.size() - 8 : 0)) {
        value = (value << 8U) | static_cast<unsigned char>(c);
    }
    return static_cast<std::int64_t>(value);
}

std::string BytesFromInteger(std::int64_t value, std::size_t size) {
    std::string bytes(size, '\0');
    auto rest = static_cast<std::uint64_t>(value);
    for (std::size_t i = size; i-- > 0 && rest != 0; rest >>= 8U) {
        bytes[i] = static_cast<char>(rest & 0xffU);
    }
    return bytes;
}

/// A double as SQL Server shows it: six digits, an exponent of three; style 1 eight digits, style 2 sixteen.
std::string RealText(double value, int style) {
    std::string text = style == 0 ? fmt::format("{:.6g}", value) : fmt::format("{:.{}e}", value, style == 1 ? 7 : 15);
    const std::size_t exponent = text.find('e');
    if (exponent != std::string::npos && text.size() - exponent == 4) {
        text.insert(exponent + 2, 1, '0');
    }
    return text;
}

std::string MoneyText(const ExactNumber& value, int style) {
    std::string text = value.Rescaled(style == 2 ? 4 : 2).ToText();
    if (style == 1) {
        const std::size_t sign = value.IsNegative() ? 1 : 0;
        for (std::size_t at = text.find('.'); at > sign + 3;) {
            at -= 3;
            text.insert(at, 1, ',');
        }
    }
    return text;
}

std::string HexText(std::string_view bytes, bool prefix) {
    std::string text = prefix ? "0x" : "";
    for (const char c : bytes) {
        text += fmt::format("{:02X}", static_cast<unsigned char>(c));
    }
    return text;
}

std::string BytesFromHex(std::string_view text, int style, Base from, Base to) {
    if (style == 1) {
        if (text.size() < 2 || (text.substr(0, 2) != "0x" && text.substr(0, 2) != "0X")) {
            FailNumber(from, to);
        }
        text.remove_prefix(2);
    }
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        unsigned value = 0;
        const char* end = text.data() + std::min(i + 2, text.size());
        if (text.size() % 2 != 0 || std::from_chars(text.data() + i, end, value, 16).ptr != end) {
            FailNumber(from, to);
        }
        bytes += static_cast<char>(value);
    }
    return bytes;
}

/// Cuts a text to `length` units of measure; never inside a character.
std::string_view CutText(std::string_view text, std::size_t length, bool national) {
    std::size_t position = 0;
    std::size_t measured = 0;
    while (position < text.size()) {
        std::size_t next = position;
        const char32_t codePoint = NextCodePoint(text, next);
        const bool wide = national ? codePoint >= 0x10000 && codePoint < 0x110000 : codePoint >= 0x80;
        measured += wide ? 2 : 1;
        if (measured > length) {
            break;
        }
        position = next;
    }
    return text.substr(0, position);
}

void FitText(Cell& cell, const Type& to, Surplus surplus) {
    if (to.length == Type::maxLength || to.length == 0) {
        return;
    }
    const bool national = IsNational(to.base);
    const auto length = static_cast<std::size_t>(to.length);
    // No text measures more than twice its bytes, and none in UTF-16 more than its bytes.
    std::size_t measured = cell.Bytes().size();
    if (measured > length || !national || IsFixedLength(to.base)) {
        measured = MeasuredLength(cell.Bytes(), national);
    }
    if (measured > length) {
        const std::string_view kept = CutText(cell.Bytes(), length, national);
        // Blanks are the one surplus that a column drops in silence.
        if (surplus == Surplus::refuse && cell.Bytes().find_first_not_of(' ', kept.size()) != std::string_view::npos) {
            Fail(8152, "String or binary data would be truncated.");
        }
        cell.Shorten(kept.size());
        measured = length;
    }
    if (IsFixedLength(to.base) && measured < length) {
        std::string filled(cell.Bytes());
        filled.append(length - measured, ' ');
        cell.SetText(std::move(filled));
    }
}

void FitBytes(Cell& cell, const Type& to, Surplus surplus) {
    if (to.length == Type::maxLength || to.length == 0) {
        return;
    }
    const auto length = static_cast<std::size_t>(to.length);
    if (cell.Bytes().size() > length) {
        if (surplus == Surplus::refuse) {
            Fail(8152, "String or binary data would be truncated.");
        }
        cell.Shorten(length);
    } else if (IsFixedLength(to.base) && cell.Bytes().size() < length) {
        std::string filled(cell.Bytes());
        filled.append(length - filled.size(), '\0');
        cell.SetBlob(std::move(filled));
    }
}

std::int64_t IntegerFromReal(double value, Base to) {
    const double whole = to == Base::bit ? (value != 0 ? 1.0 : 0.0) : std::trunc(value);
    const bool fits = whole >= -9.2233720368547758e18 && whole < 9.2233720368547758e18;
    const auto result = fits ? static_cast<std::int64_t>(whole) : 0;
    if (to == Base::bigint || to == Base::bit) {
        if (!fits) {
            FailOverflow(to);
        }
    } else if (!fits || !IsInRange(result, to)) {
        Fail(232, "Arithmetic overflow error for type {}, value = {:.6f}.", NameOf(to), value);
    }
    return result;
}

Ticks TicksFromDays(double days, Base to) {
    if (!(days > -1e6 && days < 4e6)) {
        FailOverflow(to);
    }
    const double whole = std::floor(days);
    const Ticks time = std::llround((days - whole) * static_cast<double>(ticksPerDay));
    return RoundDate((static_cast<std::int64_t>(whole) + serverDayZero) * ticksPerDay + time, {to, 0, 0, 0});
}

double DaysFromTicks(Ticks ticks) {
    return static_cast<double>(ticks) / static_cast<double>(ticksPerDay) - static_cast<double>(serverDayZero);
}

ExactNumber ExactOf(std::string_view text) { return ExactNumber::Parse(text).value_or(ExactNumber()); }

void ToIntegerFamily(Cell& cell, const Type& from, const Type& to) {
    switch (FamilyOf(from)) {
    case Family::text:
        cell.SetInteger(IntegerFromText(cell.Bytes(), from.base, to.base));
        return;
    case Family::integer:
        if (to.base == Base::bit) {
            cell.integer = cell.integer != 0 ? 1 : 0;
        }
        CheckRange(cell.integer, to.base, from.base);
        return;
    case Family::exact: {
        const ExactNumber number = ExactOf(cell.Bytes());
        if (to.base == Base::bit) {
            cell.SetInteger(number.IsZero() ? 0 : 1);
            return;
        }
        // Money rounds, decimal is cut.
        const bool money = from.base == Base::money || from.base == Base::smallmoney;
        const std::optional<std::int64_t> whole = (money ? number.Rescaled(0) : number).ToInteger();
        if (!whole) {
            FailOverflow(to.base);
        }
        CheckRange(*whole, to.base, from.base);
        cell.SetInteger(*whole);
        return;
    }
    case Family::real:
        cell.SetInteger(IntegerFromReal(cell.real, to.base));
        return;
    case Family::date: {
        if (from.base == Base::date || from.base == Base::datetime2) {
            FailDisallowed(from.base, to.base);
        }
        const auto days = static_cast<std::int64_t>(std::floor(DaysFromTicks(cell.integer) + 0.5));
        CheckRange(days, to.base, from.base);
        cell.SetInteger(days);
        return;
    }
    case Family::binary: {
        const std::int64_t value = IntegerFromBytes(cell.Bytes());
        if (to.base == Base::bit) {
            cell.SetInteger(value != 0 ? 1 : 0);
        } else if (to.base == Base::integer) {
            cell.SetInteger(static_cast<std::int32_t>(value));
        } else if (to.base == Base::smallint) {
            cell.SetInteger(static_cast<std::int16_t>(value));
        } else {
            cell.SetInteger(to.base == Base::tinyint ? static_cast<std::uint8_t>(value) : value);
        }
        return;
    }
    default:
        FailDisallowed(from.base, to.base);
    }
}

void ToExactFamily(Cell& cell, const Type& from, const Type& to) {
    const bool money = to.base == Base::money || to.base == Base::smallmoney;
    ExactNumber number;
    switch (FamilyOf(from)) {
    case Family::text:
        if (money) {
            number = MoneyFromText(cell.Bytes());
        } else {
            const std::optional<ExactNumber> parsed = ExactNumber::Parse(Trimmed(cell.Bytes()));
            if (!parsed) {
                FailNumber(from.base, to.base);
            }
            number = *parsed;
        }
        break;
    case Family::integer:
        number = ExactNumber(cell.integer);
        break;
    case Family::exact:
        number = ExactOf(cell.Bytes());
        break;
    case Family::real: {
        const std::optional<ExactNumber> parsed = ExactNumber::FromDouble(cell.real);
        if (!parsed) {
            FailOverflow(to.base);
        }
        number = *parsed;
        break;
    }
    case Family::date:
        number = ExactNumber::FromDouble(DaysFromTicks(cell.integer)).value_or(ExactNumber());
        break;
    case Family::binary: {
        // The bytes are the money's own: ten-thousandths in a 64-bit number.
        if (!money) {
            FailDisallowed(from.base, to.base);
        }
        number = Divide(ExactNumber(IntegerFromBytes(cell.Bytes())), ExactNumber(10000), 4);
        break;
    }
    default:
        FailDisallowed(from.base, to.base);
    }
    cell.SetText(FitExact(number, to, from.base));
}

void ToRealFamily(Cell& cell, const Type& from, const Type& to) {
    switch (FamilyOf(from)) {
    case Family::text:
        cell.SetReal(RealFromText(cell.Bytes(), from.base, to.base));
        break;
    case Family::integer:
        cell.SetReal(static_cast<double>(cell.integer));
        break;
    case Family::exact:
        cell.SetReal(ExactOf(cell.Bytes()).ToDouble());
        break;
    case Family::real:
        break;
    case Family::date:
        cell.SetReal(DaysFromTicks(cell.integer));
        break;
    default:
        FailDisallowed(from.base, to.base);
    }
    if (to.base == Base::real) {
        if (std::fabs(cell.real) > double{std::numeric_limits<float>::max()}) {
            FailOverflow(to.base);
        }
        cell.real = double{static_cast<float>(cell.real)};
    }
}

void ToDateFamily(Cell& cell, const Type& from, const Type& to, int style) {
    switch (FamilyOf(from)) {
    case Family::text:
        cell.SetInteger(ParseDate(cell.Bytes(), from.base, to, style));
        return;
    case Family::date:
        cell.integer = RoundDate(cell.integer, to);
        return;
    default:
        break;
    }
    if (to.base == Base::date || to.base == Base::datetime2 || FamilyOf(from) == Family::binary) {
        FailDisallowed(from.base, to.base);
    }
    if (FamilyOf(from) == Family::integer) {
        cell.SetInteger(TicksFromDays(static_cast<double>(cell.integer), to.base));
    } else if (FamilyOf(from) == Family::real) {
        cell.SetInteger(TicksFromDays(cell.real, to.base));
    } else {
        cell.SetInteger(TicksFromDays(ExactOf(cell.Bytes()).ToDouble(), to.base));
    }
}

/// A number or date that is longer than the text it shall become.
void FitShown(Cell& cell, const Type& from, const Type& to) {
    if (to.length > 0 && cell.Bytes().size() > static_cast<std::size_t>(to.length)) {
        const Family family = FamilyOf(from);
        const bool smallInteger = family == Family::integer && from.base != Base::bigint;
        if (smallInteger && !IsNational(to.base)) {
            cell.SetText("*"); // SQL Server's answer for whole numbers in short varchar
        } else if (family != Family::date) {
            FailOverflow(to.base);
        }
    }
}

void ToTextFamily(Cell& cell, const Type& from, const Type& to, int style, Surplus surplus) {
    switch (FamilyOf(from)) {
    case Family::text:
        if (IsNational(from.base) && !IsNational(to.base) &&
            text::FirstOutsideCodePage936(cell.Bytes()) != std::string_view::npos) {
            cell.SetText(text::ThroughCodePage936(cell.Bytes()));
        }
        break;
    case Family::guid:
        break;
    case Family::integer:
        cell.SetText(std::to_string(cell.integer));
        break;
    case Family::exact:
        if (from.base == Base::money || from.base == Base::smallmoney) {
            cell.SetText(MoneyText(ExactOf(cell.Bytes()), style));
        }
        break;
    case Family::real:
        cell.SetText(RealText(cell.real, style));
        break;
    case Family::date:
        cell.SetText(FormatDate(cell.integer, from, style));
        if (!IsNational(to.base) && text::FirstOutsideCodePage936(cell.Bytes()) != std::string_view::npos) {
            cell.SetText(text::ThroughCodePage936(cell.Bytes())); // names of months in Arabic
        }
        break;
    case Family::binary:
        if (style != 0) {
            cell.SetText(HexText(cell.Bytes(), style == 1));
        } else if (IsNational(to.base)) {
            std::u16string units;
            for (std::size_t i = 0; i + 1 < cell.Bytes().size(); i += 2) {
                units += static_cast<char16_t>(static_cast<unsigned char>(cell.Bytes()[i]) |
                                               static_cast<unsigned char>(cell.Bytes()[i + 1]) << 8U);
            }
            cell.SetText(FromUtf16(units));
        }
        break;
    case Family::null:
        break;
    }
    cell.kind = Cell::Kind::text;
    if (FamilyOf(from) != Family::text && FamilyOf(from) != Family::binary) {
        FitShown(cell, from, to);
    }
    FitText(cell, to, surplus);
}

void ToBinaryFamily(Cell& cell, const Type& from, const Type& to, int style, Surplus surplus) {
    switch (FamilyOf(from)) {
    case Family::binary:
        break;
    case Family::integer: {
        const std::size_t size = from.base == Base::bigint     ? 8
                                 : from.base == Base::integer  ? 4
                                 : from.base == Base::smallint ? 2
                                                               : 1;
        std::string bytes = BytesFromInteger(cell.integer, size);
        if (cell.integer < 0 && size < 8) {
            bytes = BytesFromInteger(cell.integer & ((std::int64_t{1} << (8 * size)) - 1), size);
        }
        const auto length = static_cast<std::size_t>(std::max(to.length, 0));
        if (IsFixedLength(to.base) && bytes.size() < length) {
            bytes.insert(0, length - bytes.size(), '\0');
        } else if (to.length > 0 && bytes.size() > length) {
            bytes.erase(0, bytes.size() - length);
        }
        cell.SetBlob(std::move(bytes));
        break;
    }
    case Family::text:
        if (style == 1 || style == 2) {
            cell.SetBlob(BytesFromHex(cell.Bytes(), style, from.base, to.base));
        } else if (IsNational(from.base)) {
            std::string bytes;
            for (const char16_t unit : ToUtf16(cell.Bytes())) {
                bytes += static_cast<char>(unit & 0xffU);
                bytes += static_cast<char>(unit >> 8U);
            }
            cell.SetBlob(std::move(bytes));
        } else {
            cell.kind = Cell::Kind::blob;
        }
        break;
    default:
        FailDisallowed(from.base, to.base);
    }
    FitBytes(cell, to, surplus);
}

void ToGuid(Cell& cell, const Type& from, const Type& to) {
    if (FamilyOf(from) == Family::guid) {
        return;
    }
    if (FamilyOf(from) != Family::text) {
        FailDisallowed(from.base, to.base);
    }
    std::string_view text = Trimmed(cell.Bytes());
    if (text.size() == 38 && text.front() == '{' && text.back() == '}') {
        text = text.substr(1, 36);
    }
    std::string guid;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
        const char c = static_cast<char>(ToUpper(static_cast<unsigned char>(text[i])));
        if (dash ? c != '-' : !((c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'))) {
            break;
        }
        guid += c;
    }
    if (guid.size() != 36 || text.size() != 36) {
        Fail(8169, "Conversion failed when converting from a character string to uniqueidentifier.");
    }
    cell.SetText(std::move(guid));
}

} // namespace

std::size_t MeasuredLength(std::string_view text, bool national) {
    if (national) {
        return text::Utf16Length(text);
    }
    std::size_t bytes = 0;
    for (std::size_t position = 0; position < text.size();) {
        bytes += NextCodePoint(text, position) < 0x80 ? 1U : 2U;
    }
    return bytes;
}

std::string FitExact(const ExactNumber& number, const Type& to, Base from) {
    const std::string_view what = from == Base::null ? "expression" : NameOf(from);
    const ExactNumber rounded = number.Rescaled(to.scale);
    int whole = to.precision - to.scale;
    if (to.base != Base::decimal) {
        // money is a 64-bit number of ten-thousandths, smallmoney a 32-bit one.
        const ExactNumber units = rounded * ExactNumber(10000);
        const std::optional<std::int64_t> value = units.ToInteger();
        if (!value || (to.base == Base::smallmoney && *value != static_cast<std::int32_t>(*value))) {
            Fail(8115, "Arithmetic overflow error converting {} to data type {}.", what, NameOf(to.base));
        }
        return rounded.ToText();
    }
    whole = to.precision == 0 ? 38 : whole;
    if (rounded.WholeDigits() > whole) {
        Fail(8115, "Arithmetic overflow error converting {} to data type {}.", what, NameOf(to.base));
    }
    return rounded.ToText();
}

bool IsInRange(std::int64_t value, Base base) {
    switch (base) {
    case Base::tinyint:
        return value == static_cast<std::uint8_t>(value);
    case Base::smallint:
        return value == static_cast<std::int16_t>(value);
    case Base::integer:
        return value == static_cast<std::int32_t>(value);
    default:
        return true;
    }
}

void CheckRange(std::int64_t value, Base base, Base from) {
    if (IsInRange(value, base)) {
        return;
    }
    if (base != Base::integer && (from == Base::integer || from == Base::smallint || from == Base::tinyint)) {
        Fail(220, "Arithmetic overflow error for data type {}, value = {}.", NameOf(base), value);
    }
    FailOverflow(base);
}

void Convert(Cell& cell, const Type& from, const Type& to, int style, Surplus surplus) {
    if (cell.IsNull()) {
        return;
    }
    switch (FamilyOf(to)) {
    case Family::integer:
        return ToIntegerFamily(cell, from, to);
    case Family::exact:
        return ToExactFamily(cell, from, to);
    case Family::real:
        return ToRealFamily(cell, from, to);
    case Family::date:
        return ToDateFamily(cell, from, to, style);
    case Family::text:
        return ToTextFamily(cell, from, to, style, surplus);
    case Family::binary:
        return ToBinaryFamily(cell, from, to, style, surplus);
    case Family::guid:
        return ToGuid(cell, from, to);
    case Family::null:
        return;
    }
}

} // namespace refhost::sql
