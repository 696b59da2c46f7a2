#include "refhost/sql/store/Runtime.h"

#include "ModPub/Text.h"
#include "refhost/sql/store/AppliedRows.h"
#include "refhost/sql/types/CharacterOrder.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"
#include "text/Utf8.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace refhost::sql {
namespace {

/// The arguments and the result of a SQLite function.
class Call {
public:
    Call(sqlite3_context* context, sqlite3_value** arguments, int count)
        : context_(context), arguments_(arguments), count_(count) {}

    Runtime& GetRuntime() const { return *static_cast<Runtime*>(sqlite3_user_data(context_)); }
    int Count() const { return count_; }
    bool IsNull(int i) const { return sqlite3_value_type(arguments_[i]) == SQLITE_NULL; }
    bool AnyNull(int count) const {
        for (int i = 0; i < count; ++i) {
            if (IsNull(i)) {
                return true;
            }
        }
        return false;
    }
    std::int64_t Integer(int i) const { return sqlite3_value_int64(arguments_[i]); }
    double Real(int i) const { return sqlite3_value_double(arguments_[i]); }
    std::string_view Text(int i) const {
        const auto* text = static_cast<const char*>(sqlite3_value_type(arguments_[i]) == SQLITE_BLOB
                                                        ? sqlite3_value_blob(arguments_[i])
                                                        : static_cast<const void*>(sqlite3_value_text(arguments_[i])));
        return text == nullptr ? std::string_view()
                               : std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(arguments_[i])));
    }
    Type TypeAt(int i) const { return Unpack(Integer(i)); }

    Cell Read(int i) const {
        Cell cell;
        switch (sqlite3_value_type(arguments_[i])) {
        case SQLITE_INTEGER:
            cell.SetInteger(Integer(i));
            break;
        case SQLITE_FLOAT:
            cell.SetReal(Real(i));
            break;
        case SQLITE_TEXT:
            cell.PointTo(Cell::Kind::text, Text(i));
            break;
        case SQLITE_BLOB:
            cell.PointTo(Cell::Kind::blob, Text(i));
            break;
        default:
            break;
        }
        return cell;
    }

    void ReturnNull() { sqlite3_result_null(context_); }
    void Return(std::int64_t value) { sqlite3_result_int64(context_, value); }
    void Return(double value) { sqlite3_result_double(context_, value); }
    void Return(std::string_view text) {
        sqlite3_result_text64(context_, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    void ReturnBlob(std::string_view bytes) {
        sqlite3_result_blob64(context_, bytes.data(), bytes.size(), SQLITE_TRANSIENT);
    }
    void Return(const Cell& cell) {
        switch (cell.kind) {
        case Cell::Kind::null:
            return ReturnNull();
        case Cell::Kind::integer:
            return Return(cell.integer);
        case Cell::Kind::real:
            return Return(cell.real);
        case Cell::Kind::text:
            return Return(cell.Bytes());
        case Cell::Kind::blob:
            return ReturnBlob(cell.Bytes());
        }
    }

private:
    sqlite3_context* context_;
    sqlite3_value** arguments_;
    int count_;
};

template <class Body> void Guarded(sqlite3_context* context, const Body& body) {
    try {
        try {
            body();
        } catch (const host::Error& error) {
            static_cast<Runtime*>(sqlite3_user_data(context))->SetError(error);
            sqlite3_result_error(context, error.what(), -1);
        }
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

template <void (*Function)(Call&)> void Entry(sqlite3_context* context, int count, sqlite3_value** arguments) {
    Guarded(context, [&] {
        Call call(context, arguments, count);
        Function(call);
    });
}

// Conversions.

void ConvertTo(Call& call, Surplus surplus, int style) {
    Cell cell = call.Read(0);
    Convert(cell, call.TypeAt(1), call.TypeAt(2), style, surplus);
    call.Return(cell);
}
/// k_convert(value, from, to, style)
void ConvertFunction(Call& call) { ConvertTo(call, Surplus::cut, static_cast<int>(call.Integer(3))); }
/// k_store(value, from, to): what a column takes.
void StoreFunction(Call& call) { ConvertTo(call, Surplus::refuse, 0); }

// Arithmetic: (left, right, result type). Operands are of the result's family.

[[noreturn]] void FailDivision() { Fail(8134, "Divide by zero error encountered."); }

enum class Operation { add, subtract, multiply, divide, modulo };

bool Overflows(Operation operation, std::int64_t left, std::int64_t right, std::int64_t& result) {
    switch (operation) {
    case Operation::add:
        result = static_cast<std::int64_t>(static_cast<std::uint64_t>(left) + static_cast<std::uint64_t>(right));
        return right >= 0 ? result < left : result > left;
    case Operation::subtract:
        result = static_cast<std::int64_t>(static_cast<std::uint64_t>(left) - static_cast<std::uint64_t>(right));
        return right >= 0 ? result > left : result < left;
    case Operation::multiply: {
        const std::optional<std::int64_t> product = (ExactNumber(left) * ExactNumber(right)).ToInteger();
        result = product.value_or(0);
        return !product;
    }
    case Operation::divide:
        if (left == INT64_MIN && right == -1) {
            return true;
        }
        result = left / right;
        return false;
    case Operation::modulo:
        result = right == -1 ? 0 : left % right;
        return false;
    }
    return false;
}

void IntegerArithmetic(Call& call, Operation operation, Base base) {
    const std::int64_t right = call.Integer(1);
    if (right == 0 && (operation == Operation::divide || operation == Operation::modulo)) {
        FailDivision();
    }
    std::int64_t result = 0;
    if (Overflows(operation, call.Integer(0), right, result)) {
        Fail(8115, "Arithmetic overflow error converting expression to data type bigint.");
    }
    CheckRange(result, base, Base::bigint);
    call.Return(result);
}

bool IsZero(double number) { return number == 0; }
bool IsZero(const ExactNumber& number) { return number.IsZero(); }

/// What numbers that have no overflow of their own come to; `quotient` and `rest` are asked of a divisor that is not
/// zero.
template <class Number, class Quotient, class Rest>
Number Computed(Operation operation, const Number& left, const Number& right, const Quotient& quotient,
                const Rest& rest) {
    switch (operation) {
    case Operation::add:
        return left + right;
    case Operation::subtract:
        return left - right;
    case Operation::multiply:
        return left * right;
    case Operation::divide:
    case Operation::modulo:
        break;
    }
    if (IsZero(right)) {
        FailDivision();
    }
    return operation == Operation::divide ? quotient(left, right) : rest(left, right);
}

void ExactArithmetic(Call& call, Operation operation, const Type& type) {
    const ExactNumber left = ExactNumber::Parse(call.Text(0)).value_or(ExactNumber());
    const ExactNumber right = ExactNumber::Parse(call.Text(1)).value_or(ExactNumber());
    const auto divide = [&](const ExactNumber& dividend, const ExactNumber& divisor) {
        return Divide(dividend, divisor, type.scale);
    };
    const auto rest = [](const ExactNumber& dividend, const ExactNumber& divisor) { return Modulo(dividend, divisor); };
    call.Return(FitExact(Computed(operation, left, right, divide, rest), type, Base::null));
}

void RealArithmetic(Call& call, Operation operation) {
    const auto divide = [](double dividend, double divisor) { return dividend / divisor; };
    const auto rest = [](double dividend, double divisor) { return std::fmod(dividend, divisor); };
    const double result = Computed(operation, call.Real(0), call.Real(1), divide, rest);
    if (!std::isfinite(result)) {
        Fail(8115, "Arithmetic overflow error converting expression to data type float.");
    }
    call.Return(result);
}

template <Operation operation> void Arithmetic(Call& call) {
    if (call.AnyNull(2)) {
        return call.ReturnNull();
    }
    const Type type = call.TypeAt(2);
    switch (FamilyOf(type)) {
    case Family::integer:
        return IntegerArithmetic(call, operation, type.base);
    case Family::exact:
        return ExactArithmetic(call, operation, type);
    default:
        return RealArithmetic(call, operation);
    }
}

// Texts. Positions count UTF-16 units from 1.

std::string_view WithoutTrailingBlanks(std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

/// The part of a text from unit `start` (counted from 0) on, at most `length` units.
std::string Slice(std::string_view text, std::int64_t start, std::int64_t length) {
    const auto cut = [&](const auto& units) {
        const auto size = static_cast<std::int64_t>(units.size());
        const std::int64_t begin = std::clamp<std::int64_t>(start, 0, size);
        const std::int64_t end = std::clamp<std::int64_t>(start + length, begin, size);
        return units.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
    };
    if (text::IsAscii(text)) {
        return std::string(cut(text));
    }
    const std::u16string units = ToUtf16(text);
    return FromUtf16(cut(std::u16string_view(units)));
}

void LengthFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    call.Return(static_cast<std::int64_t>(text::Utf16Length(WithoutTrailingBlanks(call.Text(0)))));
}

[[noreturn]] void FailLength(std::string_view function) {
    Fail(536, "Invalid length parameter passed to the {} function.", function);
}

void LeftFunction(Call& call) {
    if (call.AnyNull(2)) {
        return call.ReturnNull();
    }
    if (call.Integer(1) < 0) {
        FailLength("left");
    }
    call.Return(Slice(call.Text(0), 0, call.Integer(1)));
}

void RightFunction(Call& call) {
    if (call.AnyNull(2)) {
        return call.ReturnNull();
    }
    if (call.Integer(1) < 0) {
        FailLength("right");
    }
    const auto units = static_cast<std::int64_t>(text::Utf16Length(call.Text(0)));
    const std::int64_t length = std::min(call.Integer(1), units);
    call.Return(Slice(call.Text(0), units - length, length));
}

void SubstringFunction(Call& call) {
    if (call.AnyNull(3)) {
        return call.ReturnNull();
    }
    constexpr std::int64_t farAway = INT32_MAX;
    std::int64_t start = std::clamp<std::int64_t>(call.Integer(1), -farAway, farAway) - 1;
    std::int64_t length = std::min<std::int64_t>(call.Integer(2), farAway);
    if (length < 0) {
        FailLength("substring");
    }
    if (start < 0) {
        length = std::max<std::int64_t>(0, length + start);
        start = 0;
    }
    call.Return(Slice(call.Text(0), start, length));
}

template <char32_t (*Map)(char32_t)> void MapFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    const std::string_view text = call.Text(0);
    std::string mapped;
    mapped.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        AppendCodePoint(mapped, Map(NextCodePoint(text, position)));
    }
    call.Return(mapped);
}

/// What a text is to searches: folded, letters that stand for two as the two.
template <class Text> std::u32string Expanded(const Text& text) {
    std::u32string points;
    points.reserve(text.size());
    for (const char32_t point : text) {
        const char32_t folded = FoldCharacter(point);
        const std::u32string_view letters = Expansion(folded);
        points += letters.empty() ? std::u32string_view(&folded, 1) : letters;
    }
    return points;
}

/// A piece of a text in UTF-16 units; nowhere where `begin` is npos.
struct Piece {
    std::size_t begin = std::u16string::npos;
    std::size_t end = 0;
};

/// The end of the piece of `text` from `from` on that is `needle` (see `Expanded`); npos when it is not.
std::size_t EndOfMatch(const std::u16string& text, const std::u32string& needle, std::size_t from) {
    for (std::u32string_view rest = needle; !rest.empty(); ++from) {
        if (from >= text.size()) {
            return std::u16string::npos;
        }
        const char32_t folded = FoldCharacter(text[from]);
        const std::u32string_view letters = Expansion(folded);
        const std::u32string_view own = letters.empty() ? std::u32string_view(&folded, 1) : letters;
        if (!rest.starts_with(own)) {
            return std::u16string::npos;
        }
        rest.remove_prefix(own.size());
    }
    return from;
}

/// Where `needle` stands in `text` at or behind `from` to the collation.
Piece FindFolded(const std::u16string& text, const std::u32string& needle, std::size_t from) {
    for (std::size_t begin = from; begin < text.size() && !needle.empty(); ++begin) {
        if (const std::size_t end = EndOfMatch(text, needle, begin); end != std::u16string::npos) {
            return {begin, end};
        }
    }
    return {};
}

/// k_charindex(needle, text, start)
void CharIndexFunction(Call& call) {
    if (call.AnyNull(call.Count())) {
        return call.ReturnNull();
    }
    const std::int64_t start = call.Count() > 2 ? std::max<std::int64_t>(1, call.Integer(2)) : 1;
    const Piece found =
        FindFolded(ToUtf16(call.Text(1)), Expanded(ToUtf16(call.Text(0))), static_cast<std::size_t>(start - 1));
    call.Return(found.begin == std::u16string::npos ? std::int64_t{0} : static_cast<std::int64_t>(found.begin + 1));
}

void ReplaceFunction(Call& call) {
    if (call.AnyNull(3)) {
        return call.ReturnNull();
    }
    const std::u16string text = ToUtf16(call.Text(0));
    const std::u32string needle = Expanded(ToUtf16(call.Text(1)));
    const std::u16string replacement = ToUtf16(call.Text(2));
    if (needle.empty()) {
        return call.Return(call.Text(0));
    }
    std::u16string result;
    std::size_t position = 0;
    for (Piece found = FindFolded(text, needle, 0); found.begin != std::u16string::npos;
         found = FindFolded(text, needle, position)) {
        result.append(text, position, found.begin - position);
        result += replacement;
        position = found.end;
    }
    result.append(text, position);
    call.Return(FromUtf16(result));
}

/// k_stuff(text, start, length, replacement)
void StuffFunction(Call& call) {
    if (call.AnyNull(3)) {
        return call.ReturnNull();
    }
    std::u16string text = ToUtf16(call.Text(0));
    const std::int64_t start = call.Integer(1);
    const std::int64_t length = call.Integer(2);
    if (start < 1 || length < 0 || start > static_cast<std::int64_t>(text.size())) {
        return call.ReturnNull();
    }
    text.replace(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(length),
                 call.IsNull(3) ? std::u16string() : ToUtf16(call.Text(3)));
    call.Return(FromUtf16(text));
}

void ReplicateFunction(Call& call) {
    if (call.AnyNull(2) || call.Integer(1) < 0) {
        return call.ReturnNull();
    }
    constexpr std::size_t most = 8000;
    const std::string_view text = call.Text(0);
    std::string result;
    for (std::int64_t i = 0; i < call.Integer(1) && result.size() + text.size() <= most && !text.empty(); ++i) {
        result += text;
    }
    call.Return(result);
}

void ReverseFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    std::u16string units = ToUtf16(call.Text(0));
    std::reverse(units.begin(), units.end());
    call.Return(FromUtf16(units));
}

