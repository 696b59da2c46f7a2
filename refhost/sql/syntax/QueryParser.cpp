#include "refhost/sql/syntax/Parser.h"

namespace refhost::sql {

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
        first->orderBy = ParseOrderItems();
        ParseOffset(*first);
    }
    return first;
}

std::vector<OrderItem> Parser::ParseOrderItems() {
    std::vector<OrderItem> items;
    Expect("by");
    do {
        OrderItem& item = items.emplace_back();
        item.value = ParseValue();
        item.descending = Accept("desc");
        if (!item.descending) {
            Accept("asc");
        }
    } while (AcceptSymbol(","));
    return items;
}

void Parser::ParseOffset(Select& select) {
    const auto rows = [this] {
        if (!Accept("row")) {
            Expect("rows");
        }
    };
    if (!Accept("offset")) {
        return;
    }
    select.offset = ParseValue();
    rows();
    if (Accept("fetch")) {
        if (!Accept("next")) {
            Expect("first");
        }
        select.fetch = ParseValue();
        rows();
        Expect("only");
    }
}

CommonTables Parser::ParseCommonTables() {
    CommonTables tables;
    do {
        CommonTable& table = tables.emplace_back();
        table.name = TakeName();
        if (AcceptSymbol("(")) {
            do {
                table.columns.push_back(TakeName());
            } while (AcceptSymbol(","));
            ExpectSymbol(")");
        }
        Expect("as");
        ExpectSymbol("(");
        table.select = ParseSelect();
        ExpectSymbol(")");
    } while (AcceptSymbol(","));
    return tables;
}

SelectPtr Parser::ParseValueRows() {
    Expect("values");
    SelectPtr first;
    Select* last = nullptr;
    do {
        auto row = std::make_unique<Select>();
        ExpectSymbol("(");
        do {
            row->items.emplace_back().value = ParseValue();
        } while (AcceptSymbol(","));
        ExpectSymbol(")");
        Select* const added = row.get();
        if (last == nullptr) {
            first = std::move(row);
        } else {
            last->operation = SetOperation::unionAll;
            last->next = std::move(row);
        }
        last = added;
    } while (AcceptSymbol(","));
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
        } else if (token_.kind == TokenKind::literal || AtVariable()) {
            select.top = ParsePrimary(false);
        } else {
            FailHere();
        }
        select.topPercent = Accept("percent");
        if (At("with") && Peek().Is("ties")) {
            Advance();
            Advance();
            select.topTies = true;
        }
    }
    do {
        select.items.push_back(ParseSelectItem());
    } while (AcceptSymbol(","));
    if (Accept("into")) {
        select.into = TakeObjectName();
    }
    ParseRows(select.from, select.where);
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
    if (options_.script && AtVariable() && IsAssignment(Peek())) {
        ExpressionPtr variable = Make(Node::variable);
        variable->text = item.variable = TakeVariable();
        RequireDeclared(item.variable);
        item.value = ParseAssigned(std::move(variable));
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
        if (Accept("apply")) {
            return Join::crossApply;
        }
    } else if (At("outer") && Peek().Is("apply")) {
        Advance();
        Advance();
        return Join::outerApply;
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
        if (*join == Join::cross || *join == Join::crossApply || *join == Join::outerApply) {
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
        if (!At("select") && !AtSymbol("(") && !At("values")) {
            source = ParseJoins();
            ExpectSymbol(")");
            return source;
        }
        source->select = At("values") ? ParseValueRows() : ParseSelect();
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
    source->name = TakeTableName();
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

} // namespace refhost::sql
