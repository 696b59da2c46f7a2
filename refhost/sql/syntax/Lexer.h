#pragma once

#include "refhost/sql/syntax/Scanner.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace refhost::sql {

enum class TokenKind { end, name, quotedName, literal, symbol };

struct Token {
    TokenKind kind = TokenKind::end;
    /// The token as written; of quoted names and texts what the quotes hold.
    std::string text;
    /// Of a literal: its place in `Lexer::Literals()`.
    std::size_t literal = 0;
    /// Position in the statement.
    std::size_t position = 0;

    /// Whether this is the unquoted word `word`, letter case ignored.
    bool Is(std::string_view word) const;
    /// Whether this is the symbol `symbol`.
    bool IsSymbol(std::string_view symbol) const { return kind == TokenKind::symbol && text == symbol; }
};

/// Whether a word is one of T-SQL's reserved words, letter case ignored.
bool IsReserved(std::string_view word);

/// Splits a statement into tokens, one at a time, so that a syntax error before an unclosed quote is met first.
class Lexer {
public:
    explicit Lexer(std::string_view sql) : sql_(sql) {}

    /// The next token. Throws the syntax error of an unclosed quote or comment.
    Token Next();

    /// The literals met so far, in their order.
    const std::vector<Literal>& Literals() const { return literals_; }
    std::string_view Source() const { return sql_; }

private:
    std::string_view sql_;
    Scanned scanned_;
    std::vector<Literal> literals_;
};

} // namespace refhost::sql