void UnicodeFunction(Call& call) {
    if (call.IsNull(0) || call.Text(0).empty()) {
        return call.ReturnNull();
    }
    call.Return(static_cast<std::int64_t>(ToUtf16(call.Text(0)).front()));
}

void CharacterFunction(Call& call) {
    if (call.IsNull(0) || call.Integer(0) < 0 || call.Integer(0) > 0xFFFF) {
        return call.ReturnNull();
    }
    const std::u16string unit(1, static_cast<char16_t>(call.Integer(0)));
    call.Return(FromUtf16(unit));
}

/// Matches T-SQL's LIKE patterns: % _ [a-z] [^a-z].
class LikeMatcher {
public:
    LikeMatcher(std::u32string text, std::u32string pattern, char32_t escape)
        : text_(std::move(text)), pattern_(std::move(pattern)), escape_(escape) {}

    bool Matches() const {
        std::size_t text = 0;
        std::size_t pattern = 0;
        std::size_t retryPattern = npos;
        std::size_t retryText = 0;
        while (true) {
            if (pattern < pattern_.size() && pattern_[pattern] == U'%') {
                retryPattern = ++pattern;
                retryText = text;
                continue;
            }
            std::size_t next = pattern;
            if (text < text_.size() && pattern < pattern_.size() && MatchesOne(text_[text], next)) {
                ++text;
                pattern = next;
                continue;
            }
            if (text == text_.size() && pattern == pattern_.size()) {
                return true;
            }
            if (retryPattern == npos || retryText >= text_.size()) {
                return false;
            }
            pattern = retryPattern;
            text = ++retryText;
        }
    }

private:
    static constexpr std::size_t npos = std::u32string::npos;

