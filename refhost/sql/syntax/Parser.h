#pragma once

#include "refhost/sql/syntax/Ast.h"
#include "refhost/sql/syntax/Lexer.h"

#include <optional>
#include <string_view>
#include <vector>

namespace refhost::sql {

struct ParserOptions {
    /// Whether `Delete * From …` is taken.
    bool deleteStar = false;
};

/// Reads a batch. Every member throws SQL Server's syntax errors.
class Parser {
public:
    Parser(std::string_view sql, ParserOptions options);

    /// A batch of one statement, as a class sends it; nothing for a batch of blanks and comments.
    std::optional<Statement> ParseBatch();
    /// A batch of any number of statements, as a client tool sends it.
    std::vector<Statement> ParseScript();
    /// An expression alone, the text of a default.
    ExpressionPtr ParseExpressionText();
    /// A condition alone, the text of a check.
    ExpressionPtr ParseConditionText();

    /// The literals of what was read.
    const std::vector<Literal>& Literals() const { return lexer_.Literals(); }

private:
    class Depth;

    // Tokens.
    void Advance();
    const Token& Peek();
    bool At(std::string_view word) const { return token_.Is(word); }
    bool AtSymbol(std::string_view symbol) const { return token_.IsSymbol(symbol); }
    bool Accept(std::string_view word);
    bool AcceptSymbol(std::string_view symbol);
    void Expect(std::string_view word);
    void ExpectSymbol(std::string_view symbol);
    [[noreturn]] void FailHere() const;
    [[noreturn]] void FailCondition() const;
    void ExpectEnd();
    bool AtNameToken() const;
    std::string TakeName();
    std::string TakeAlias();
    Name TakeObjectName();
    std::int64_t TakeWholeNumber();
    std::string TextSince(std::size_t start) const;

    // Statements.
    Statement ParseStatement();
    std::vector<Statement> ParseBlock();
    std::unique_ptr<Conditional> ParseConditional();
    std::unique_ptr<Insert> ParseInsert();
    std::unique_ptr<Update> ParseUpdate();
    std::unique_ptr<Delete> ParseDelete();
    Statement ParseCreate();
    std::unique_ptr<CreateTable> ParseCreateTable();
    std::unique_ptr<CreateView> ParseCreateView(std::size_t start);
    std::unique_ptr<CreateIndex> ParseCreateIndex(bool unique);
    std::unique_ptr<Drop> ParseDrop();
    std::unique_ptr<AlterTable> ParseAlterTable();
    std::unique_ptr<Transaction> ParseTransaction(TransactionVerb verb);
    std::unique_ptr<SetOption> ParseSet();

    // Definitions.
    Type ParseType(int defaultLength);
    ColumnDefinition ParseColumn(std::vector<Constraint>& constraints);
    bool ParseTableConstraint(std::vector<Constraint>& constraints);
    void ParseConstraintBody(Constraint& constraint);
    void ParseCheck(Constraint& constraint);
    void SkipClustering();
    void SkipStorage();
    void SkipOptionList();
    std::string ParseDefaultText();
    std::vector<IndexColumn> ParseIndexColumns();

    // Queries.
    SelectPtr ParseSelect();
    SelectPtr ParseSelectPart();
    void ParseSelectCore(Select& select);
    SelectItem ParseSelectItem();
    std::vector<std::unique_ptr<Source>> ParseFrom();
    std::unique_ptr<Source> ParseJoins();
    std::unique_ptr<Source> ParseSource();
    std::optional<Join> AcceptJoin();
    void SkipTableHints();

    // Expressions.
    ExpressionPtr ParseCondition();
    ExpressionPtr ParseAny();
    ExpressionPtr ParseAnd();
    ExpressionPtr ParseNot();
    ExpressionPtr ParsePredicate();
    ExpressionPtr ParsePredicateTail(ExpressionPtr value);
    ExpressionPtr ParseIn(ExpressionPtr value, bool negated);
    ExpressionPtr ParseValue();
    ExpressionPtr ParseSum(bool conditionAllowed);
    ExpressionPtr ParseProduct(bool conditionAllowed);
    ExpressionPtr ParseUnary(bool conditionAllowed);
    ExpressionPtr ParsePrimary(bool conditionAllowed);
    ExpressionPtr ParseParenthesis(bool conditionAllowed);
    ExpressionPtr ParseCase();
    ExpressionPtr ParseConvert(bool cast);
    ExpressionPtr ParseNameOrCall();
    ExpressionPtr ParseCall(Name name);

    Lexer lexer_;
    ParserOptions options_;
    Token token_;
    std::optional<Token> ahead_;
    /// The token before the current one, which messages name at the end of the text.
    std::string previous_;
    int depth_ = 0;
};

} // namespace refhost::sql
