#include "refhost/sql/syntax/Parser.h"

#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace refhost::sql {
namespace {

/// How deeply parentheses, subqueries and cases may nest; guards the stack.
constexpr int maxDepth = 250;
/// How many terms a sum and factors a product may have.
constexpr int maxTerms = 500;

ExpressionPtr Make(Node node) {
    auto expression = std::make_unique<Expression>();
    expression->node = node;
    return expression;
}

ExpressionPtr Make(Node node, ExpressionPtr first) {
    ExpressionPtr expression = Make(node);
    expression->arguments.push_back(std::move(first));
    return expression;
}

ExpressionPtr Make(Node node, ExpressionPtr first, ExpressionPtr second) {
    ExpressionPtr expression = Make(node, std::move(first));
    expression->arguments.push_back(std::move(second));
    return expression;
}

} // namespace

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

/// Counts a level of nesting for the life of the object.
class Parser::Depth {
public:
    explicit Depth(Parser& parser) : parser_(parser) {
        if (++parser_.depth_ > maxDepth) {
            --parser_.depth_;
            Fail(191, "Some part of your SQL statement is nested too deeply. Rewrite the query or break it up "
                      "into smaller queries.");
        }
    }
    ~Depth() { --parser_.depth_; }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;

private:
    Parser& parser_;
};

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
    return token_.kind == TokenKind::quotedName || (token_.kind == TokenKind::name && !IsReserved(token_.text));
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

std::vector<Statement> Parser::ParseScript() {
    Advance();
    std::vector<Statement> statements;
    while (true) {
        while (AcceptSymbol(";")) {
        }
        if (token_.kind == TokenKind::end) {
            return statements;
        }
        statements.push_back(ParseStatement());
    }
}

ExpressionPtr Parser::ParseExpressionText() {
    Advance();
    ExpressionPtr expression = ParseValue();
    ExpectEnd();
    return expression;
}

ExpressionPtr Parser::ParseConditionText() {
    Advance();
    ExpressionPtr expression = ParseCondition();
    ExpectEnd();
    return expression;
}

Statement Parser::ParseStatement() {
    const Depth depth(*this);
    Statement statement;
    if (At("select") || AtSymbol("(")) {
        statement.select = ParseSelect();
    } else if (Accept("insert")) {
        statement.insert = ParseInsert();
    } else if (Accept("update")) {
        statement.update = ParseUpdate();
    } else if (Accept("delete")) {
        statement.del = ParseDelete();
    } else if (At("create")) {
        statement = ParseCreate();
    } else if (Accept("drop")) {
        statement.drop = ParseDrop();
    } else if (Accept("alter")) {
        statement.alterTable = ParseAlterTable();
    } else if (Accept("truncate")) {
        Expect("table");
        statement.truncate = std::make_unique<Truncate>();
        statement.truncate->table = TakeObjectName();
    } else if (At("begin") && (Peek().Is("tran") || Peek().Is("transaction"))) {
        Advance();
        statement.transaction = ParseTransaction(TransactionVerb::begin);
    } else if (Accept("commit")) {
        statement.transaction = ParseTransaction(TransactionVerb::commit);
    } else if (Accept("rollback")) {
        statement.transaction = ParseTransaction(TransactionVerb::rollback);
    } else if (Accept("save")) {
        statement.transaction = ParseTransaction(TransactionVerb::save);
    } else if (Accept("set")) {
        statement.setOption = ParseSet();
    } else if (Accept("if")) {
        statement.conditional = ParseConditional();
    } else {
        FailHere();
    }
    return statement;
}

std::vector<Statement> Parser::ParseBlock() {
    std::vector<Statement> statements;
    if (At("begin") && !Peek().Is("tran") && !Peek().Is("transaction")) {
        Advance();
        do {
            statements.push_back(ParseStatement());
            while (AcceptSymbol(";")) {
            }
        } while (!At("end"));
        Advance();
    } else {
        statements.push_back(ParseStatement());
    }
    return statements;
}

std::unique_ptr<Conditional> Parser::ParseConditional() {
    auto conditional = std::make_unique<Conditional>();
    conditional->condition = ParseCondition();
    conditional->then = ParseBlock();
    if (AtSymbol(";") && Peek().Is("else")) {
        Advance();
    }
    if (Accept("else")) {
        conditional->otherwise = ParseBlock();
    }
    return conditional;
}

