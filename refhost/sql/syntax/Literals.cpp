#include "refhost/sql/syntax/Literals.h"

#include <algorithm>
#include <array>

namespace refhost::sql {
namespace {

enum class Class : std::uint8_t { plain, name, digit, point, textQuote, nameQuote, bracket, minus, slash, control };

constexpr std::array<Class, 256> MakeClasses() {
    std::array<Class, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        const bool letter = (i >= 'a' && i <= 'z') || (i >= 'A' && i <= 'Z');
        if (letter || i == '_' || i == '@' || i == '#' || i == '$' || i >= 0x80) {
            table[i] = Class::name;
        } else if (i >= '0' && i <= '9') {
            table[i] = Class::digit;
        } else if (i < 9) {
            table[i] = Class::control;
        }
    }
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

/// `IsNameByte` for the scanner, which asks it of every byte: position-independent code inlines no public function.
bool InName(char c) { return ClassOf(c) == Class::name || ClassOf(c) == Class::digit; }

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

/// Length of the continuation of a line that begins at `position`: a backslash and the line's end; 0 for none.
std::size_t ContinuationAt(std::string_view text, std::size_t position) {
    if (text[position] != '\\') {
        return 0;
    }
    const std::string_view rest = text.substr(position + 1);
    return rest.starts_with('\n') ? 2U : rest.starts_with("\r\n") ? 3U : 0U;
}

bool HasContinuation(std::string_view text) {
    for (std::size_t at = text.find('\\'); at != std::string_view::npos; at = text.find('\\', at + 1)) {
        if (ContinuationAt(text, at) > 0) {
            return true;
        }
    }
    return false;
}

} // namespace

bool IsNameByte(char c) { return InName(c); }

std::string TextOf(const Literal& literal) {
    if (!literal.doubled) {
        return std::string(literal.body);
    }
    std::string text;
    text.reserve(literal.body.size());
    for (std::size_t i = 0; i < literal.body.size(); ++i) {
        if (const std::size_t length = ContinuationAt(literal.body, i); length > 0) {
            i += length - 1;
            continue;
        }
        text += literal.body[i];
        i += literal.body[i] == '\'' ? 1U : 0U;
    }
    return text;
}

std::size_t SkipQuoted(std::string_view sql, std::size_t position, char quote, bool& doubled) {
    const std::size_t begin = position;
    while (true) {
        const std::size_t end = sql.find(quote, position);
        if (end == std::string_view::npos) {
            return end;
        }
        if (At(sql, end + 1) != quote) {
            doubled = doubled || (quote == '\'' && HasContinuation(sql.substr(begin, end - begin)));
            return end + 1;
        }
        doubled = true;
        position = end + 2;
    }
}

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

bool ShapeScanner::Scan(std::string_view sql) {
    shape_.clear();
    literals_.clear();
    std::size_t kept = 0;
    std::size_t position = 0;
    const auto take = [&](std::size_t start, const Literal& literal) {
        shape_.append(sql, kept, start - kept);
        shape_ += static_cast<char>(literal.kind);
        literals_.push_back(literal);
        kept = position;
    };
    while (position < sql.size()) {
        switch (ClassOf(sql[position])) {
        case Class::plain:
            ++position;
            break;
        case Class::name: {
            const std::size_t start = position;
            do {
                ++position;
            } while (position < sql.size() && InName(sql[position]));
            if (position != start + 1 || (sql[start] | 0x20) != 'n' || At(sql, position) != '\'') {
                break;
            }
            [[fallthrough]];
        }
        case Class::textQuote: {
            Literal literal;
            const std::size_t start = position + 1;
            literal.national = position > kept && (sql[position - 1] | 0x20) == 'n' &&
                               (position < kept + 2 || !InName(sql[position - 2]));
            position = SkipQuoted(sql, start, '\'', literal.doubled);
            if (position == std::string_view::npos) {
                return false;
            }
            literal.body = sql.substr(start, position - start - 1);
            take(start - 1, literal);
            break;
        }
        case Class::digit: {
            const std::size_t start = position;
            const Literal literal = TakeNumber(sql, position);
            take(start, literal);
            break;
        }
        case Class::point: {
            const std::size_t start = position;
            if (IsDigit(At(sql, position + 1))) {
                const Literal literal = TakeNumber(sql, position);
                take(start, literal);
            } else {
                ++position;
            }
            break;
        }
        case Class::nameQuote:
        case Class::bracket: {
            bool doubled = false;
            position = SkipQuoted(sql, position + 1, sql[position] == '[' ? ']' : '"', doubled);
            if (position == std::string_view::npos) {
                return false;
            }
            break;
        }
        case Class::minus:
            position = At(sql, position + 1) == '-' ? SkipComment(sql, position) : position + 1;
            break;
        case Class::slash:
            position = At(sql, position + 1) == '*' ? SkipComment(sql, position) : position + 1;
            if (position == std::string_view::npos) {
                return false;
            }
            break;
        case Class::control:
            return false;
        }
    }
    shape_.append(sql, kept, sql.size() - kept);
    return true;
}

} // namespace refhost::sql
