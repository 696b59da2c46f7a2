#include "refhost/sql/syntax/Words.h"

#include "refhost/sql/syntax/Lexer.h"
#include "refhost/sql/types/Collation.h"

#include <algorithm>

namespace refhost::sql {

std::vector<std::string> WordsOf(std::string_view text) {
    std::vector<std::string> words;
    Lexer lexer(text);
    for (Token token = lexer.Next(); token.kind != TokenKind::end; token = lexer.Next()) {
        if (token.kind == TokenKind::name || token.kind == TokenKind::quotedName) {
            words.push_back(std::move(token.text));
        }
    }
    return words;
}

bool Mentions(std::string_view text, std::string_view name) {
    return std::ranges::any_of(WordsOf(text), [&](const std::string& word) { return EqualNames(word, name); });
}

} // namespace refhost::sql