std::unique_ptr<Insert> Parser::ParseInsert() {
    auto insert = std::make_unique<Insert>();
    Accept("into");
    insert->table = TakeObjectName();
    if (AtSymbol("(") && !Peek().Is("select")) {
        Advance();
        do {
            // A column may carry the names of its table.
            insert->columns.push_back(TakeObjectName().Last());
        } while (AcceptSymbol(","));
        ExpectSymbol(")");
    }
    if (Accept("default")) {
        Expect("values");
        insert->defaultValues = true;
    } else if (Accept("values")) {
        do {
            ExpectSymbol("(");
            std::vector<ExpressionPtr>& row = insert->rows.emplace_back();
            do {
                if (Accept("default")) {
                    row.push_back(Make(Node::default_));
                } else {
                    row.push_back(ParseValue());
                }
            } while (AcceptSymbol(","));
            ExpectSymbol(")");
        } while (AcceptSymbol(","));
    } else if (At("select") || AtSymbol("(")) {
        insert->select = ParseSelect();
    } else {
        FailHere();
    }
    return insert;
}

std::unique_ptr<Update> Parser::ParseUpdate() {
    auto update = std::make_unique<Update>();
    update->target = TakeObjectName();
    SkipTableHints();
    Expect("set");
    do {
        Assignment assignment;
        assignment.column = TakeObjectName().Last();
        ExpectSymbol("=");
        assignment.value = Accept("default") ? Make(Node::default_) : ParseValue();
        update->assignments.push_back(std::move(assignment));
    } while (AcceptSymbol(","));
    if (Accept("from")) {
        update->from = ParseFrom();
    }
    if (Accept("where")) {
        update->where = ParseCondition();
    }
    return update;
}

std::unique_ptr<Delete> Parser::ParseDelete() {
    auto del = std::make_unique<Delete>();
    if (options_.deleteStar && AtSymbol("*") && Peek().Is("from")) {
        // Some databases take the star, and callers send it to all of them.
        Advance();
    }
    Accept("from");
    del->target = TakeObjectName();
    SkipTableHints();
    if (Accept("from")) {
        del->from = ParseFrom();
    }
    if (Accept("where")) {
        del->where = ParseCondition();
    }
    return del;
}

Statement Parser::ParseCreate() {
    Statement statement;
    const std::size_t start = token_.position;
    Expect("create");
    if (Accept("table")) {
        statement.createTable = ParseCreateTable();
    } else if (Accept("view")) {
        statement.createView = ParseCreateView(start);
    } else {
        const bool unique = Accept("unique");
        SkipClustering();
        Expect("index");
        statement.createIndex = ParseCreateIndex(unique);
    }
    return statement;
}

std::unique_ptr<CreateTable> Parser::ParseCreateTable() {
    auto create = std::make_unique<CreateTable>();
    create->table = TakeObjectName();
    ExpectSymbol("(");
    do {
        if (AtSymbol(")") && !create->columns.empty()) {
            break; // SQL Server takes a comma behind the last column
        }
        if (!ParseTableConstraint(create->constraints)) {
            create->columns.push_back(ParseColumn(create->constraints));
        }
    } while (AcceptSymbol(","));
    ExpectSymbol(")");
    SkipStorage();
    return create;
}

std::unique_ptr<CreateView> Parser::ParseCreateView(std::size_t start) {
    auto create = std::make_unique<CreateView>();
    create->view = TakeObjectName();
    if (AcceptSymbol("(")) {
        do {
            create->columns.push_back(TakeName());
        } while (AcceptSymbol(","));
        ExpectSymbol(")");
    }
    Expect("as");
    if (!At("select") && !AtSymbol("(")) {
        FailHere();
    }
    create->select = ParseSelect();
    create->text = TextSince(start);
    return create;
}

std::unique_ptr<CreateIndex> Parser::ParseCreateIndex(bool unique) {
    auto create = std::make_unique<CreateIndex>();
    create->unique = unique;
    create->name = TakeName();
    Expect("on");
    create->table = TakeObjectName();
    create->columns = ParseIndexColumns();
    SkipStorage();
    return create;
}