    /// Whether `c` matches the element at `pattern`, which moves behind it.
    bool MatchesOne(char32_t c, std::size_t& pattern) const {
        const char32_t element = pattern_[pattern++];
        if (escape_ != 0 && element == escape_ && pattern < pattern_.size()) {
            return pattern_[pattern++] == c;
        }
        if (element == U'_') {
            return true;
        }
        const std::size_t close = element == U'[' ? pattern_.find(U']', pattern) : npos;
        if (close == npos) {
            return element == c;
        }
        const bool negated = pattern_[pattern] == U'^';
        std::size_t at = pattern + (negated ? 1 : 0);
        bool found = false;
        for (; at < close; ++at) {
            if (at + 2 < close && pattern_[at + 1] == U'-') {
                found = found || (WeightOf(pattern_[at]) <= WeightOf(c) && WeightOf(c) <= WeightOf(pattern_[at + 2]));
                at += 2;
            } else {
                found = found || pattern_[at] == c;
            }
        }
        pattern = close + 1;
        return found != negated;
    }

    std::u32string text_;
    std::u32string pattern_;
    char32_t escape_;
};

std::u32string FoldedPoints(std::string_view text) {
    std::u32string points;
    points.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        points += FoldCharacter(NextCodePoint(text, position));
    }
    return points;
}

bool HasExpansion(const std::u32string& text) {
    return std::ranges::any_of(text, [](char32_t folded) { return !Expansion(folded).empty(); });
}

/// k_like(text, pattern[, escape])
void LikeFunction(Call& call) {
    if (call.AnyNull(call.Count())) {
        return call.ReturnNull();
    }
    const std::u32string escape = call.Count() > 2 ? FoldedPoints(call.Text(2)) : std::u32string();
    std::u32string text = FoldedPoints(call.Text(0));
    const std::u32string pattern = FoldedPoints(call.Text(1));
    const char32_t escapePoint = escape.empty() ? U'\0' : escape.front();
    const auto matches = [&] {
        // A letter that stands for two is one to _ and two to the two.
        return LikeMatcher(text, pattern, escapePoint).Matches() ||
               ((HasExpansion(text) || HasExpansion(pattern)) &&
                LikeMatcher(Expanded(text), Expanded(pattern), escapePoint).Matches());
    };
    bool like = matches();
    if (!like && !text.empty() && text.back() == U' ') {
        // Trailing blanks of the value do not count.
        const std::size_t last = text.find_last_not_of(U' ');
        text.erase(last == std::u32string::npos ? 0 : last + 1);
        like = matches();
    }
    call.Return(std::int64_t{like ? 1 : 0});
}

/// k_patindex(pattern, text): where the pattern, which % in front lets begin anywhere, is met first.
void PatternIndexFunction(Call& call) {
    if (call.AnyNull(2)) {
        return call.ReturnNull();
    }
    std::u32string pattern = FoldedPoints(call.Text(0));
    const bool anywhere = pattern.starts_with(U'%');
    pattern.erase(0, std::min(pattern.find_first_not_of(U'%'), pattern.size()));
    const std::string_view text = call.Text(1);
    std::int64_t place = 1;
    for (std::size_t position = 0;;) {
        if (LikeMatcher(FoldedPoints(text.substr(position)), pattern, U'\0').Matches()) {
            return call.Return(place);
        }
        if (!anywhere || position >= text.size()) {
            return call.Return(std::int64_t{0});
        }
        place += NextCodePoint(text, position) > 0xffff ? 2 : 1;
    }
}

/// k_str(number, length, decimals)
void NumberTextFunction(Call& call) {
    constexpr std::int64_t mostDecimals = 16;
    constexpr std::int64_t mostLength = 8000;
    if (call.AnyNull(3) || call.Integer(1) <= 0 || call.Integer(1) > mostLength || call.Integer(2) < 0) {
        return call.ReturnNull();
    }
    const auto length = static_cast<std::size_t>(call.Integer(1));
    // Decimals give way before the whole number does.
    for (std::int64_t decimals = std::min(call.Integer(2), mostDecimals); decimals >= 0; --decimals) {
        const std::string text = fmt::format("{:.{}f}", call.Real(0), decimals);
        if (text.size() <= length) {
            return call.Return(std::string(length - text.size(), ' ') + text);
        }
    }
    call.Return(std::string(length, '*'));
}

void DataLengthFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    const Type type = call.TypeAt(1);
    switch (FamilyOf(type)) {
    case Family::text:
        return call.Return(static_cast<std::int64_t>(MeasuredLength(call.Text(0), IsNational(type.base)) *
                                                     (IsNational(type.base) ? 2 : 1)));
    case Family::binary:
        return call.Return(static_cast<std::int64_t>(call.Text(0).size()));
    case Family::integer:
        return call.Return(std::int64_t{type.base == Base::bigint     ? 8
                                        : type.base == Base::integer  ? 4
                                        : type.base == Base::smallint ? 2
                                                                      : 1});
    default:
        return call.Return(std::int64_t{8});
    }
}

// Numbers: (value, …, type).

void AbsFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    const Type type = call.TypeAt(1);
    if (FamilyOf(type) == Family::integer) {
        const std::int64_t value = call.Integer(0);
        if (value < 0) {
            CheckRange(-(value + 1), type.base, Base::bigint);
            CheckRange(value == INT64_MIN ? value : -value, type.base, Base::bigint);
        }
        call.Return(value < 0 ? -value : value);
    } else if (FamilyOf(type) == Family::exact) {
        const std::string_view text = call.Text(0);
        call.Return(text.substr(!text.empty() && text.front() == '-' ? 1 : 0));
    } else {
        call.Return(std::fabs(call.Real(0)));
    }
}

/// Floor (`up` false) and ceiling of exact numbers.
void WholeFunction(Call& call, bool up) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    const ExactNumber value = ExactNumber::Parse(call.Text(0)).value_or(ExactNumber());
    ExactNumber whole = value.Truncated(0);
    if (!(value - whole).IsZero() && value.IsNegative() != up) {
        whole = whole + ExactNumber(up ? 1 : -1);
    }
    call.Return(whole.Truncated(call.TypeAt(1).base == Base::decimal ? 0 : 4).ToText());
}
void FloorFunction(Call& call) { WholeFunction(call, false); }
void CeilingFunction(Call& call) { WholeFunction(call, true); }

/// The value rounded or cut to `digits` digits behind the point, negative ones before it; same scale as before.
ExactNumber RoundExact(const ExactNumber& value, std::int64_t digits, bool cut) {
    const int scale = value.Scale();
    if (digits >= scale) {
        return value;
    }
    if (digits >= 0) {
        const int kept = static_cast<int>(digits);
        return (cut ? value.Truncated(kept) : value.Rescaled(kept)).Truncated(scale);
    }
    if (digits < -40) {
        return ExactNumber().Truncated(scale);
    }
    ExactNumber unit(1);
    for (std::int64_t i = digits; i < 0; ++i) {
        unit = unit * ExactNumber(10);
    }
    const ExactNumber quotient = Divide(value, unit, scale + static_cast<int>(-digits));
    return ((cut ? quotient.Truncated(0) : quotient.Rescaled(0)) * unit).Truncated(scale);
}

/// k_round(value, digits, function, type)
void RoundFunction(Call& call) {
    if (call.AnyNull(3)) {
        return call.ReturnNull();
    }
    const Type type = call.TypeAt(3);
    const bool cut = call.Integer(2) != 0;
    const std::int64_t digits = call.Integer(1);
    switch (FamilyOf(type)) {
    case Family::integer: {
        const std::optional<std::int64_t> value = RoundExact(ExactNumber(call.Integer(0)), digits, cut).ToInteger();
        CheckRange(value.value_or(0), type.base, Base::bigint);
        return call.Return(value.value_or(0));
    }
    case Family::exact: {
        const ExactNumber value = ExactNumber::Parse(call.Text(0)).value_or(ExactNumber());
        return call.Return(FitExact(RoundExact(value, digits, cut), type, Base::null));
    }
    default: {
        const std::optional<ExactNumber> value = ExactNumber::FromDouble(call.Real(0));
        return call.Return(value ? RoundExact(*value, digits, cut).ToDouble() : call.Real(0));
    }
    }
}

/// k_sign(value, type)
void SignFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    const Type type = call.TypeAt(1);
    if (FamilyOf(type) == Family::real) {
        const double value = call.Real(0);
        return call.Return(value > 0 ? 1.0 : value < 0 ? -1.0 : 0.0);
    }
    const ExactNumber value = ExactNumber::Parse(call.Text(0)).value_or(ExactNumber());
    const std::int64_t sign = value.IsZero() ? 0 : value.IsNegative() ? -1 : 1;
    if (FamilyOf(type) == Family::integer) {
        return call.Return(sign);
    }
    call.Return(ExactNumber(sign).Rescaled(type.scale).ToText());
}

double RequireReal(double value) {
    if (std::isnan(value)) {
        Fail(3623, "An invalid floating point operation occurred.");
    }
    if (std::isinf(value)) {
        Fail(8115, "Arithmetic overflow error converting expression to data type float.");
    }
    return value;
}

void SqrtFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    call.Return(RequireReal(std::sqrt(call.Real(0))));
}

/// k_power(value, exponent, type): the result in the value's own type.
void PowerFunction(Call& call) {
    if (call.AnyNull(2)) {
        return call.ReturnNull();
    }
    const double value = call.Real(0);
    const double exponent = call.Real(1);
    if (value == 0 && exponent < 0) {
        Fail(8134, "Divide by zero error encountered.");
    }
    Cell cell;
    cell.SetReal(RequireReal(std::pow(value, exponent)));
    Convert(cell, {Base::floating, 0, 0, 0}, call.TypeAt(2), 0, Surplus::cut);
    call.Return(cell);
}

// Dates.

std::int64_t PartOf(DatePart part, Ticks ticks) {
    const Calendar c = ToCalendar(ticks);
    Calendar newYear;
    newYear.year = c.year;
    const std::int64_t dayOfYear = (ticks - ToTicks(newYear)) / ticksPerDay;
    // Day 0 of OLE Automation was a Saturday; weeks begin on Sunday.
    const auto weekday = [](Ticks t) {
        const std::int64_t days = (t >= 0 ? t : t - ticksPerDay + 1) / ticksPerDay;
        return ((days + 6) % 7 + 7) % 7;
    };
    switch (part) {
    case DatePart::year:
        return c.year;
    case DatePart::quarter:
        return (c.month + 2) / 3;
    case DatePart::month:
        return c.month;
    case DatePart::dayOfYear:
        return dayOfYear + 1;
    case DatePart::day:
        return c.day;
    case DatePart::week:
        return (dayOfYear + weekday(ToTicks(newYear))) / 7 + 1;
    case DatePart::weekday:
        return weekday(ticks) + 1;
    case DatePart::hour:
        return c.hour;
    case DatePart::minute:
        return c.minute;
    case DatePart::second:
        return c.second;
    case DatePart::millisecond:
        return c.fraction / (ticksPerSecond / 1000);
    }
    return 0;
}

