#include "refhost/sql/syntax/Scanner.h"

#include "text/Digit.h"

#include <algorithm>
#include <array>

namespace refhost::sql {
namespace {

using text::IsDigit;

enum class Class : std::uint8_t {
    symbol,
    blank,
    name,
    national, ///< N, which may stand in front of a text
    digit,
    point,
    textQuote,
    nameQuote,
    bracket,
    minus,
    slash,
    control,
};

constexpr std::array<Class, 256> MakeClasses() {
    std::array<Class, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        const bool letter = (i >= 'a' && i <= 'z') || (i >= 'A' && i <= 'Z');
        if (letter || i == '_' || i == '@' || i == '#' || i == '$' || i >= 0x80) {
            table[i] = Class::name;
        } else if (i >= '0' && i <= '9') {
            table[i] = Class::digit;
        } else if (i == ' ' || (i >= '\t' && i <= '\r')) {
            table[i] = Class::blank;
        } else if (i < '\t') {
            table[i] = Class::control;
        }
    }
    table['N'] = Class::national;
    table['n'] = Class::national;
    table['.'] = Class::point;
    table['\''] = Class::textQuote;
    table['"'] = Class::nameQuote;
    table['['] = Class::bracket;
    table['-'] = Class::minus;
    table['/'] = Class::slash;
    return table;
}

constexpr std::array<Class, 256> classes = MakeClasses();

Class ClassOf(char c) { return classes[static_cast<unsigned char>(c)]; }

/// Whether a byte can stand in a name; bytes of non-ASCII characters can.
bool InName(char c) {
    const Class kind = ClassOf(c);
    return kind == Class::name || kind == Class::national || kind == Class::digit;
}

bool IsHexDigit(char c) { return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

char At(std::string_view sql, std::size_t position) { return position < sql.size() ? sql[position] : '\0'; }

/// Whether `digits`, without leading zeros, is above the largest 32-bit number.
bool IsBig(std::string_view digits) {
    constexpr std::string_view largest = "2147483647";
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits.size() > largest.size() || (digits.size() == largest.size() && digits > largest);
}

/// The position behind a comment that begins at `position`, npos when it is not closed.
std::size_t SkipComment(std::string_view sql, std::size_t position) {
    if (sql[position] == '-') {
        const std::size_t end = sql.find('\n', position);
        return end == std::string_view::npos ? sql.size() : end + 1;
    }
    int depth = 1;
    for (position += 2; position < sql.size();) {
        if (sql[position] == '*' && At(sql, position + 1) == '/') {
            position += 2;
            if (--depth == 0) {
                return position;
            }
        } else if (sql[position] == '/' && At(sql, position + 1) == '*') {
            position += 2;
            ++depth;
        } else {
            ++position;
        }
    }
    return std::string_view::npos;
}

/// The position behind the closing quote of what is quoted from `position` on, npos when there is none; sets `doubled`
/// when the quote stands doubled inside.
std::size_t SkipQuoted(std::string_view sql, std::size_t position, char quote, bool& doubled) {
    while (true) {
        const std::size_t end = sql.find(quote, position);
        if (end == std::string_view::npos) {
            return end;
        }
        if (At(sql, end + 1) != quote) {
            return end + 1;
        }
        doubled = true;
        position = end + 2;
    }
}

/// Reads the number that begins at `position` (a digit, or a point before a digit) and moves behind it.
Literal TakeNumber(std::string_view sql, std::size_t& position) {
    Literal literal;
    const std::size_t start = position;
    if (sql[position] == '0' && (At(sql, position + 1) | 0x20) == 'x') {
        literal.kind = LiteralKind::binary;
        position += 2;
        while (IsHexDigit(At(sql, position))) {
            ++position;
        }
        literal.body = sql.substr(start + 2, position - start - 2);
        return literal;
    }
    while (IsDigit(At(sql, position))) {
        ++position;
    }
    if (At(sql, position) == '.') {
        literal.kind = LiteralKind::decimal;
        ++position;
        while (IsDigit(At(sql, position))) {
            ++position;
        }
    } else {
        literal.kind = IsBig(sql.substr(start, position - start)) ? LiteralKind::bigNumber : LiteralKind::integer;
    }
    if ((At(sql, position) | 0x20) == 'e') {
        std::size_t exponent = position + 1;
        if (At(sql, exponent) == '+' || At(sql, exponent) == '-') {
            ++exponent;
        }
        if (IsDigit(At(sql, exponent))) {
            literal.kind = LiteralKind::real;
            position = exponent;
            while (IsDigit(At(sql, position))) {
                ++position;
            }
        }
    }
    literal.body = sql.substr(start, position - start);
    return literal;
}

/// Whether a symbol of two characters begins with `c` and `next`.
bool IsPair(char c, char next) {
    switch (c) {
    case '<':
        return next == '=' || next == '>';
    case '!':
        return next == '=' || next == '<' || next == '>';
    case '>':
    case '+':
    case '-':
    case '*':
    case '/':
    case '%':
        return next == '=';
    default:
        return false;
    }
}

std::size_t SkipName(std::string_view sql, std::size_t position) {
    while (position < sql.size() && InName(sql[position])) {
        ++position;
    }
    return position;
}

/// What the scanner stops at, beside the end and what cannot be scanned.
enum class Stops { everyPiece, literals };

/// `ScanNext`; whoever asks for literals alone passes all else without a stop.
template <Stops stops> ScanKind Take(std::string_view sql, Scanned& scanned, Literal& literal) {
    constexpr std::size_t open = std::string_view::npos;
    std::size_t position = scanned.end;
    while (position < sql.size()) {
        const std::size_t begin = position;
        const char c = sql[position];
        ScanKind kind = ScanKind::literal;
        switch (ClassOf(c)) {
        case Class::blank:
            ++position;
            continue;
        case Class::name:
            position = SkipName(sql, position + 1);
            kind = ScanKind::name;
            break;
        case Class::national:
            if (At(sql, position + 1) != '\'') {
                position = SkipName(sql, position + 1);
                kind = ScanKind::name;
                break;
            }
            ++position;
            [[fallthrough]];
        case Class::textQuote: {
            const std::size_t start = position + 1;
            literal = Literal{LiteralKind::text, position != begin, false, {}};
            position = SkipQuoted(sql, start, '\'', literal.doubled);
            if (position == open) {
                kind = ScanKind::openQuote;
                break;
            }
            literal.body = sql.substr(start, position - start - 1);
            literal.doubled = literal.doubled || HasContinuation(literal.body);
            break;
        }
        case Class::point:
            if (!IsDigit(At(sql, position + 1))) {
                ++position;
                kind = ScanKind::symbol;
                break;
            }
            [[fallthrough]];
        case Class::digit:
            literal = TakeNumber(sql, position);
            break;
        case Class::nameQuote:
        case Class::bracket: {
            bool doubled = false;
            position = SkipQuoted(sql, position + 1, c == '[' ? ']' : '"', doubled);
            kind = position == open ? ScanKind::openQuote : ScanKind::quotedName;
            break;
        }
        case Class::minus:
        case Class::slash:
            if (At(sql, position + 1) == (c == '-' ? '-' : '*')) {
                position = SkipComment(sql, position);
                if (position != open) {
                    continue;
                }
                kind = ScanKind::openComment;
                break;
            }
            [[fallthrough]];
        case Class::symbol:
            position += stops == Stops::everyPiece && IsPair(c, At(sql, position + 1)) ? 2U : 1U;
            kind = ScanKind::symbol;
            break;
        case Class::control:
            ++position;
            kind = ScanKind::control;
            break;
        }
        const bool passed = kind == ScanKind::name || kind == ScanKind::quotedName || kind == ScanKind::symbol;
        if (stops == Stops::everyPiece || !passed) {
            scanned.begin = begin;
            scanned.end = std::min(position, sql.size());
            return kind;
        }
    }
    scanned.begin = scanned.end = sql.size();
    return ScanKind::end;
}

} // namespace

void ScanNext(std::string_view sql, Scanned& scanned, Literal& literal) {
    scanned.kind = Take<Stops::everyPiece>(sql, scanned, literal);
}

bool ShapeScanner::Scan(std::string_view sql) {
    shape_.clear();
    literals_.clear();
    std::size_t kept = 0;
    Scanned scanned;
    Literal literal;
    ScanKind kind = ScanKind::end;
    while ((kind = Take<Stops::literals>(sql, scanned, literal)) == ScanKind::literal) {
        shape_.append(sql, kept, scanned.begin - kept);
        shape_ += static_cast<char>(literal.kind);
        literals_.push_back(literal);
        kept = scanned.end;
    }
    shape_.append(sql, kept, sql.size() - kept);
    return kind == ScanKind::end;
}

} // namespace refhost::sql