std::unique_ptr<Drop> Parser::ParseDrop() {
    auto drop = std::make_unique<Drop>();
    if (Accept("table")) {
        drop->kind = ObjectKind::table;
    } else if (Accept("view")) {
        drop->kind = ObjectKind::view;
    } else if (Accept("index")) {
        drop->kind = ObjectKind::index;
    } else {
        FailHere();
    }
    if (At("if")) {
        Advance();
        Expect("exists");
        drop->ifExists = true;
    }
    do {
        Name name = TakeObjectName();
        if (drop->kind == ObjectKind::index && Accept("on")) {
            Name table = TakeObjectName();
            table.parts.push_back(name.Last());
            name = std::move(table);
        }
        drop->names.push_back(std::move(name));
    } while (AcceptSymbol(","));
    return drop;
}

std::unique_ptr<AlterTable> Parser::ParseAlterTable() {
    auto alter = std::make_unique<AlterTable>();
    Expect("table");
    alter->table = TakeObjectName();
    if (Accept("with")) {
        if (!Accept("check")) {
            Expect("nocheck");
        }
    }
    if (Accept("drop")) {
        Expect("column");
        do {
            alter->dropColumns.push_back(TakeName());
        } while (AcceptSymbol(","));
        return alter;
    }
    Expect("add");
    do {
        std::string constraintName;
        const bool named = At("constraint");
        if (named && !Peek().Is("default")) {
            Advance();
            constraintName = TakeName();
        }
        if (Accept("default")) {
            DefaultConstraint added;
            added.text = ParseDefaultText();
            Expect("for");
            added.column = TakeName();
            alter->addDefaults.push_back(std::move(added));
        } else if (named || At("primary") || At("unique") || At("check")) {
            Constraint constraint;
            constraint.name = constraintName;
            ParseConstraintBody(constraint);
            alter->addConstraints.push_back(std::move(constraint));
        } else {
            alter->addColumns.push_back(ParseColumn(alter->addConstraints));
        }
    } while (AcceptSymbol(","));
    return alter;
}

std::unique_ptr<Transaction> Parser::ParseTransaction(TransactionVerb verb) {
    auto transaction = std::make_unique<Transaction>();
    transaction->verb = verb;
    if (Accept("tran") || Accept("transaction")) {
        if (verb == TransactionVerb::save || (verb == TransactionVerb::rollback && AtNameToken())) {
            transaction->savepoint = TakeName();
        }
    } else if (verb == TransactionVerb::save) {
        FailHere();
    } else if (verb != TransactionVerb::begin) {
        Accept("work");
    }
    return transaction;
}

std::unique_ptr<SetOption> Parser::ParseSet() {
    static constexpr std::array known{"nocount",           "ansi_nulls", "ansi_padding", "ansi_warnings",
                                      "quoted_identifier", "xact_abort", "arithabort",   "concat_null_yields_null"};
    auto option = std::make_unique<SetOption>();
    if (Accept("identity_insert")) {
        option->identityInsert = TakeObjectName();
    } else if (std::any_of(known.begin(), known.end(), [this](const char* name) { return At(name); })) {
        Advance();
    } else {
        FailHere();
    }
    option->on = At("on");
    if (!Accept("on")) {
        Expect("off");
    }
    return option;
}

