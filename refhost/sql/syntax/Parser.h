#pragma once

#include "refhost/sql/syntax/Ast.h"
#include "refhost/sql/syntax/Lexer.h"
#include "refhost/sql/syntax/Variables.h"

#include <optional>
#include <string_view>
#include <vector>

namespace refhost::sql {

struct ParserOptions {
    /// Whether `Delete * From …` is taken.
    bool deleteStar = false;
    /// Whether the batch comes from a client tool and may hold what steers a batch: DECLARE, WHILE, PRINT and so on.
    bool script = false;
};

/// Reads a batch. Every member throws SQL Server's syntax errors.
class Parser {
public:
    Parser(std::string_view sql, ParserOptions options);

    /// A batch of one statement, as a class sends it; nothing for a batch of blanks and comments.
    std::optional<Statement> ParseBatch();
    /// A batch of any number of statements, as a client tool sends it.
    /// @param parameters variables that the batch has from its beginning
    Statements ParseScript(Variables parameters = {});
    /// Definitions of parameters alone: "@a int, @b nvarchar(10) output".
    Variables ParseParameters();
    /// The variables that the batch declares, its parameters in front.
    const Variables& Declared() const { return declared_; }
    /// An expression alone, the text of a default.
    ExpressionPtr ParseExpressionText();
    /// A condition alone, the text of a check.
    ExpressionPtr ParseConditionText();
    /// A constraint of a table alone.
    Constraint ParseConstraintText();

    /// The literals of what was read.
    const std::vector<Literal>& Literals() const { return lexer_.Literals(); }

private:
    /// How deeply parentheses, subqueries, cases and blocks may nest; guards the stack.
    static constexpr int maxDepth = 250;

    /// Counts a level of nesting for the life of the object. Throws beyond the deepest.
    class Depth {
    public:
        explicit Depth(Parser& parser) : parser_(parser) {
            if (++parser_.depth_ > maxDepth) {
                --parser_.depth_;
                FailDepth();
            }
        }
        ~Depth() { --parser_.depth_; }
        Depth(const Depth&) = delete;
        Depth& operator=(const Depth&) = delete;

    private:
        Parser& parser_;
    };

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
    [[noreturn]] static void FailDepth();
    [[noreturn]] void FailCondition() const;
    void ExpectEnd();
    bool AtNameToken() const;
    bool AtVariable() const;
    /// Whether the statement at hand is over: at the end, a semicolon, or the first word of another.
    bool AtStatementEnd() const;
    std::string TakeName();
    std::string TakeAlias();
    Name TakeObjectName();
    /// The name of a table to read or write, which may be a table variable. Throws for one that is not declared.
    Name TakeTableName();
    std::int64_t TakeWholeNumber();
    std::string TextSince(std::size_t start) const;

    // Statements.
    Statement ParseStatement();
    /// The statement that steers a batch which begins here; nothing when none does.
    std::optional<Statement> ParseSteering();
    Statements ParseBlock();
    /// Statements up to `end`, which stays.
    Statements ParseStatementsUntilEnd();
    Statements ParseBranch();
    Conditional ParseConditional();
    TryCatch ParseTryCatch();
    Declare ParseDeclare();
    SetVariable ParseSetVariable();
    Statement ParseExecute();
    RaiseError ParseRaiseError();
    Throw ParseThrow();
    std::string TakeVariable();
    /// Throws SQL Server's error when a script uses a variable that nothing above has declared.
    void RequireDeclared(const std::string& variable) const;
    /// Whether a symbol assigns: = or one of += -= *= /= %=.
    static bool IsAssignment(const Token& token);
    /// `name operation= value` as the value that it gives `name`; behind the name, at the operator.
    ExpressionPtr ParseAssigned(ExpressionPtr name);
    /// A statement that may have common table expressions in front.
    Statement ParseManipulation();
    /// (n) behind TOP of an UPDATE or DELETE; nullptr without one.
    ExpressionPtr ParseWriteTop();
    Outputs ParseOutputs();
    Insert ParseInsert();
    Update ParseUpdate();
    Delete ParseDelete();
    /// The rows that a statement reads or writes, where it names them.
    void ParseRows(std::vector<std::unique_ptr<Source>>& from, ExpressionPtr& where);
    Merge ParseMerge();
    MergeClause ParseMergeClause(const Merge& merge);
    /// SET …, behind it; `target` is what the table is called.
    std::vector<Assignment> ParseAssignments(const std::string& target);
    /// (name, …), behind the opening parenthesis.
    std::vector<std::string> ParseNames();
    /// (value, …), of which each may be DEFAULT.
    std::vector<ExpressionPtr> ParseRow();
    Transaction ParseTransaction(TransactionVerb verb);
    Statement ParseSet();

    // Definitions.
    Statement ParseCreate();
    CreateTable ParseCreateTable();
    /// The columns and constraints of a table, in parentheses.
    void ParseTableBody(CreateTable& create);
    CreateView ParseCreateView(std::size_t start);
    CreateIndex ParseCreateIndex(bool unique);
    Drop ParseDrop();
    AlterTable ParseAlterTable();
    Type ParseType(int defaultLength);
    ColumnDefinition ParseColumn(std::vector<Constraint>& constraints);
    bool ParseTableConstraint(std::vector<Constraint>& constraints);
    void ParseConstraintBody(Constraint& constraint);
    void ParseCheck(Constraint& constraint);
    void ParseReference(Constraint& constraint);
    ReferenceRule ParseReferenceRule();
    /// Whether a constraint without a name begins here.
    bool AtConstraint() const;
    void ParseAlterDrop(AlterTable& alter);
    void ParseAlterAdd(AlterTable& alter);
    void SkipClustering();
    void SkipStorage();
    void SkipOptionList();
    /// The value of a default or of a computed column, as written.
    std::string ParseDefinitionText();
    std::vector<IndexColumn> ParseIndexColumns();

    // Queries.
    SelectPtr ParseSelect();
    SelectPtr ParseSelectPart();
    CommonTables ParseCommonTables();
    std::vector<OrderItem> ParseOrderItems();
    void ParseOffset(Select& select);
    /// (VALUES (…), (…)) as the union of its rows; behind the opening parenthesis.
    SelectPtr ParseValueRows();
    std::unique_ptr<Window> ParseWindow();
    std::string ParseFrame();
    std::string ParseFrameBound();
    void ParseSelectCore(Select& select);
    SelectItem ParseSelectItem();
    std::vector<std::unique_ptr<Source>> ParseFrom();
    std::unique_ptr<Source> ParseJoins();
    std::unique_ptr<Source> ParseSource();
    std::optional<Join> AcceptJoin();
    void SkipTableHints();

    // Expressions.
    ExpressionPtr ParseCondition();
    /// Conditions with a word between, as arguments of one expression; what stands alone is itself.
    ExpressionPtr ParseJoined(std::string_view word, Node node, ExpressionPtr (Parser::*part)());
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
    ExpressionPtr ParseConvert(bool cast, bool tries);
    ExpressionPtr ParseNameOrCall();
    ExpressionPtr ParseCall(Name name);

    Lexer lexer_;
    ParserOptions options_;
    Token token_;
    std::optional<Token> ahead_;
    /// The token before the current one, which messages name at the end of the text.
    std::string previous_;
    int depth_ = 0;
    /// Whether a default or a check is read, which hold no variables.
    bool inDefinition_ = false;
    Variables declared_;
    std::vector<std::string> tableVariables_;
};

} // namespace refhost::sql
