#pragma once

#include "refhost/sql/syntax/Literals.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace refhost::sql {

/// What the scanner of the language finds.
enum class ScanKind : std::uint8_t {
    end,         ///< the end of the text
    name,        ///< a word: a keyword, a name or a variable
    quotedName,  ///< [name] or "name"
    literal,     ///< a constant
    symbol,      ///< one character, or two that belong together, such as <=
    control,     ///< a control character, which belongs nowhere
    openQuote,   ///< a quote that is not closed
    openComment, ///< a comment that is not closed
};

/// A piece of a statement: blanks and comments are none.
struct Scanned {
    ScanKind kind = ScanKind::end;
    std::size_t begin = 0;
    /// Behind the piece.
    std::size_t end = 0;
};

/// The one scanner of the language. Finds the piece that follows the one in `scanned`, or the first one for an empty
/// `scanned`; `literal` becomes the constant where it is one. Behind an open quote or comment there is nothing more.
void ScanNext(std::string_view sql, Scanned& scanned, Literal& literal);

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