Type Parser::ParseType(int defaultLength) {
    const Token named = token_;
    std::string word = token_.text;
    if (Accept("national")) {
        word = "n" + token_.text;
        if (!At("char") && !At("character") && !At("varchar")) {
            FailHere();
        }
    } else if (token_.kind != TokenKind::name && token_.kind != TokenKind::quotedName) {
        FailHere();
    }
    Advance();
    if (AtSymbol(".")) { // sys.nvarchar
        Advance();
        word = token_.text;
        Advance();
    }
    Type type;
    type.base = BaseNamed(word);
    if (type.base == Base::null) {
        if (named.kind == TokenKind::name && IsReserved(named.text)) {
            Fail(156, "Incorrect syntax near the keyword '{}'.", named.text);
        }
        Fail(243, "Type {} is not a defined system type.", word);
    }
    if (type.base == Base::floating && At("precision")) {
        Advance();
    }
    if ((type.base == Base::character || type.base == Base::nchar) && Accept("varying")) {
        type.base = type.base == Base::character ? Base::varchar : Base::nvarchar;
    }
    std::vector<std::int64_t> facets;
    bool endless = false;
    if (AcceptSymbol("(")) {
        if (Accept("max")) {
            endless = true;
        } else {
            facets.push_back(TakeWholeNumber());
            if (AcceptSymbol(",")) {
                facets.push_back(TakeWholeNumber());
            }
        }
        ExpectSymbol(")");
    }
    const auto refuse = [&] { Fail(2715, "Column, parameter, or variable: Cannot find data type {}.", word); };
    switch (type.base) {
    case Base::decimal:
        type.precision = facets.empty() ? 18 : static_cast<int>(std::clamp<std::int64_t>(facets[0], -1, 99));
        type.scale = facets.size() < 2 ? 0 : static_cast<int>(std::clamp<std::int64_t>(facets[1], -1, 99));
        if (type.precision < 1 || type.precision > 38) {
            Fail(2750, "Specified column precision {} is greater than the maximum precision of 38.", type.precision);
        }
        if (type.scale < 0 || type.scale > type.precision) {
            Fail(192, "The scale must be less than or equal to the precision.");
        }
        break;
    case Base::money:
    case Base::smallmoney:
        type.scale = 4;
        break;
    case Base::floating:
        if (!facets.empty() && facets[0] <= 24) {
            type.base = Base::real;
        }
        break;
    case Base::character:
    case Base::varchar:
    case Base::nchar:
    case Base::nvarchar:
    case Base::binary:
    case Base::varbinary: {
        const int most = IsNational(type.base) ? 4000 : 8000;
        type.length = endless ? Type::maxLength : defaultLength;
        if (EqualNames(word, "sysname")) {
            type.length = 128;
        } else if (!facets.empty()) {
            if (facets.size() > 1) {
                refuse();
            }
            if (facets[0] < 1) {
                Fail(1001, "Length or precision specification {} is invalid.", facets[0]);
            }
            if (facets[0] > most) {
                Fail(131, "The size ({}) given to the type '{}' exceeds the maximum allowed for any data type ({}).",
                     facets[0], NameOf(type.base), most);
            }
            type.length = static_cast<int>(facets[0]);
        }
        break;
    }
    case Base::text:
    case Base::ntext:
    case Base::image:
        type.length = Type::maxLength;
        break;
    case Base::timestamp:
        type.length = 8;
        break;
    default:
        break;
    }
    return type;
}

std::string Parser::ParseDefaultText() {
    const std::size_t start = token_.position;
    ParseValue();
    return TextSince(start);
}

ColumnDefinition Parser::ParseColumn(std::vector<Constraint>& constraints) {
    ColumnDefinition column;
    column.name = TakeName();
    if ((AtSymbol(",") || AtSymbol(")")) && EqualNames(column.name, "timestamp")) {
        // The one type that a column may have without a name of its own.
        column.type = {Base::timestamp, 8, 0, 0};
        return column;
    }
    column.type = ParseType(1);
    while (true) {
        Constraint constraint;
        constraint.column = column.name;
        if (Accept("constraint")) {
            constraint.name = TakeName();
        }
        if (Accept("not")) {
            if (At("for")) { // not for replication
                Advance();
                Advance();
                continue;
            }
            Expect("null");
            column.nullable = false;
        } else if (Accept("null")) {
            column.nullable = true;
        } else if (Accept("identity")) {
            column.identity = true;
            if (AcceptSymbol("(")) {
                column.seed = TakeWholeNumber();
                ExpectSymbol(",");
                column.increment = TakeWholeNumber();
                ExpectSymbol(")");
            }
        } else if (Accept("default")) {
            column.defaultText = ParseDefaultText();
        } else if (Accept("collate")) {
            TakeName();
        } else if (At("primary") || At("unique") || At("check")) {
            ParseConstraintBody(constraint);
            constraints.push_back(std::move(constraint));
        } else {
            break;
        }
    }
    return column;
}

bool Parser::ParseTableConstraint(std::vector<Constraint>& constraints) {
    Constraint constraint;
    if (Accept("constraint")) {
        constraint.name = TakeName();
    } else if (!At("primary") && !At("unique") && !At("check")) {
        return false;
    }
    ParseConstraintBody(constraint);
    constraints.push_back(std::move(constraint));
    return true;
}

void Parser::ParseConstraintBody(Constraint& constraint) {
    if (Accept("check")) {
        ParseCheck(constraint);
        return;
    }
    if (Accept("primary")) {
        Expect("key");
        constraint.kind = ConstraintKind::primaryKey;
    } else {
        Expect("unique");
        constraint.kind = ConstraintKind::unique;
    }
    SkipClustering();
    if (AtSymbol("(")) {
        constraint.columns = ParseIndexColumns();
    } else if (!constraint.column.empty()) {
        constraint.columns.push_back({constraint.column, false});
    } else {
        FailHere();
    }
    SkipStorage();
}

