#include "refhost/sql/syntax/Lexer.h"

#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <array>
#include <string>
#include <unordered_set>

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
    static const std::unordered_set<std::string> folded = [] {
        std::unordered_set<std::string> words;
        for (const char* reserved : reservedWords) {
            words.insert(FoldText(reserved));
        }
        return words;
    }();
    return folded.contains(FoldText(word));
}

bool Token::Is(std::string_view word) const { return kind == TokenKind::name && EqualNames(text, word); }

Token Lexer::Next() {
    Literal literal;
    ScanNext(sql_, scanned_, literal);
    const std::string_view written = sql_.substr(scanned_.begin, scanned_.end - scanned_.begin);
    Token token{TokenKind::end, std::string(written), 0, scanned_.begin};
    switch (scanned_.kind) {
    case ScanKind::end:
        break;
    case ScanKind::name:
        token.kind = TokenKind::name;
        break;
    case ScanKind::quotedName: {
        token.kind = TokenKind::quotedName;
        token.text = written.substr(1, written.size() - 2);
        const char quote = written.back();
        for (std::size_t at = token.text.find(quote); at != std::string::npos; at = token.text.find(quote, at + 1)) {
            token.text.erase(at, 1);
        }
        break;
    }
    case ScanKind::literal:
        token.kind = TokenKind::literal;
        if (literal.kind == LiteralKind::text) {
            token.text = TextOf(literal);
        }
        token.literal = literals_.size();
        literals_.push_back(literal);
        break;
    case ScanKind::symbol:
    case ScanKind::control:
        token.kind = TokenKind::symbol;
        break;
    case ScanKind::openQuote:
        Fail(105, "Unclosed quotation mark after the character string '{}'.",
             written.substr(written.find_first_of("'[\"") + 1));
    case ScanKind::openComment:
        Fail(113, "Missing end comment mark '*/'.");
    }
    return token;
}

} // namespace refhost::sql
