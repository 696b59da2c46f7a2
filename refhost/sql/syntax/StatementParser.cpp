#include "refhost/sql/syntax/Parser.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <array>
#include <utility>

namespace refhost::sql {
namespace {

/// The operators of compound assignments.
constexpr std::array<std::string_view, 5> compoundOperators{"+=", "-=", "*=", "/=", "%="};

} // namespace

Statement Parser::ParseStatement() {
    const Depth depth(*this);
    if (At("with") || At("select") || AtSymbol("(") || At("insert") || At("update") || At("delete") || At("merge")) {
        return ParseManipulation();
    }
    if (At("create")) {
        return ParseCreate();
    }
    if (Accept("drop")) {
        return {ParseDrop()};
    }
    if (Accept("alter")) {
        return {ParseAlterTable()};
    }
    if (Accept("truncate")) {
        Expect("table");
        return {Truncate{TakeObjectName()}};
    }
    if (At("begin") && (Peek().Is("tran") || Peek().Is("transaction"))) {
        Advance();
        return {ParseTransaction(TransactionVerb::begin)};
    }
    if (Accept("commit")) {
        return {ParseTransaction(TransactionVerb::commit)};
    }
    if (Accept("rollback")) {
        return {ParseTransaction(TransactionVerb::rollback)};
    }
    if (Accept("save")) {
        return {ParseTransaction(TransactionVerb::save)};
    }
    if (Accept("set")) {
        return ParseSet();
    }
    if (Accept("if")) {
        return {ParseConditional()};
    }
    if (options_.script) {
        if (std::optional<Statement> steering = ParseSteering()) {
            return std::move(*steering);
        }
    }
    FailHere();
}

Statement Parser::ParseManipulation() {
    CommonTables with = Accept("with") ? ParseCommonTables() : CommonTables();
    if (Accept("insert")) {
        Insert insert = ParseInsert();
        if (!with.empty()) {
            if (!insert.select) {
                FailHere();
            }
            insert.select->with = std::move(with);
        }
        return {std::move(insert)};
    }
    if (Accept("update")) {
        Update update = ParseUpdate();
        update.with = std::move(with);
        return {std::move(update)};
    }
    if (Accept("delete")) {
        Delete del = ParseDelete();
        del.with = std::move(with);
        return {std::move(del)};
    }
    if (Accept("merge")) {
        Merge merge = ParseMerge();
        merge.with = std::move(with);
        return {std::move(merge)};
    }
    SelectPtr select = ParseSelect();
    select->with = std::move(with);
    return {std::move(select)};
}

std::optional<Statement> Parser::ParseSteering() {
    if (At("begin")) {
        if (Peek().Is("try")) {
            return Statement{ParseTryCatch()};
        }
        return Statement{Block{ParseBlock()}};
    }
    if (Accept("while")) {
        Loop loop;
        loop.condition = ParseCondition();
        loop.body = ParseBranch();
        return Statement{std::move(loop)};
    }
    if (Accept("declare")) {
        return Statement{ParseDeclare()};
    }
    if (Accept("print")) {
        return Statement{Print{ParseValue()}};
    }
    if (Accept("use")) {
        return Statement{Use{TakeName()}};
    }
    if (Accept("exec") || Accept("execute")) {
        return ParseExecute();
    }
    if (Accept("raiserror")) {
        return Statement{ParseRaiseError()};
    }
    if (Accept("throw")) {
        return Statement{ParseThrow()};
    }
    if (Accept("break")) {
        return Statement{Jump::breakLoop};
    }
    if (Accept("continue")) {
        return Statement{Jump::continueLoop};
    }
    if (Accept("return")) {
        if (!AtStatementEnd()) {
            Fail(178, "A RETURN statement with a return value cannot be used in this context.");
        }
        return Statement{Jump::endBatch};
    }
    return std::nullopt;
}

Statements Parser::ParseStatementsUntilEnd() {
    Statements statements;
    do {
        while (AcceptSymbol(";")) {
        }
        statements.push_back(ParseStatement());
        while (AcceptSymbol(";")) {
        }
    } while (!At("end"));
    return statements;
}

Statements Parser::ParseBlock() {
    Expect("begin");
    Statements statements = ParseStatementsUntilEnd();
    Expect("end");
    return statements;
}

Statements Parser::ParseBranch() {
    if (At("begin") && !Peek().Is("tran") && !Peek().Is("transaction") && !Peek().Is("try")) {
        return ParseBlock();
    }
    Statements statements;
    statements.push_back(ParseStatement());
    return statements;
}

Conditional Parser::ParseConditional() {
    Conditional conditional;
    conditional.condition = ParseCondition();
    conditional.then = ParseBranch();
    if (AtSymbol(";") && Peek().Is("else")) {
        Advance();
    }
    if (Accept("else")) {
        conditional.otherwise = ParseBranch();
    }
    return conditional;
}

TryCatch Parser::ParseTryCatch() {
    TryCatch statement;
    const auto part = [this](std::string_view word) {
        Expect("begin");
        Expect(word);
        Statements statements = At("end") ? Statements() : ParseStatementsUntilEnd();
        Expect("end");
        Expect(word);
        return statements;
    };
    statement.tried = part("try");
    AcceptSymbol(";");
    statement.caught = part("catch");
    return statement;
}

std::string Parser::TakeVariable() {
    if (!AtVariable() || token_.text.compare(0, 2, "@@") == 0) {
        FailHere();
    }
    std::string name = token_.text;
    Advance();
    return name;
}

void Parser::RequireDeclared(const std::string& variable) const {
    if (options_.script && variable.compare(0, 2, "@@") != 0 && !declared_.Find(variable)) {
        Fail(137, "Must declare the scalar variable \"{}\".", variable);
    }
}

bool Parser::IsAssignment(const Token& token) {
    return token.IsSymbol("=") || (token.kind == TokenKind::symbol &&
                                   std::ranges::find(compoundOperators, token.text) != compoundOperators.end());
}

ExpressionPtr Parser::ParseAssigned(ExpressionPtr name) {
    if (AcceptSymbol("=")) {
        return ParseValue();
    }
    for (const std::string_view compound : compoundOperators) {
        if (AcceptSymbol(compound)) {
            ExpressionPtr value = Make(Node::binary, std::move(name), ParseValue());
            value->text = compound.front();
            return value;
        }
    }
    FailHere();
}

Declare Parser::ParseDeclare() {
    Declare declare;
    do {
        std::string name = TakeVariable();
        Accept("as");
        if (At("cursor")) {
            FailOwn(host::error_number::unspecified, "The embedded database has no cursor variables.");
        }
        if (Accept("table")) {
            CreateTable& table = declare.tables.emplace_back();
            table.table.parts = {TableOfVariable(name)};
            ParseTableBody(table);
            tableVariables_.push_back(std::move(name));
            continue;
        }
        VariableDefinition& variable = declare.variables.emplace_back();
        variable.name = std::move(name);
        variable.type = ParseType(1);
        declared_.Declare(variable.name, variable.type);
        if (AcceptSymbol("=")) {
            variable.value = ParseValue();
        }
    } while (AcceptSymbol(","));
    return declare;
}

SetVariable Parser::ParseSetVariable() {
    SetVariable set;
    ExpressionPtr variable = Make(Node::variable);
    variable->text = set.name = TakeVariable();
    RequireDeclared(set.name);
    set.value = ParseAssigned(std::move(variable));
    return set;
}

Statement Parser::ParseExecute() {
    if (AcceptSymbol("(")) {
        ExecuteText execute{ParseValue()};
        ExpectSymbol(")");
        return {std::move(execute)};
    }
    ExecuteProcedure execute;
    execute.procedure = TakeObjectName();
    while (!AtStatementEnd()) {
        ProcedureArgument& argument = execute.arguments.emplace_back();
        if (AtVariable() && Peek().IsSymbol("=")) {
            argument.name = TakeVariable();
            Advance();
        }
        argument.value = ParseValue();
        argument.output = Accept("output") || Accept("out");
        if (!AcceptSymbol(",")) {
            break;
        }
    }
    return {std::move(execute)};
}

RaiseError Parser::ParseRaiseError() {
    RaiseError raise;
    ExpectSymbol("(");
    do {
        raise.arguments.push_back(ParseValue());
    } while (AcceptSymbol(","));
    ExpectSymbol(")");
    if (Accept("with")) {
        do {
            TakeName(); // NOWAIT and LOG say nothing here
        } while (AcceptSymbol(","));
    }
    if (raise.arguments.size() < 3) {
        FailHere();
    }
    return raise;
}

Throw Parser::ParseThrow() {
    Throw thrown;
    if (AtStatementEnd()) {
        return thrown;
    }
    thrown.arguments.push_back(ParseValue());
    ExpectSymbol(",");
    thrown.arguments.push_back(ParseValue());
    ExpectSymbol(",");
    thrown.arguments.push_back(ParseValue());
    return thrown;
}

ExpressionPtr Parser::ParseWriteTop() {
    if (!Accept("top")) {
        return nullptr;
    }
    ExpectSymbol("(");
    ExpressionPtr count = ParseValue();
    ExpectSymbol(")");
    return count;
}

Outputs Parser::ParseOutputs() {
    Outputs outputs;
    while (Accept("output")) {
        Output& output = outputs.emplace_back();
        do {
            output.items.push_back(ParseSelectItem());
        } while (AcceptSymbol(","));
        if (Accept("into")) {
            output.into = TakeTableName();
            if (AcceptSymbol("(")) {
                output.intoColumns = ParseNames();
            }
        }
    }
    return outputs;
}

std::vector<std::string> Parser::ParseNames() {
    std::vector<std::string> names;
    do {
        // A column may carry the names of its table.
        names.push_back(TakeObjectName().Last());
    } while (AcceptSymbol(","));
    ExpectSymbol(")");
    return names;
}

std::vector<ExpressionPtr> Parser::ParseRow() {
    std::vector<ExpressionPtr> row;
    ExpectSymbol("(");
    do {
        row.push_back(Accept("default") ? Make(Node::default_) : ParseValue());
    } while (AcceptSymbol(","));
    ExpectSymbol(")");
    return row;
}

Insert Parser::ParseInsert() {
    Insert insert;
    Accept("into");
    insert.table = TakeTableName();
    if (AtSymbol("(") && !Peek().Is("select")) {
        Advance();
        insert.columns = ParseNames();
    }
    insert.outputs = ParseOutputs();
    if (Accept("default")) {
        Expect("values");
        insert.defaultValues = true;
    } else if (Accept("values")) {
        do {
            insert.rows.push_back(ParseRow());
        } while (AcceptSymbol(","));
    } else if (At("select") || AtSymbol("(")) {
        insert.select = ParseSelect();
    } else {
        FailHere();
    }
    return insert;
}

std::vector<Assignment> Parser::ParseAssignments(const std::string& target) {
    std::vector<Assignment> assignments;
    do {
        Assignment& assignment = assignments.emplace_back();
        assignment.column = TakeObjectName().Last();
        if (AtSymbol("=") && Peek().Is("default")) {
            Advance();
            Advance();
            assignment.value = Make(Node::default_);
        } else {
            ExpressionPtr column = Make(Node::column);
            column->name.parts = {target, assignment.column};
            assignment.value = ParseAssigned(std::move(column));
        }
    } while (AcceptSymbol(","));
    return assignments;
}

Update Parser::ParseUpdate() {
    Update update;
    update.top = ParseWriteTop();
    update.target = TakeTableName();
    SkipTableHints();
    Expect("set");
    update.assignments = ParseAssignments(update.target.Last());
    update.outputs = ParseOutputs();
    ParseRows(update.from, update.where);
    return update;
}

void Parser::ParseRows(std::vector<std::unique_ptr<Source>>& from, ExpressionPtr& where) {
    if (Accept("from")) {
        from = ParseFrom();
    }
    if (Accept("where")) {
        where = ParseCondition();
    }
}

Delete Parser::ParseDelete() {
    Delete del;
    if (options_.deleteStar && AtSymbol("*") && Peek().Is("from")) {
        // Some databases take the star, and callers send it to all of them.
        Advance();
    }
    del.top = ParseWriteTop();
    Accept("from");
    del.target = TakeTableName();
    SkipTableHints();
    del.outputs = ParseOutputs();
    ParseRows(del.from, del.where);
    return del;
}

Merge Parser::ParseMerge() {
    Merge merge;
    if (At("top")) {
        FailOwn(host::error_number::unspecified, "The embedded database has no TOP of a MERGE.");
    }
    Accept("into");
    merge.target = TakeTableName();
    SkipTableHints();
    if (Accept("as") || (AtNameToken() && !At("using"))) {
        merge.alias = TakeName();
    }
    Expect("using");
    merge.source = ParseSource();
    Expect("on");
    merge.on = ParseCondition();
    while (Accept("when")) {
        merge.clauses.push_back(ParseMergeClause(merge));
    }
    if (merge.clauses.empty()) {
        FailHere();
    }
    merge.outputs = ParseOutputs();
    if (!AtSymbol(";")) {
        Fail(10713, "A MERGE statement must be terminated by a semi-colon (;).");
    }
    return merge;
}

MergeClause Parser::ParseMergeClause(const Merge& merge) {
    MergeClause clause;
    if (Accept("not")) {
        clause.rows = MergeClause::Rows::notMatched;
    }
    Expect("matched");
    if (clause.rows == MergeClause::Rows::notMatched && Accept("by")) {
        if (Accept("source")) {
            clause.rows = MergeClause::Rows::notMatchedBySource;
        } else {
            Expect("target");
        }
    }
    if (Accept("and")) {
        clause.condition = ParseCondition();
    }
    Expect("then");
    const bool inserts = clause.rows == MergeClause::Rows::notMatched;
    if (At("insert") != inserts) {
        Fail(10711, "An action of type '{}' is not allowed in the '{}' clause of a MERGE statement.",
             At("insert")   ? "INSERT"
             : At("update") ? "UPDATE"
                            : "DELETE",
             NameOf(clause.rows));
    }
    if (Accept("insert")) {
        clause.action = MergeClause::Action::insert;
        if (AcceptSymbol("(")) {
            clause.columns = ParseNames();
        }
        if (Accept("default")) {
            Expect("values");
        } else {
            Expect("values");
            clause.values = ParseRow();
        }
    } else if (Accept("delete")) {
        clause.action = MergeClause::Action::del;
    } else {
        Expect("update");
        Expect("set");
        clause.assignments = ParseAssignments(merge.alias.empty() ? merge.target.Last() : merge.alias);
    }
    return clause;
}

Transaction Parser::ParseTransaction(TransactionVerb verb) {
    Transaction transaction;
    transaction.verb = verb;
    if (Accept("tran") || Accept("transaction")) {
        if (verb == TransactionVerb::save || AtNameToken()) {
            transaction.name = TakeName();
        }
    } else if (verb == TransactionVerb::save) {
        FailHere();
    } else if (verb != TransactionVerb::begin) {
        Accept("work");
    }
    return transaction;
}

Statement Parser::ParseSet() {
    if (options_.script && AtVariable()) {
        return {ParseSetVariable()};
    }
    static constexpr std::array<std::pair<std::string_view, Option>, 8> known{{
        {"nocount", Option::noCount},
        {"xact_abort", Option::xactAbort},
        {"ansi_nulls", Option::other},
        {"ansi_padding", Option::other},
        {"ansi_warnings", Option::other},
        {"quoted_identifier", Option::other},
        {"arithabort", Option::other},
        {"concat_null_yields_null", Option::other},
    }};
    SetOption option;
    if (Accept("dateformat")) {
        option.option = Option::dateFormat;
        option.order = TakeName();
        return {std::move(option)};
    }
    if (Accept("identity_insert")) {
        option.option = Option::identityInsert;
        option.table = TakeObjectName();
    } else {
        const auto* const found =
            std::find_if(known.begin(), known.end(), [this](const auto& each) { return At(each.first); });
        if (found == known.end()) {
            FailHere();
        }
        option.option = found->second;
        Advance();
    }
    option.on = At("on");
    if (!Accept("on")) {
        Expect("off");
    }
    return {std::move(option)};
}

} // namespace refhost::sql