void Parser::ParseCheck(Constraint& constraint) {
    constraint.kind = ConstraintKind::check;
    ExpectSymbol("(");
    const std::size_t start = token_.position;
    constraint.condition = ParseCondition();
    constraint.conditionText = TextSince(start);
    ExpectSymbol(")");
}

void Parser::SkipClustering() {
    if (At("clustered") || At("nonclustered")) {
        Advance();
    }
}

void Parser::SkipOptionList() {
    ExpectSymbol("(");
    while (!AtSymbol(")")) {
        if (token_.kind == TokenKind::end) {
            FailHere();
        }
        Advance();
    }
    Advance();
}

/// Where and how an index or table is stored means nothing here: WITH (…), ON [PRIMARY], TEXTIMAGE_ON [PRIMARY].
void Parser::SkipStorage() {
    while (true) {
        if (At("with") && Peek().IsSymbol("(")) {
            Advance();
            SkipOptionList();
        } else if (At("on") || At("textimage_on")) {
            Advance();
            if (token_.kind != TokenKind::quotedName && token_.kind != TokenKind::name) {
                FailHere();
            }
            Advance();
        } else {
            return;
        }
    }
}

std::vector<IndexColumn> Parser::ParseIndexColumns() {
    std::vector<IndexColumn> columns;
    ExpectSymbol("(");
    do {
        IndexColumn column;
        column.name = TakeName();
        column.descending = Accept("desc");
        if (!column.descending) {
            Accept("asc");
        }
        columns.push_back(std::move(column));
    } while (AcceptSymbol(","));
    ExpectSymbol(")");
    return columns;
}

SelectPtr Parser::ParseSelect() {
    const Depth depth(*this);
    SelectPtr first = ParseSelectPart();
    Select* last = first.get();
    while (true) {
        while (last->next) {
            last = last->next.get();
        }
        if (Accept("union")) {
            last->operation = Accept("all") ? SetOperation::unionAll : SetOperation::unionDistinct;
        } else if (Accept("except")) {
            last->operation = SetOperation::except;
        } else if (Accept("intersect")) {
            last->operation = SetOperation::intersect;
        } else {
            break;
        }
        last->next = ParseSelectPart();
    }
    if (Accept("order")) {
        Expect("by");
        do {
            OrderItem item;
            item.value = ParseValue();
            item.descending = Accept("desc");
            if (!item.descending) {
                Accept("asc");
            }
            first->orderBy.push_back(std::move(item));
        } while (AcceptSymbol(","));
    }
    return first;
}

SelectPtr Parser::ParseSelectPart() {
    if (AcceptSymbol("(")) {
        SelectPtr select = ParseSelect();
        ExpectSymbol(")");
        return select;
    }
    auto select = std::make_unique<Select>();
    Expect("select");
    ParseSelectCore(*select);
    return select;
}

void Parser::ParseSelectCore(Select& select) {
    if (Accept("distinct")) {
        select.distinct = true;
    } else {
        Accept("all");
    }
    if (Accept("top")) {
        if (AcceptSymbol("(")) {
            select.top = ParseValue();
            ExpectSymbol(")");
        } else if (token_.kind == TokenKind::literal) {
            select.top = ParsePrimary(false);
        } else {
            FailHere();
        }
        select.topPercent = Accept("percent");
    }
    do {
        select.items.push_back(ParseSelectItem());
    } while (AcceptSymbol(","));
    if (Accept("into")) {
        select.into = TakeObjectName();
    }
    if (Accept("from")) {
        select.from = ParseFrom();
    }
    if (Accept("where")) {
        select.where = ParseCondition();
    }
    if (Accept("group")) {
        Expect("by");
        do {
            select.groupBy.push_back(ParseValue());
        } while (AcceptSymbol(","));
    }
    if (Accept("having")) {
        select.having = ParseCondition();
    }
}

SelectItem Parser::ParseSelectItem() {
    SelectItem item;
    if (AcceptSymbol("*")) {
        item.value = Make(Node::star);
        return item;
    }
    if ((AtNameToken() || token_.kind == TokenKind::literal) && Peek().IsSymbol("=")) {
        item.alias = TakeAlias();
        Advance();
        item.value = ParseValue();
        return item;
    }
    item.value = ParseValue();
    if (Accept("as")) {
        item.alias = TakeAlias();
    } else if (AtNameToken() ||
               (token_.kind == TokenKind::literal && lexer_.Literals()[token_.literal].kind == LiteralKind::text)) {
        item.alias = TakeAlias();
    }
    return item;
}