Ticks FloorTo(Ticks ticks, Ticks unit) { return ticks - ((ticks % unit) + unit) % unit; }

/// Number of boundaries of the part between two dates.
std::int64_t Boundaries(DatePart part, Ticks from, Ticks to) {
    const Calendar a = ToCalendar(from);
    const Calendar b = ToCalendar(to);
    const auto count = [&](Ticks unit, Ticks offset) {
        return FloorTo(to + offset, unit) / unit - FloorTo(from + offset, unit) / unit;
    };
    switch (part) {
    case DatePart::year:
        return b.year - a.year;
    case DatePart::quarter:
        return (b.year - a.year) * 4 + (b.month + 2) / 3 - (a.month + 2) / 3;
    case DatePart::month:
        return (b.year - a.year) * 12 + b.month - a.month;
    case DatePart::week:
        return count(7 * ticksPerDay, 6 * ticksPerDay);
    case DatePart::hour:
        return count(3600 * ticksPerSecond, 0);
    case DatePart::minute:
        return count(60 * ticksPerSecond, 0);
    case DatePart::second:
        return count(ticksPerSecond, 0);
    case DatePart::millisecond:
        return count(ticksPerSecond / 1000, 0);
    default:
        return count(ticksPerDay, 0);
    }
}

Ticks AddPart(DatePart part, std::int64_t number, Ticks ticks) {
    const auto addMonths = [&](std::int64_t months) {
        Calendar c = ToCalendar(ticks);
        const std::int64_t month = c.year * 12 + c.month - 1 + months;
        c.year = month / 12;
        c.month = static_cast<int>(month % 12) + 1;
        if (month < 12 || c.year > 9999) {
            Fail(517, "Adding a value to a 'datetime' column caused an overflow.");
        }
        c.day = std::min(c.day, DaysInMonth(c.year, c.month));
        return ToTicks(c);
    };
    switch (part) {
    case DatePart::year:
        return addMonths(number * 12);
    case DatePart::quarter:
        return addMonths(number * 3);
    case DatePart::month:
        return addMonths(number);
    case DatePart::week:
        number *= 7;
        break;
    case DatePart::hour:
        return ticks + number * 3600 * ticksPerSecond;
    case DatePart::minute:
        return ticks + number * 60 * ticksPerSecond;
    case DatePart::second:
        return ticks + number * ticksPerSecond;
    case DatePart::millisecond:
        return ticks + number * (ticksPerSecond / 1000);
    default:
        break;
    }
    constexpr std::int64_t mostDays = 4'000'000;
    if (number < -mostDays || number > mostDays) {
        Fail(517, "Adding a value to a 'datetime' column caused an overflow.");
    }
    return ticks + number * ticksPerDay;
}

/// k_datepart(part, date)
void DatePartFunction(Call& call) {
    if (call.IsNull(1)) {
        return call.ReturnNull();
    }
    call.Return(PartOf(static_cast<DatePart>(call.Integer(0)), call.Integer(1)));
}

/// k_datename(part, date)
void DateNameFunction(Call& call) {
    if (call.IsNull(1)) {
        return call.ReturnNull();
    }
    const auto part = static_cast<DatePart>(call.Integer(0));
    const std::int64_t value = PartOf(part, call.Integer(1));
    if (part == DatePart::month) {
        return call.Return(MonthName(static_cast<int>(value)));
    }
    if (part == DatePart::weekday) {
        return call.Return(DayName(static_cast<int>(value)));
    }
    call.Return(std::to_string(value));
}

/// k_datediff(part, from, to)
void DateDiffFunction(Call& call) {
    if (call.IsNull(1) || call.IsNull(2)) {
        return call.ReturnNull();
    }
    const std::int64_t count = Boundaries(static_cast<DatePart>(call.Integer(0)), call.Integer(1), call.Integer(2));
    if (count != static_cast<std::int32_t>(count)) {
        Fail(535, "The datediff function resulted in an overflow. The number of dateparts separating two "
                  "date/time instances is too large. Try to use datediff with a less precise datepart.");
    }
    call.Return(count);
}

/// k_dateadd(part, number, date, type)
void DateAddFunction(Call& call) {
    if (call.IsNull(1) || call.IsNull(2)) {
        return call.ReturnNull();
    }
    const Ticks ticks = AddPart(static_cast<DatePart>(call.Integer(0)), call.Integer(1), call.Integer(2));
    call.Return(RoundDate(ticks, call.TypeAt(3)));
}

void RowVersionFunction(Call& call) {
    call.ReturnBlob(call.GetRuntime().NextRowVersion(static_cast<Schema>(call.Integer(0))));
}

void IdentityFunction(Call& call) {
    const std::optional<std::int64_t> identity = call.GetRuntime().identity;
    if (!identity) {
        return call.ReturnNull();
    }
    call.Return(std::to_string(*identity));
}

/// k_tryconvert(value, from, to, style): Null where the conversion fails.
void TryConvertFunction(Call& call) {
    try {
        ConvertTo(call, Surplus::cut, static_cast<int>(call.Integer(3)));
    } catch (const host::Error&) {
        call.ReturnNull();
    }
}

/// k_datefromparts(year, month, day)
void DateFromPartsFunction(Call& call) {
    if (call.AnyNull(3)) {
        return call.ReturnNull();
    }
    Calendar date;
    date.year = call.Integer(0);
    date.month = static_cast<int>(std::clamp<std::int64_t>(call.Integer(1), 0, 13));
    date.day = static_cast<int>(std::clamp<std::int64_t>(call.Integer(2), 0, 32));
    if (date.year < 1 || date.year > 9999 || date.month < 1 || date.month > 12 || date.day < 1 ||
        date.day > DaysInMonth(date.year, date.month)) {
        Fail(289, "Cannot construct data type date, some of the arguments have values which are not valid.");
    }
    call.Return(ToTicks(date));
}

/// k_eomonth(date, months)
void EndOfMonthFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    const Calendar date = ToCalendar(AddPart(DatePart::month, call.IsNull(1) ? 0 : call.Integer(1), call.Integer(0)));
    Calendar last;
    last.year = date.year;
    last.month = date.month;
    last.day = DaysInMonth(date.year, date.month);
    call.Return(ToTicks(last));
}

/// k_newid(): a random identifier of version 4.
void NewIdFunction(Call& call) {
    std::array<unsigned char, 16> bytes{};
    sqlite3_randomness(static_cast<int>(bytes.size()), bytes.data());
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0FU) | 0x40U);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3FU) | 0x80U);
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        text += i == 4 || i == 6 || i == 8 || i == 10 ? "-" : "";
        text += fmt::format("{:02X}", bytes[i]);
    }
    call.Return(std::string_view(text));
}

