#include "refhost/sql/syntax/Parser.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>

namespace refhost::sql {

Statement Parser::ParseCreate() {
    const std::size_t start = token_.position;
    Expect("create");
    if (Accept("table")) {
        return {ParseCreateTable()};
    }
    if (Accept("view")) {
        return {ParseCreateView(start)};
    }
    const bool unique = Accept("unique");
    SkipClustering();
    Expect("index");
    return {ParseCreateIndex(unique)};
}

CreateTable Parser::ParseCreateTable() {
    CreateTable create;
    create.table = TakeObjectName();
    ParseTableBody(create);
    SkipStorage();
    return create;
}

void Parser::ParseTableBody(CreateTable& create) {
    ExpectSymbol("(");
    do {
        if (AtSymbol(")") && !create.columns.empty()) {
            break; // SQL Server takes a comma behind the last column
        }
        if (!ParseTableConstraint(create.constraints)) {
            create.columns.push_back(ParseColumn(create.constraints));
        }
    } while (AcceptSymbol(","));
    ExpectSymbol(")");
}

CreateView Parser::ParseCreateView(std::size_t start) {
    CreateView create;
    create.view = TakeObjectName();
    if (AcceptSymbol("(")) {
        do {
            create.columns.push_back(TakeName());
        } while (AcceptSymbol(","));
        ExpectSymbol(")");
    }
    Expect("as");
    CommonTables with = Accept("with") ? ParseCommonTables() : CommonTables();
    if (!At("select") && !AtSymbol("(")) {
        FailHere();
    }
    create.select = ParseSelect();
    create.select->with = std::move(with);
    create.text = TextSince(start);
    return create;
}

CreateIndex Parser::ParseCreateIndex(bool unique) {
    CreateIndex create;
    create.unique = unique;
    create.name = TakeName();
    Expect("on");
    create.table = TakeObjectName();
    create.columns = ParseIndexColumns();
    SkipStorage();
    return create;
}

Drop Parser::ParseDrop() {
    Drop drop;
    if (Accept("table")) {
        drop.kind = ObjectKind::table;
    } else if (Accept("view")) {
        drop.kind = ObjectKind::view;
    } else if (Accept("index")) {
        drop.kind = ObjectKind::index;
    } else {
        FailHere();
    }
    if (At("if")) {
        Advance();
        Expect("exists");
        drop.ifExists = true;
    }
    do {
        Name name = TakeObjectName();
        if (drop.kind == ObjectKind::index && Accept("on")) {
            Name table = TakeObjectName();
            table.parts.push_back(name.Last());
            name = std::move(table);
        }
        drop.names.push_back(std::move(name));
    } while (AcceptSymbol(","));
    return drop;
}

AlterTable Parser::ParseAlterTable() {
    AlterTable alter;
    Expect("table");
    alter.table = TakeObjectName();
    if (Accept("with")) {
        if (!Accept("check")) {
            Expect("nocheck");
            alter.checksRows = false;
        }
    }
    if (Accept("alter")) {
        Expect("column");
        ColumnDefinition& column = alter.changed.emplace();
        column.name = TakeName();
        column.type = ParseType(1);
        if (Accept("collate")) {
            TakeName();
        }
        column.nullable = true;
        if (Accept("not")) {
            Expect("null");
            column.nullable = false;
        } else {
            Accept("null");
        }
    } else if (Accept("drop")) {
        ParseAlterDrop(alter);
    } else {
        Expect("add");
        ParseAlterAdd(alter);
    }
    return alter;
}

void Parser::ParseAlterDrop(AlterTable& alter) {
    bool columns = false;
    do {
        if (Accept("column")) {
            columns = true;
        } else if (Accept("constraint")) {
            columns = false;
        }
        (columns ? alter.dropColumns : alter.dropConstraints).push_back(TakeName());
    } while (AcceptSymbol(","));
}

void Parser::ParseAlterAdd(AlterTable& alter) {
    do {
        std::string name;
        const bool named = Accept("constraint");
        if (named) {
            name = TakeName();
        }
        if (Accept("default")) {
            DefaultConstraint& added = alter.addDefaults.emplace_back();
            added.name = name;
            added.text = ParseDefinitionText();
            Expect("for");
            added.column = TakeName();
        } else if (named || AtConstraint()) {
            Constraint constraint;
            constraint.name = name;
            ParseConstraintBody(constraint);
            alter.addConstraints.push_back(std::move(constraint));
        } else {
            alter.addColumns.push_back(ParseColumn(alter.addConstraints));
        }
    } while (AcceptSymbol(","));
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
    case Base::datetime2:
        if (!facets.empty() && (facets[0] < 0 || facets[0] > 7)) {
            Fail(1002, "Line 1: Specified scale {} is invalid.", facets[0]);
        }
        type.scale = facets.empty() ? 7 : static_cast<int>(facets[0]);
        type.precision = type.scale == 0 ? 19 : 20 + type.scale; // as sys.columns has it
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

std::string Parser::ParseDefinitionText() {
    const std::size_t start = token_.position;
    inDefinition_ = true;
    ParseValue();
    inDefinition_ = false;
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
    if (Accept("as")) {
        column.computedText = ParseDefinitionText();
        column.persisted = Accept("persisted");
    } else {
        column.type = ParseType(1);
    }
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
            column.defaultText = ParseDefinitionText();
            column.defaultName = constraint.name;
        } else if (Accept("collate")) {
            TakeName();
        } else if (AtConstraint()) {
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
    } else if (!AtConstraint()) {
        return false;
    }
    ParseConstraintBody(constraint);
    constraints.push_back(std::move(constraint));
    return true;
}

bool Parser::AtConstraint() const {
    return At("primary") || At("unique") || At("check") || At("foreign") || At("references");
}

void Parser::ParseConstraintBody(Constraint& constraint) {
    if (Accept("check")) {
        return ParseCheck(constraint);
    }
    if (At("foreign") || At("references")) {
        return ParseReference(constraint);
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

void Parser::ParseReference(Constraint& constraint) {
    constraint.kind = ConstraintKind::foreignKey;
    if (Accept("foreign")) {
        Expect("key");
        if (AtSymbol("(")) {
            constraint.columns = ParseIndexColumns();
        }
    }
    if (constraint.columns.empty()) {
        if (constraint.column.empty()) {
            FailHere();
        }
        constraint.columns.push_back({constraint.column, false});
    }
    Expect("references");
    constraint.reference.table = TakeObjectName();
    if (AcceptSymbol("(")) {
        constraint.reference.columns = ParseNames();
    }
    while (Accept("on")) {
        const bool deletes = Accept("delete");
        if (!deletes) {
            Expect("update");
        }
        (deletes ? constraint.reference.onDelete : constraint.reference.onUpdate) = ParseReferenceRule();
    }
}

ReferenceRule Parser::ParseReferenceRule() {
    if (Accept("cascade")) {
        return ReferenceRule::cascade;
    }
    if (Accept("set")) {
        if (Accept("null")) {
            return ReferenceRule::setNull;
        }
        Expect("default");
        return ReferenceRule::setDefault;
    }
    Expect("no");
    Expect("action");
    return ReferenceRule::noAction;
}

void Parser::ParseCheck(Constraint& constraint) {
    constraint.kind = ConstraintKind::check;
    ExpectSymbol("(");
    const std::size_t start = token_.position;
    inDefinition_ = true;
    constraint.condition = ParseCondition();
    inDefinition_ = false;
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

} // namespace refhost::sql