std::vector<std::unique_ptr<Source>> Parser::ParseFrom() {
    std::vector<std::unique_ptr<Source>> sources;
    do {
        sources.push_back(ParseJoins());
    } while (AcceptSymbol(","));
    return sources;
}

std::optional<Join> Parser::AcceptJoin() {
    std::optional<Join> join;
    if (At("join")) {
        join = Join::inner;
    } else if (Accept("inner")) {
        join = Join::inner;
    } else if (Accept("cross")) {
        join = Join::cross;
    } else if (Accept("left")) {
        join = Join::left;
    } else if (Accept("right")) {
        join = Join::right;
    } else if (Accept("full")) {
        join = Join::full;
    } else {
        return std::nullopt;
    }
    if (join != Join::inner && join != Join::cross) {
        Accept("outer");
    }
    Expect("join");
    return join;
}

std::unique_ptr<Source> Parser::ParseJoins() {
    const Depth depth(*this);
    std::unique_ptr<Source> left = ParseSource();
    int joins = 0;
    while (const std::optional<Join> join = AcceptJoin()) {
        if (++joins > maxDepth) {
            FailHere();
        }
        auto joined = std::make_unique<Source>();
        joined->join = *join;
        joined->left = std::move(left);
        if (*join == Join::cross) {
            joined->right = ParseSource();
        } else {
            joined->right = ParseSource();
            // "a join b join c on … on …": the inner pair comes first.
            if (!At("on")) {
                const std::optional<Join> inner = AcceptJoin();
                if (!inner) {
                    FailHere();
                }
                auto nested = std::make_unique<Source>();
                nested->join = *inner;
                nested->left = std::move(joined->right);
                nested->right = ParseSource();
                Expect("on");
                nested->on = ParseCondition();
                joined->right = std::move(nested);
            }
            Expect("on");
            joined->on = ParseCondition();
        }
        left = std::move(joined);
    }
    return left;
}

std::unique_ptr<Source> Parser::ParseSource() {
    auto source = std::make_unique<Source>();
    if (AcceptSymbol("(")) {
        if (!At("select") && !AtSymbol("(")) {
            source = ParseJoins();
            ExpectSymbol(")");
            return source;
        }
        source->select = ParseSelect();
        ExpectSymbol(")");
        Accept("as");
        source->alias = TakeName();
        if (AcceptSymbol("(")) {
            do {
                source->columnAliases.push_back(TakeName());
            } while (AcceptSymbol(","));
            ExpectSymbol(")");
        }
        return source;
    }
    source->name = TakeObjectName();
    if (Accept("as")) {
        source->alias = TakeName();
    } else if (AtNameToken()) {
        source->alias = TakeName();
    }
    SkipTableHints();
    return source;
}

/// Locking hints say nothing about the answer: WITH (NOLOCK), and the old form (NOLOCK).
void Parser::SkipTableHints() {
    if (At("with")) {
        Advance();
        SkipOptionList();
    } else if (AtSymbol("(") && Peek().Is("nolock")) {
        SkipOptionList();
    }
}

ExpressionPtr Parser::ParseCondition() {
    ExpressionPtr condition = ParseAny();
    if (!IsCondition(condition->node)) {
        FailCondition();
    }
    return condition;
}

ExpressionPtr Parser::ParseAny() {
    const Depth depth(*this);
    ExpressionPtr left = ParseAnd();
    if (!At("or")) {
        return left;
    }
    if (!IsCondition(left->node)) {
        FailCondition();
    }
    ExpressionPtr any = Make(Node::disjunction, std::move(left));
    while (Accept("or")) {
        any->arguments.push_back(ParseAnd());
        if (!IsCondition(any->arguments.back()->node)) {
            FailCondition();
        }
    }
    return any;
}

ExpressionPtr Parser::ParseAnd() {
    ExpressionPtr left = ParseNot();
    if (!At("and")) {
        return left;
    }
    if (!IsCondition(left->node)) {
        FailCondition();
    }
    ExpressionPtr all = Make(Node::conjunction, std::move(left));
    while (Accept("and")) {
        all->arguments.push_back(ParseNot());
        if (!IsCondition(all->arguments.back()->node)) {
            FailCondition();
        }
    }
    return all;
}

