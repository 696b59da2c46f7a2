#include "refhost/sql/syntax/Parser.h"

#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace refhost::sql {

std::string Name::Text() const {
    std::string text;
    for (const std::string& part : parts) {
        if (&part != &parts.front()) {
            text += '.';
        }
        text += part;
    }
    return text;
}

std::string_view NameOf(MergeClause::Rows rows) {
    switch (rows) {
    case MergeClause::Rows::matched:
        return "WHEN MATCHED";
    case MergeClause::Rows::notMatched:
        return "WHEN NOT MATCHED";
    case MergeClause::Rows::notMatchedBySource:
        break;
    }
    return "WHEN NOT MATCHED BY SOURCE";
}

Parser::Parser(std::string_view sql, ParserOptions options) : lexer_(sql), options_(options) {}

void Parser::Advance() {
    if (token_.kind != TokenKind::end) {
        previous_ = token_.text;
    }
    if (ahead_) {
        token_ = std::move(*ahead_);
        ahead_.reset();
    } else {
        token_ = lexer_.Next();
    }
}

const Token& Parser::Peek() {
    if (!ahead_) {
        ahead_ = lexer_.Next();
    }
    return *ahead_;
}

bool Parser::Accept(std::string_view word) {
    if (!At(word)) {
        return false;
    }
    Advance();
    return true;
}

bool Parser::AcceptSymbol(std::string_view symbol) {
    if (!AtSymbol(symbol)) {
        return false;
    }
    Advance();
    return true;
}

void Parser::Expect(std::string_view word) {
    if (!Accept(word)) {
        FailHere();
    }
}

void Parser::ExpectSymbol(std::string_view symbol) {
    if (!AcceptSymbol(symbol)) {
        FailHere();
    }
}

void Parser::FailHere() const {
    if (token_.kind == TokenKind::end) {
        Fail(102, "Incorrect syntax near '{}'.", previous_);
    }
    if (token_.kind == TokenKind::name && IsReserved(token_.text)) {
        Fail(156, "Incorrect syntax near the keyword '{}'.", token_.text);
    }
    Fail(102, "Incorrect syntax near '{}'.", token_.text);
}

void Parser::FailDepth() {
    Fail(191, "Some part of your SQL statement is nested too deeply. Rewrite the query or break it up into "
              "smaller queries.");
}

void Parser::FailCondition() const {
    Fail(4145, "An expression of non-boolean type specified in a context where a condition is expected, near '{}'.",
         token_.kind == TokenKind::end ? previous_ : token_.text);
}

void Parser::ExpectEnd() {
    AcceptSymbol(";");
    if (token_.kind != TokenKind::end) {
        FailHere();
    }
}

bool Parser::AtNameToken() const {
    return token_.kind == TokenKind::quotedName ||
           (token_.kind == TokenKind::name && token_.text.front() != '@' && !IsReserved(token_.text));
}

bool Parser::AtVariable() const {
    return token_.kind == TokenKind::name && token_.text.size() > 1 && token_.text.front() == '@';
}

bool Parser::AtStatementEnd() const {
    static constexpr std::array starts{"select", "insert",   "update", "delete",   "create", "drop",  "alter",
                                       "begin",  "commit",   "save",   "rollback", "set",    "if",    "while",
                                       "break",  "continue", "return", "declare",  "print",  "exec",  "execute",
                                       "merge",  "use",      "end",    "else",     "with",   "throw", "raiserror"};
    return token_.kind == TokenKind::end || AtSymbol(";") ||
           std::any_of(starts.begin(), starts.end(), [this](const char* word) { return At(word); });
}

std::string Parser::TakeName() {
    if (!AtNameToken()) {
        FailHere();
    }
    std::string name = std::move(token_.text);
    token_.text = name;
    Advance();
    return name;
}

std::string Parser::TakeAlias() {
    if (token_.kind == TokenKind::literal && lexer_.Literals()[token_.literal].kind == LiteralKind::text) {
        std::string alias = token_.text;
        Advance();
        return alias;
    }
    return TakeName();
}

Name Parser::TakeObjectName() {
    Name name;
    name.parts.push_back(TakeName());
    while (AtSymbol(".")) {
        Advance();
        if (AtSymbol(".") && name.parts.size() < 3) {
            name.parts.emplace_back();
            continue;
        }
        name.parts.push_back(TakeName());
        if (name.parts.size() > 4) {
            FailHere();
        }
    }
    return name;
}

Name Parser::TakeTableName() {
    if (!AtVariable()) {
        return TakeObjectName();
    }
    const std::string variable = token_.text;
    if (std::ranges::none_of(tableVariables_, [&](const std::string& each) { return EqualNames(each, variable); })) {
        Fail(1087, "Must declare the table variable \"{}\".", variable);
    }
    Advance();
    return {{TableOfVariable(variable)}};
}

std::int64_t Parser::TakeWholeNumber() {
    const bool negative = AcceptSymbol("-");
    if (token_.kind != TokenKind::literal || lexer_.Literals()[token_.literal].kind != LiteralKind::integer) {
        FailHere();
    }
    std::int64_t value = 0;
    std::from_chars(token_.text.data(), token_.text.data() + token_.text.size(), value);
    Advance();
    return negative ? -value : value;
}

std::string Parser::TextSince(std::size_t start) const {
    std::size_t end = token_.kind == TokenKind::end ? lexer_.Source().size() : token_.position;
    std::string_view text = lexer_.Source().substr(start, end - start);
    const std::size_t last = text.find_last_not_of(" \t\r\n");
    return std::string(text.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

std::optional<Statement> Parser::ParseBatch() {
    Advance();
    while (AcceptSymbol(";")) {
    }
    if (token_.kind == TokenKind::end) {
        return std::nullopt;
    }
    Statement statement = ParseStatement();
    ExpectEnd();
    return statement;
}

Statements Parser::ParseScript(Variables parameters) {
    options_.script = true;
    declared_ = std::move(parameters);
    Advance();
    Statements statements;
    while (true) {
        while (AcceptSymbol(";")) {
        }
        if (token_.kind == TokenKind::end) {
            return statements;
        }
        const bool first = statements.empty();
        statements.push_back(ParseStatement());
        if (statements.back().As<CreateView>() != nullptr) {
            if (!first) {
                Fail(111, "'CREATE VIEW' must be the first statement in a query batch.");
            }
            ExpectEnd();
        }
    }
}

Variables Parser::ParseParameters() {
    Advance();
    while (token_.kind != TokenKind::end) {
        std::string name = TakeVariable();
        Accept("as");
        declared_.Declare(std::move(name), ParseType(1));
        if (!Accept("output")) {
            Accept("out");
        }
        if (!AcceptSymbol(",")) {
            break;
        }
    }
    ExpectEnd();
    return std::move(declared_);
}

ExpressionPtr Parser::ParseExpressionText() {
    Advance();
    ExpressionPtr expression = ParseValue();
    ExpectEnd();
    return expression;
}

Constraint Parser::ParseConstraintText() {
    Advance();
    Constraint constraint;
    ParseConstraintBody(constraint);
    ExpectEnd();
    return constraint;
}

ExpressionPtr Parser::ParseConditionText() {
    Advance();
    ExpressionPtr expression = ParseCondition();
    ExpectEnd();
    return expression;
}

} // namespace refhost::sql
