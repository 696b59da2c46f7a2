#include "refhost/sql/syntax/Lexer.h"

#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <array>

namespace refhost::sql {
namespace {

constexpr std::array reservedWords{
    "add",        "all",         "alter",    "and",      "any",        "as",       "asc",       "begin",    "between",
    "break",      "by",          "case",     "check",    "close",      "coalesce", "collate",   "column",   "commit",
    "constraint", "contains",    "continue", "convert",  "create",     "cross",    "current",   "cursor",   "database",
    "declare",    "default",     "delete",   "desc",     "distinct",   "drop",     "else",      "end",      "escape",
    "except",     "exec",        "execute",  "exists",   "exit",       "fetch",    "for",       "foreign",  "from",
    "full",       "function",    "goto",     "grant",    "group",      "having",   "holdlock",  "identity", "if",
    "in",         "index",       "inner",    "insert",   "intersect",  "into",     "is",        "join",     "key",
    "kill",       "left",        "like",     "merge",    "national",   "nocheck",  "not",       "null",     "nullif",
    "of",         "off",         "on",       "open",     "option",     "or",       "order",     "outer",    "over",
    "percent",    "pivot",       "plan",     "primary",  "print",      "proc",     "procedure", "public",   "raiserror",
    "read",       "references",  "return",   "revoke",   "right",      "rollback", "rule",      "save",     "schema",
    "select",     "set",         "shutdown", "some",     "statistics", "table",    "then",      "to",       "top",
    "tran",       "transaction", "trigger",  "truncate", "union",      "unique",   "update",    "use",      "user",
    "values",     "view",        "waitfor",  "when",     "where",      "while",    "with",
};

} // namespace

bool IsReserved(std::string_view word) {
    return std::any_of(reservedWords.begin(), reservedWords.end(),
                       [word](const char* reserved) { return EqualNames(reserved, word); });
}

bool Token::Is(std::string_view word) const { return kind == TokenKind::name && EqualNames(text, word); }

void Lexer::SkipBlanksAndComments() {
    while (position_ < sql_.size()) {
        const char c = sql_[position_];
        if (c == ' ' || (c >= '\t' && c <= '\r')) {
            ++position_;
        } else if (c == '-' && At(position_ + 1) == '-') {
            const std::size_t end = sql_.find('\n', position_);
            position_ = end == std::string_view::npos ? sql_.size() : end + 1;
        } else if (c == '/' && At(position_ + 1) == '*') {
            int depth = 0;
            do {
                if (position_ >= sql_.size()) {
                    Fail(113, "Missing end comment mark '*/'.");
                }
                const bool opens = sql_[position_] == '/' && At(position_ + 1) == '*';
                const bool closes = sql_[position_] == '*' && At(position_ + 1) == '/';
                depth += (opens ? 1 : 0) - (closes ? 1 : 0);
                position_ += opens || closes ? 2 : 1;
            } while (depth > 0);
        } else {
            return;
        }
    }
}

std::size_t Lexer::CloseQuote(std::size_t start, char quote, bool& doubled) const {
    const std::size_t end = SkipQuoted(sql_, start, quote, doubled);
    if (end == std::string_view::npos) {
        Fail(105, "Unclosed quotation mark after the character string '{}'.", sql_.substr(start));
    }
    return end;
}

Token Lexer::Next() {
    SkipBlanksAndComments();
    Token token;
    token.position = position_;
    if (position_ >= sql_.size()) {
        return token;
    }
    const char c = sql_[position_];
    const bool national = (c == 'N' || c == 'n') && At(position_ + 1) == '\'';
    if (c == '\'' || national) {
        Literal literal;
        literal.national = national;
        const std::size_t start = position_ + (national ? 2 : 1);
        position_ = CloseQuote(start, '\'', literal.doubled);
        literal.body = sql_.substr(start, position_ - start - 1);
        token.kind = TokenKind::literal;
        token.text = TextOf(literal);
        token.literal = literals_.size();
        literals_.push_back(literal);
    } else if (IsDigit(c) || (c == '.' && IsDigit(At(position_ + 1)))) {
        const Literal literal = TakeNumber(sql_, position_);
        token.kind = TokenKind::literal;
        token.text = std::string(sql_.substr(token.position, position_ - token.position));
        token.literal = literals_.size();
        literals_.push_back(literal);
    } else if (c == '[' || c == '"') {
        const char quote = c == '[' ? ']' : '"';
        bool doubled = false;
        const std::size_t start = position_ + 1;
        position_ = CloseQuote(start, quote, doubled);
        token.kind = TokenKind::quotedName;
        token.text = std::string(sql_.substr(start, position_ - start - 1));
        for (std::size_t at = token.text.find(quote); at != std::string::npos; at = token.text.find(quote, at + 1)) {
            token.text.erase(at, 1);
        }
    } else if (IsNameByte(c)) {
        while (position_ < sql_.size() && IsNameByte(sql_[position_])) {
            ++position_;
        }
        token.kind = TokenKind::name;
        token.text = std::string(sql_.substr(token.position, position_ - token.position));
    } else {
        token.kind = TokenKind::symbol;
        const char next = At(position_ + 1);
        const bool pair = (c == '<' && (next == '=' || next == '>')) || (c == '>' && next == '=') ||
                          (c == '!' && (next == '=' || next == '<' || next == '>')) ||
                          (next == '=' && std::string_view("+-*/%").find(c) != std::string_view::npos);
        position_ += pair ? 2 : 1;
        token.text = std::string(sql_.substr(token.position, position_ - token.position));
    }
    return token;
}

} // namespace refhost::sql