ExpressionPtr Parser::ParseNot() {
    if (At("not")) {
        const Depth depth(*this);
        Advance();
        ExpressionPtr condition = ParseNot();
        if (!IsCondition(condition->node)) {
            FailCondition();
        }
        return Make(Node::negation, std::move(condition));
    }
    return ParsePredicate();
}

ExpressionPtr Parser::ParsePredicate() {
    if (Accept("exists")) {
        ExpressionPtr exists = Make(Node::exists);
        ExpectSymbol("(");
        exists->select = ParseSelect();
        ExpectSymbol(")");
        return exists;
    }
    ExpressionPtr value = ParseSum(true);
    if (IsCondition(value->node)) {
        return value;
    }
    return ParsePredicateTail(std::move(value));
}

ExpressionPtr Parser::ParsePredicateTail(ExpressionPtr value) {
    if (token_.kind == TokenKind::symbol) {
        static constexpr std::array<std::pair<std::string_view, std::string_view>, 9> comparisons{{
            {"=", "="},
            {"<>", "<>"},
            {"!=", "<>"},
            {"<", "<"},
            {"<=", "<="},
            {">", ">"},
            {">=", ">="},
            {"!<", ">="},
            {"!>", "<="},
        }};
        for (const auto& [written, meant] : comparisons) {
            if (AcceptSymbol(written)) {
                ExpressionPtr compare = Make(Node::compare, std::move(value), ParseValue());
                compare->text = meant;
                return compare;
            }
        }
        return value;
    }
    if (Accept("is")) {
        ExpressionPtr test = Make(Node::isNull, std::move(value));
        test->flag = Accept("not");
        Expect("null");
        return test;
    }
    bool negated = false;
    if (At("not")) {
        negated = true;
        Advance();
        if (!At("like") && !At("between") && !At("in")) {
            FailHere();
        }
    }
    if (Accept("like")) {
        ExpressionPtr like = Make(Node::like, std::move(value), ParseValue());
        like->flag = negated;
        if (Accept("escape")) {
            like->arguments.push_back(ParseValue());
        }
        return like;
    }
    if (Accept("between")) {
        ExpressionPtr between = Make(Node::between, std::move(value), ParseValue());
        between->flag = negated;
        Expect("and");
        between->arguments.push_back(ParseValue());
        return between;
    }
    if (Accept("in")) {
        return ParseIn(std::move(value), negated);
    }
    return value;
}

ExpressionPtr Parser::ParseIn(ExpressionPtr value, bool negated) {
    ExpectSymbol("(");
    ExpressionPtr in = Make(At("select") ? Node::inSelect : Node::inList, std::move(value));
    in->flag = negated;
    if (in->node == Node::inSelect) {
        in->select = ParseSelect();
    } else {
        do {
            in->arguments.push_back(ParseValue());
        } while (AcceptSymbol(","));
    }
    ExpectSymbol(")");
    return in;
}

ExpressionPtr Parser::ParseValue() {
    const Depth depth(*this);
    return ParseSum(false);
}

ExpressionPtr Parser::ParseSum(bool conditionAllowed) {
    ExpressionPtr left = ParseProduct(conditionAllowed);
    int terms = 0;
    while (!IsCondition(left->node) && (AtSymbol("+") || AtSymbol("-"))) {
        if (++terms > maxTerms) {
            Fail(191, "Some part of your SQL statement is nested too deeply. Rewrite the query or break it up "
                      "into smaller queries.");
        }
        std::string operation = token_.text;
        Advance();
        left = Make(Node::binary, std::move(left), ParseProduct(false));
        left->text = std::move(operation);
    }
    return left;
}

ExpressionPtr Parser::ParseProduct(bool conditionAllowed) {
    ExpressionPtr left = ParseUnary(conditionAllowed);
    int factors = 0;
    while (!IsCondition(left->node) && (AtSymbol("*") || AtSymbol("/") || AtSymbol("%"))) {
        if (++factors > maxTerms) {
            FailHere();
        }
        std::string operation = token_.text;
        Advance();
        left = Make(Node::binary, std::move(left), ParseUnary(false));
        left->text = std::move(operation);
    }
    return left;
}

ExpressionPtr Parser::ParseUnary(bool conditionAllowed) {
    if (AtSymbol("-") || AtSymbol("+")) {
        const Depth depth(*this);
        const Node node = AtSymbol("-") ? Node::negate : Node::plus;
        Advance();
        return Make(node, ParseUnary(false));
    }
    return ParsePrimary(conditionAllowed);
}

