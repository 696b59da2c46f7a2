#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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

/// Reads the rest of a quoted text behind its opening `quote`: returns the position behind the closing quote, or npos
/// when there is none; sets `doubled` when the quote stands doubled inside or, between single quotes, a
/// line is continued.
std::size_t SkipQuoted(std::string_view sql, std::size_t position, char quote, bool& doubled);
/// Reads the number that begins at `position` (a digit, or a point before a digit) and moves behind it.
Literal TakeNumber(std::string_view sql, std::size_t& position);

/// Whether a byte can stand in a name; bytes of non-ASCII characters can.
bool IsNameByte(char c);
inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Takes the literals out of a statement. What is left is its shape: statements that differ in their literals alone
/// have one shape. This runs for every statement, so it makes one pass and allocates only while its buffers grow.
class ShapeScanner {
public:
    /// Returns false when the text has no shape, because a quote or a comment is not closed or it holds control
    /// characters; then only the parser can tell what is wrong with it.
    bool Scan(std::string_view sql);

    const std::string& Shape() const { return shape_; }
    const std::vector<Literal>& Literals() const { return literals_; }

private:
    std::string shape_;
    std::vector<Literal> literals_;
};

} // namespace refhost::sql