/// k_recursion(level, most): the next level.
void RecursionFunction(Call& call) {
    const std::int64_t next = call.Integer(0) + 1;
    if (next > call.Integer(1)) {
        Fail(530, "The statement terminated. The maximum recursion {} has been exhausted before statement completion.",
             call.Integer(1));
    }
    call.Return(next);
}

template <std::int64_t Runtime::*Member> void SessionFunction(Call& call) { call.Return(call.GetRuntime().*Member); }

/// k_errormessage(): that of the CATCH block at hand.
void ErrorMessageFunction(Call& call) {
    const std::optional<host::Error>& caught = call.GetRuntime().caught;
    caught ? call.Return(std::string_view(caught->description())) : call.ReturnNull();
}

/// k_errornumber(): likewise.
void ErrorNumberFunction(Call& call) {
    const std::optional<host::Error>& caught = call.GetRuntime().caught;
    caught ? call.Return(std::int64_t{caught->native()}) : call.ReturnNull();
}

/// k_variable(place): the value as it is at this row.
void VariableFunction(Call& call) {
    call.Return((*call.GetRuntime().variables)[static_cast<std::size_t>(call.Integer(0))].value);
}

/// k_row(place)
void RowFunction(Call& call) { call.Return(call.GetRuntime().toldRow->at(static_cast<std::size_t>(call.Integer(0)))); }

/// k_nextidentity(schema, table, seed, step)
void NextIdentityFunction(Call& call) {
    call.Return(call.GetRuntime().NextIdentity(static_cast<Schema>(call.Integer(0)), call.Text(1), call.Integer(2),
                                               call.Integer(3)));
}

// Aggregates over exact numbers, and the mean of whole ones, which is whole.

struct Sum {
    ExactNumber total;
    std::int64_t count = 0;
};

Sum* SumOf(sqlite3_context* context, bool create) {
    auto** slot = static_cast<Sum**>(sqlite3_aggregate_context(context, create ? sizeof(void*) : 0));
    if (slot == nullptr) {
        return nullptr;
    }
    if (*slot == nullptr && create) {
        *slot = std::make_unique<Sum>().release();
    }
    return *slot;
}

void SumStep(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    Guarded(context, [&] {
        const Call call(context, arguments, 1);
        Sum* sum = SumOf(context, true);
        if (sum == nullptr || call.IsNull(0)) {
            return;
        }
        sum->total = sum->total + ExactNumber::Parse(call.Text(0)).value_or(ExactNumber());
        ++sum->count;
    });
}

/// Takes a row out of the window again.
void SumInverse(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    Guarded(context, [&] {
        const Call call(context, arguments, 1);
        Sum* sum = SumOf(context, false);
        if (sum == nullptr || call.IsNull(0)) {
            return;
        }
        sum->total = sum->total - ExactNumber::Parse(call.Text(0)).value_or(ExactNumber());
        --sum->count;
    });
}

enum class Aggregate { sum, average, moneyAverage };