ExpressionPtr Parser::ParsePrimary(bool conditionAllowed) {
    if (token_.kind == TokenKind::literal) {
        ExpressionPtr literal = Make(Node::literal);
        literal->literal = token_.literal;
        Advance();
        return literal;
    }
    if (AtSymbol("(")) {
        return ParseParenthesis(conditionAllowed);
    }
    if (Accept("null")) {
        return Make(Node::null);
    }
    if (Accept("case")) {
        return ParseCase();
    }
    if (At("cast") && Peek().IsSymbol("(")) {
        Advance();
        return ParseConvert(true);
    }
    if (At("convert")) {
        Advance();
        return ParseConvert(false);
    }
    if (token_.kind == TokenKind::name && token_.text.size() > 2 && token_.text.compare(0, 2, "@@") == 0) {
        ExpressionPtr variable = Make(Node::variable);
        variable->text = token_.text;
        Advance();
        return variable;
    }
    return ParseNameOrCall();
}

ExpressionPtr Parser::ParseParenthesis(bool conditionAllowed) {
    const Depth depth(*this);
    ExpectSymbol("(");
    if (At("select")) {
        ExpressionPtr subquery = Make(Node::subquery);
        subquery->select = ParseSelect();
        ExpectSymbol(")");
        return subquery;
    }
    ExpressionPtr inner = conditionAllowed ? ParseAny() : ParseValue();
    ExpectSymbol(")");
    return inner;
}

ExpressionPtr Parser::ParseCase() {
    const Depth depth(*this);
    ExpressionPtr expression = Make(Node::caseOf);
    expression->flag = !At("when");
    if (expression->flag) {
        expression->arguments.push_back(ParseValue());
    }
    if (!At("when")) {
        FailHere();
    }
    while (Accept("when")) {
        expression->arguments.push_back(expression->flag ? ParseValue() : ParseCondition());
        Expect("then");
        expression->arguments.push_back(ParseValue());
    }
    if (Accept("else")) {
        expression->arguments.push_back(ParseValue());
    }
    Expect("end");
    return expression;
}

ExpressionPtr Parser::ParseConvert(bool cast) {
    ExpressionPtr convert = Make(Node::convert);
    ExpectSymbol("(");
    // The length of a type that a conversion names without one.
    constexpr int conversionLength = 30;
    if (cast) {
        convert->arguments.push_back(ParseValue());
        Expect("as");
        convert->type = ParseType(conversionLength);
    } else {
        convert->type = ParseType(conversionLength);
        ExpectSymbol(",");
        convert->arguments.push_back(ParseValue());
        if (AcceptSymbol(",")) {
            convert->arguments.push_back(ParseValue());
        }
    }
    ExpectSymbol(")");
    return convert;
}

ExpressionPtr Parser::ParseNameOrCall() {
    // Functions whose names are reserved words.
    const bool reservedCall =
        (At("left") || At("right") || At("coalesce") || At("nullif") || At("user")) && Peek().IsSymbol("(");
    Name name;
    if (reservedCall) {
        name.parts.push_back(token_.text);
        Advance();
        return ParseCall(std::move(name));
    }
    if (AtNameToken() && Peek().IsSymbol("(")) {
        name.parts.push_back(TakeName());
        return ParseCall(std::move(name));
    }
    name.parts.push_back(TakeName());
    while (AcceptSymbol(".")) {
        if (AtSymbol(".") && name.parts.size() < 3) {
            name.parts.emplace_back();
            continue;
        }
        if (AcceptSymbol("*")) {
            ExpressionPtr star = Make(Node::star);
            star->name = std::move(name);
            return star;
        }
        name.parts.push_back(TakeName());
        if (name.parts.size() > 4) {
            FailHere();
        }
    }
    ExpressionPtr column = Make(Node::column);
    column->name = std::move(name);
    return column;
}

ExpressionPtr Parser::ParseCall(Name name) {
    const Depth depth(*this);
    ExpressionPtr call = Make(Node::function);
    call->name = std::move(name);
    ExpectSymbol("(");
    if (AcceptSymbol(")")) {
        return call;
    }
    call->flag = Accept("distinct");
    if (AtSymbol("*")) {
        call->arguments.push_back(Make(Node::star));
        Advance();
    } else {
        do {
            call->arguments.push_back(ParseValue());
        } while (AcceptSymbol(","));
    }
    ExpectSymbol(")");
    return call;
}

} // namespace refhost::sql
