#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace refhost::sql {

enum class LiteralKind : std::uint8_t {
    text = 1,      ///< 'abc' or N'abc'
    integer = 2,   ///< a whole number within 32 bits
    bigNumber = 3, ///< a whole number beyond 32 bits, which is a numeric
    decimal = 4,   ///< 12.5
    real = 5,      ///< 1e5
    binary = 6,    ///< 0xAB
};

/// A constant in the text of a statement.
struct Literal {
    LiteralKind kind = LiteralKind::text;
    /// Whether an N stands in front of the quote.
    bool national = false;
    /// Whether the body of a text is not the text itself: it holds doubled quotes or continued lines.
    bool doubled = false;
    /// The characters between the quotes, or of the number.
    std::string_view body;
};

/// The text that a text literal means: doubled quotes are one, and a backslash at a line's end goes with the line's
/// end. The server itself continues the literal so, not only its client tools: "Backslash (Line Continuation)" of the
/// T-SQL reference counts it to the language, for Azure SQL Database too, and has it before LF and before CR LF.
std::string TextOf(const Literal& literal);

/// Whether a line of the body of a text is continued.
bool HasContinuation(std::string_view body);

} // namespace refhost::sql