template <Aggregate aggregate> void SumValue(sqlite3_context* context) {
    Guarded(context, [&] {
        const Sum* sum = SumOf(context, false);
        if (sum == nullptr || sum->count == 0) {
            return sqlite3_result_null(context);
        }
        std::string text;
        if (aggregate == Aggregate::moneyAverage) {
            // Money divides as the whole number of ten-thousandths that it is.
            constexpr int moneyScale = 4;
            text = Divide(sum->total, ExactNumber(sum->count), moneyScale).ToText();
        } else if (aggregate == Aggregate::average) {
            constexpr int leastScale = 6;
            text = Divide(sum->total, ExactNumber(sum->count), std::max(leastScale, sum->total.Scale())).ToText();
        } else {
            text = sum->total.ToText();
        }
        sqlite3_result_text(context, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    });
}

template <Aggregate aggregate> void SumFinal(sqlite3_context* context) {
    SumValue<aggregate>(context);
    const std::unique_ptr<Sum> done(SumOf(context, false));
}

/// How far numbers spread, by Welford's method: one pass, and no difference of large sums.
struct Spread {
    double count;
    double mean;
    double squares;
};

void SpreadStep(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    auto* spread = static_cast<Spread*>(sqlite3_aggregate_context(context, sizeof(Spread)));
    if (spread == nullptr || sqlite3_value_type(arguments[0]) == SQLITE_NULL) {
        return;
    }
    const double value = sqlite3_value_double(arguments[0]);
    const double distance = value - spread->mean;
    spread->count += 1;
    spread->mean += distance / spread->count;
    spread->squares += distance * (value - spread->mean);
}

/// Of a sample, or of the whole; the variance or its root.
template <bool sample, bool root> void SpreadFinal(sqlite3_context* context) {
    const auto* spread = static_cast<const Spread*>(sqlite3_aggregate_context(context, 0));
    const double count = spread == nullptr ? 0 : spread->count - (sample ? 1 : 0);
    if (count <= 0) {
        return sqlite3_result_null(context);
    }
    const double variance = spread->squares / count;
    sqlite3_result_double(context, root ? std::sqrt(variance) : variance);
}

/// Texts to be joined in an order.
struct SortedTexts {
    struct Key {
        std::optional<double> number;
        std::string text;
    };
    struct Item {
        std::string text;
        std::vector<Key> keys;
    };
    std::vector<Item> items;
    std::string separator;
    /// Of each key: 1 for numbers, 2 for texts, 3 for exact numbers; below 0 where it descends.
    std::vector<std::int64_t> orders;
};

/// Null is the lowest, as the server has it.
int CompareKeys(const SortedTexts::Key& left, const SortedTexts::Key& right, std::int64_t order) {
    if (!left.number || !right.number) {
        return (left.number ? 1 : 0) - (right.number ? 1 : 0);
    }
    switch (order < 0 ? -order : order) {
    case 2:
        return CompareText(left.text, right.text);
    case 3:
        return CompareExact(left.text, right.text);
    default:
        return *left.number < *right.number ? -1 : *left.number > *right.number ? 1 : 0;
    }
}

SortedTexts** SortedTextsOf(sqlite3_context* context, bool create) {
    return static_cast<SortedTexts**>(sqlite3_aggregate_context(context, create ? sizeof(void*) : 0));
}

/// k_string_agg(text, separator, key, order, …)
void SortedTextsStep(sqlite3_context* context, int count, sqlite3_value** arguments) {
    Guarded(context, [&] {
        const Call call(context, arguments, count);
        SortedTexts** slot = SortedTextsOf(context, true);
        if (slot == nullptr) {
            throw std::bad_alloc();
        }
        if (*slot == nullptr) {
            auto fresh = std::make_unique<SortedTexts>();
            fresh->separator = call.Text(1);
            for (int i = 3; i < count; i += 2) {
                fresh->orders.push_back(call.Integer(i));
            }
            *slot = fresh.release();
        }
        if (call.IsNull(0)) {
            return;
        }
        SortedTexts::Item item{std::string(call.Text(0)), {}};
        for (int i = 2; i < count; i += 2) {
            item.keys.push_back(
                {call.IsNull(i) ? std::nullopt : std::optional(call.Real(i)), std::string(call.Text(i))});
        }
        (*slot)->items.push_back(std::move(item));
    });
}

void SortedTextsFinal(sqlite3_context* context) {
    SortedTexts** slot = SortedTextsOf(context, false);
    const std::unique_ptr<SortedTexts> texts(slot == nullptr ? nullptr : std::exchange(*slot, nullptr));
    Guarded(context, [&] {
        if (!texts || texts->items.empty()) {
            return sqlite3_result_null(context);
        }
        std::ranges::stable_sort(texts->items, [&](const SortedTexts::Item& left, const SortedTexts::Item& right) {
            for (std::size_t i = 0; i < texts->orders.size(); ++i) {
                const int order = CompareKeys(left.keys[i], right.keys[i], texts->orders[i]);
                if (order != 0) {
                    return (order < 0) == (texts->orders[i] > 0);
                }
            }
            return false;
        });
        std::string joined;
        for (const SortedTexts::Item& item : texts->items) {
            joined += (&item == &texts->items.front() ? "" : texts->separator) + item.text;
        }
        sqlite3_result_text64(context, joined.data(), joined.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    });
}

/// The one value of a subquery.
struct Single {
    sqlite3_value* value = nullptr;
};

Single* SingleOf(sqlite3_context* context, bool create) {
    return static_cast<Single*>(sqlite3_aggregate_context(context, create ? sizeof(Single) : 0));
}

void SingleStep(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    Guarded(context, [&] {
        Single* single = SingleOf(context, true);
        if (single == nullptr) {
            throw std::bad_alloc();
        }
        if (single->value != nullptr) {
            Fail(512, "Subquery returned more than 1 value. This is not permitted when the subquery follows =, !=, <, "
                      "<= , >, >= or when the subquery is used as an expression.");
        }
        single->value = sqlite3_value_dup(arguments[0]);
        if (single->value == nullptr) {
            throw std::bad_alloc();
        }
    });
}

void SingleFinal(sqlite3_context* context) {
    Single* single = SingleOf(context, false);
    if (single == nullptr || single->value == nullptr) {
        return sqlite3_result_null(context);
    }
    sqlite3_result_value(context, single->value);
    sqlite3_value_free(std::exchange(single->value, nullptr));
}

template <int (*Compare)(std::string_view, std::string_view)>
int Collate(void* /*data*/, int leftSize, const void* left, int rightSize, const void* right) {
    return Compare({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                   {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

struct FunctionRow {
    const char* name;
    int arguments;
    void (*entry)(sqlite3_context*, int, sqlite3_value**);
};

constexpr std::array functions{
    FunctionRow{"k_convert", 4, Entry<ConvertFunction>},
    FunctionRow{"k_store", 3, Entry<StoreFunction>},
    FunctionRow{"k_add", 3, Entry<Arithmetic<Operation::add>>},
    FunctionRow{"k_subtract", 3, Entry<Arithmetic<Operation::subtract>>},
    FunctionRow{"k_multiply", 3, Entry<Arithmetic<Operation::multiply>>},
    FunctionRow{"k_divide", 3, Entry<Arithmetic<Operation::divide>>},
    FunctionRow{"k_modulo", 3, Entry<Arithmetic<Operation::modulo>>},
    FunctionRow{"k_len", 1, Entry<LengthFunction>},
    FunctionRow{"k_left", 2, Entry<LeftFunction>},
    FunctionRow{"k_right", 2, Entry<RightFunction>},
    FunctionRow{"k_substring", 3, Entry<SubstringFunction>},
    FunctionRow{"k_upper", 1, Entry<MapFunction<ToUpper>>},
    FunctionRow{"k_lower", 1, Entry<MapFunction<ToLower>>},
    FunctionRow{"k_charindex", -1, Entry<CharIndexFunction>},
    FunctionRow{"k_replace", 3, Entry<ReplaceFunction>},
    FunctionRow{"k_stuff", 4, Entry<StuffFunction>},
    FunctionRow{"k_replicate", 2, Entry<ReplicateFunction>},
    FunctionRow{"k_reverse", 1, Entry<ReverseFunction>},
    FunctionRow{"k_unicode", 1, Entry<UnicodeFunction>},
    FunctionRow{"k_char", 1, Entry<CharacterFunction>},
    FunctionRow{"k_like", -1, Entry<LikeFunction>},
    FunctionRow{"k_patindex", 2, Entry<PatternIndexFunction>},
    FunctionRow{"k_str", 3, Entry<NumberTextFunction>},
    FunctionRow{"k_datalength", 2, Entry<DataLengthFunction>},
    FunctionRow{"k_abs", 2, Entry<AbsFunction>},
    FunctionRow{"k_floor", 2, Entry<FloorFunction>},
    FunctionRow{"k_ceiling", 2, Entry<CeilingFunction>},
    FunctionRow{"k_round", 4, Entry<RoundFunction>},
    FunctionRow{"k_sign", 2, Entry<SignFunction>},
    FunctionRow{"k_sqrt", 1, Entry<SqrtFunction>},
    FunctionRow{"k_power", 3, Entry<PowerFunction>},
    FunctionRow{"k_datepart", 2, Entry<DatePartFunction>},
    FunctionRow{"k_datename", 2, Entry<DateNameFunction>},
    FunctionRow{"k_datediff", 3, Entry<DateDiffFunction>},
    FunctionRow{"k_dateadd", 4, Entry<DateAddFunction>},
    FunctionRow{"k_tryconvert", 4, Entry<TryConvertFunction>},
    FunctionRow{"k_datefromparts", 3, Entry<DateFromPartsFunction>},
    FunctionRow{"k_eomonth", 2, Entry<EndOfMonthFunction>},
    FunctionRow{"k_recursion", 2, Entry<RecursionFunction>},
};

/// Functions whose result depends on the session.
constexpr std::array sessionFunctions{
    FunctionRow{"k_rowversion", 1, Entry<RowVersionFunction>},
    FunctionRow{"k_identity", 0, Entry<IdentityFunction>},
    FunctionRow{"k_rowcount", 0, Entry<SessionFunction<&Runtime::rowCount>>},
    FunctionRow{"k_lasterror", 0, Entry<SessionFunction<&Runtime::lastError>>},
    FunctionRow{"k_trancount", 0, Entry<SessionFunction<&Runtime::tranCount>>},
    FunctionRow{"k_errormessage", 0, Entry<ErrorMessageFunction>},
    FunctionRow{"k_errornumber", 0, Entry<ErrorNumberFunction>},
    FunctionRow{"k_newid", 0, Entry<NewIdFunction>},
    FunctionRow{"k_variable", 1, Entry<VariableFunction>},
    FunctionRow{"k_row", 1, Entry<RowFunction>},
    FunctionRow{"k_nextidentity", 4, Entry<NextIdentityFunction>},
};

} // namespace

std::string_view SqliteName(Schema schema) {
    switch (schema) {
    case Schema::account:
        return "main";
    case Schema::system:
        return "QxSystem";
    case Schema::temporary:
        break;
    }
    return "temp";
}

Runtime::Runtime(sqlite3* db) : db_(db) {
    constexpr int pure = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    for (const FunctionRow& row : functions) {
        sqlite3_create_function_v2(db, row.name, row.arguments, pure, this, row.entry, nullptr, nullptr, nullptr);
    }
    for (const FunctionRow& row : sessionFunctions) {
        sqlite3_create_function_v2(db, row.name, row.arguments, SQLITE_UTF8, this, row.entry, nullptr, nullptr,
                                   nullptr);
    }
    sqlite3_create_window_function(db, "k_sum", 1, pure, this, SumStep, SumFinal<Aggregate::sum>,
                                   SumValue<Aggregate::sum>, SumInverse, nullptr);
    sqlite3_create_window_function(db, "k_avg", 1, pure, this, SumStep, SumFinal<Aggregate::average>,
                                   SumValue<Aggregate::average>, SumInverse, nullptr);
    sqlite3_create_window_function(db, "k_avg_money", 1, pure, this, SumStep, SumFinal<Aggregate::moneyAverage>,
                                   SumValue<Aggregate::moneyAverage>, SumInverse, nullptr);
    sqlite3_create_function_v2(db, "k_stdev", 1, pure, this, nullptr, SpreadStep, SpreadFinal<true, true>, nullptr);
    sqlite3_create_function_v2(db, "k_stdevp", 1, pure, this, nullptr, SpreadStep, SpreadFinal<false, true>, nullptr);
    sqlite3_create_function_v2(db, "k_var", 1, pure, this, nullptr, SpreadStep, SpreadFinal<true, false>, nullptr);
    sqlite3_create_function_v2(db, "k_varp", 1, pure, this, nullptr, SpreadStep, SpreadFinal<false, false>, nullptr);
    sqlite3_create_function_v2(db, "k_string_agg", -1, pure, this, nullptr, SortedTextsStep, SortedTextsFinal, nullptr);
    sqlite3_create_function_v2(db, "k_single", 1, pure, this, nullptr, SingleStep, SingleFinal, nullptr);
    RegisterAppliedRows(db);
    sqlite3_create_collation_v2(db, std::string(textCollation).c_str(), SQLITE_UTF8, nullptr, Collate<CompareText>,
                                nullptr);
    sqlite3_create_collation_v2(db, std::string(exactCollation).c_str(), SQLITE_UTF8, nullptr, Collate<CompareExact>,
                                nullptr);
}

std::optional<host::Error> Runtime::TakeError() { return std::exchange(error_, std::nullopt); }

void Runtime::Forget() {
    for (std::size_t i = 0; i < schemaCount; ++i) {
        counters_.at(i).reset();
        locks_.at(i).reset();
    }
    begin_.reset();
    commit_.reset();
}

void Runtime::BeginWriting(Schema schema) {
    StatementHandle& lock = locks_.at(static_cast<std::size_t>(schema));
    if (!lock) {
        lock = Prepare(db_, LockText(SqliteName(schema)));
    }
    if (!begin_) {
        begin_ = Prepare(db_, "BEGIN");
    }
    sql::BeginWriting(db_, begin_.get(), lock.get());
}

void Runtime::Commit() {
    if (!commit_) {
        commit_ = Prepare(db_, "COMMIT");
    }
    Run(db_, commit_.get());
}

std::string Runtime::NextRowVersion(Schema schema) {
    const bool outer = std::exchange(stepping, false);
    StatementHandle& counter = counters_.at(static_cast<std::size_t>(schema));
    if (!counter) {
        counter = Prepare(
            db_, fmt::format("UPDATE {}.\"sys:counter\" SET value = value + 1 RETURNING value", SqliteName(schema)));
    }
    if (sqlite3_step(counter.get()) != SQLITE_ROW) {
        sqlite3_reset(counter.get());
        stepping = outer;
        FailSqlite(db_);
    }
    auto value = static_cast<std::uint64_t>(sqlite3_column_int64(counter.get(), 0));
    sqlite3_step(counter.get());
    sqlite3_reset(counter.get());
    stepping = outer;
    std::string bytes(8, '\0');
    for (std::size_t i = bytes.size(); i-- > 0; value >>= 8U) {
        bytes[i] = static_cast<char>(value & 0xffU);
    }
    return bytes;
}

std::int64_t Runtime::NextIdentity(Schema schema, std::string_view table, std::int64_t seed, std::int64_t step) {
    const bool outer = std::exchange(stepping, false);
    const auto guard = [&](bool* flag) { *flag = outer; };
    const std::unique_ptr<bool, decltype(guard)> restore(&stepping, guard);
    const std::string_view in = SqliteName(schema);
    Command count(db_, fmt::format("UPDATE {}.sqlite_sequence SET seq = seq + ? WHERE name = ? RETURNING seq", in));
    if (count.Bind(step).Bind(table).Step()) {
        const std::int64_t number = count.Integer(0);
        count.Step();
        return number;
    }
    Command(db_, fmt::format("INSERT INTO {}.sqlite_sequence (name, seq) VALUES (?, ?)", in))
        .Bind(table)
        .Bind(seed)
        .Step();
    return seed;
}

std::optional<DatePart> DatePartNamed(std::string_view word) {
    struct Row {
        std::string_view word;
        DatePart part;
    };
    static constexpr std::array words{
        Row{"year", DatePart::year},       Row{"yy", DatePart::year},
        Row{"yyyy", DatePart::year},       Row{"quarter", DatePart::quarter},
        Row{"qq", DatePart::quarter},      Row{"q", DatePart::quarter},
        Row{"month", DatePart::month},     Row{"mm", DatePart::month},
        Row{"m", DatePart::month},         Row{"dayofyear", DatePart::dayOfYear},
        Row{"dy", DatePart::dayOfYear},    Row{"y", DatePart::dayOfYear},
        Row{"day", DatePart::day},         Row{"dd", DatePart::day},
        Row{"d", DatePart::day},           Row{"week", DatePart::week},
        Row{"wk", DatePart::week},         Row{"ww", DatePart::week},
        Row{"weekday", DatePart::weekday}, Row{"dw", DatePart::weekday},
        Row{"w", DatePart::weekday},       Row{"hour", DatePart::hour},
        Row{"hh", DatePart::hour},         Row{"minute", DatePart::minute},
        Row{"mi", DatePart::minute},       Row{"n", DatePart::minute},
        Row{"second", DatePart::second},   Row{"ss", DatePart::second},
        Row{"s", DatePart::second},        Row{"millisecond", DatePart::millisecond},
        Row{"ms", DatePart::millisecond},
    };
    for (const Row& row : words) {
        if (EqualNames(row.word, word)) {
            return row.part;
        }
    }
    return std::nullopt;
}

} // namespace refhost::sql
