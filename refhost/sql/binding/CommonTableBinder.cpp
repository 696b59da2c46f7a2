#include "refhost/sql/binding/Binder.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <utility>

namespace refhost::sql {
namespace {

bool Mentions(const Source& source, std::string_view name) {
    if (source.left) {
        return Mentions(*source.left, name) || Mentions(*source.right, name);
    }
    return !source.select && source.name.parts.size() == 1 && EqualNames(source.name.Last(), name);
}

/// Whether a query reads the table of that name itself, not in a subquery.
bool Mentions(const Select& part, std::string_view name) {
    return std::any_of(part.from.begin(), part.from.end(),
                       [name](const std::unique_ptr<Source>& source) { return Mentions(*source, name); });
}

} // namespace

void Binder::AddCommons(const CommonTables& tables) {
    for (const CommonTable& table : tables) {
        commons_.push_back(&table);
        commonsVisible_ = commons_.size();
    }
}

std::optional<std::size_t> Binder::FindCommon(const Name& name) const {
    for (std::size_t i = commonsVisible_; name.parts.size() == 1 && i-- > 0;) {
        if (EqualNames(commons_[i]->name, name.Last())) {
            return i;
        }
    }
    return std::nullopt;
}

std::string Binder::BindCommon(std::size_t index, const std::string& alias, bool outerSide) {
    const CommonTable& common = *commons_[index];
    // Its query sees those before it.
    const std::size_t visible = std::exchange(commonsVisible_, index);
    std::optional<Recursion> outer = std::exchange(recursion_, std::nullopt);
    BoundSelect select;
    {
        const ScopeGuard guard(*this, nullptr);
        bool recursive = false;
        for (const Select* part = common.select.get(); part != nullptr; part = part->next.get()) {
            recursive = recursive || Mentions(*part, common.name);
        }
        select = recursive ? BindRecursive(common) : BindInner(*common.select);
    }
    recursion_ = std::move(outer);
    commonsVisible_ = visible;
    return AddDerived(std::move(select), alias.empty() ? common.name : alias, common.columns, outerSide);
}

BoundSelect Binder::BindRecursive(const CommonTable& common) {
    constexpr Type level{Base::integer, 0, 0, 0};
    const auto levelled = [level](std::string text) {
        Bound bound;
        bound.text = std::move(text);
        bound.type = level;
        return bound;
    };
    Recursion recursion{.name = common.name, .sqlName = fmt::format("w{}", sourceCount_++), .columns = {}, .alias = {}};
    BoundSelect all;
    const Select* part = common.select.get();
    const auto refuse = [&] {
        Fail(252, "Recursive common table expression '{}' does not contain a top-level UNION ALL operator.",
             common.name);
    };
    for (; part != nullptr && !Mentions(*part, common.name); part = part->next.get()) {
        const ScopeGuard guard(*this, nullptr);
        std::vector<OutputColumn> columns;
        all.members.push_back(BindMember(*part, columns, nullptr));
        if (all.columns.empty()) {
            all.columns = std::move(columns);
        }
        all.operators.emplace_back(" UNION ALL ");
        if (part->operation != SetOperation::unionAll) {
            refuse();
        }
    }
    if (all.members.empty()) {
        refuse();
    }
    for (const BoundSelect::Member& member : all.members) {
        if (member.values.size() != all.columns.size()) {
            Fail(205, "All queries combined using a UNION, INTERSECT or EXCEPT operator must have an equal number of "
                      "expressions in their target lists.");
        }
    }
    UnifyMembers(all);
    for (std::size_t i = 0; i < all.columns.size(); ++i) {
        const std::string& name = common.columns.empty() ? all.columns[i].name : common.columns.at(i);
        recursion.columns.push_back({name, all.columns[i].value});
    }
    for (BoundSelect::Member& member : all.members) {
        member.values.push_back(levelled("0"));
    }
    for (; part != nullptr; part = part->next.get()) {
        if (!Mentions(*part, common.name)) {
            refuse();
        }
        const ScopeGuard guard(*this, nullptr);
        recursion_ = recursion;
        std::vector<OutputColumn> columns;
        BoundSelect::Member member = BindMember(*part, columns, nullptr);
        const std::string alias = recursion_->alias;
        recursion_.reset();
        if (columns.size() != recursion.columns.size()) {
            Fail(205, "All queries combined using a UNION, INTERSECT or EXCEPT operator must have an equal number of "
                      "expressions in their target lists.");
        }
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (member.values[i].type != recursion.columns[i].value.type) {
                Fail(240,
                     "Types don't match between the anchor and the recursive part in column \"{}\" of recursive query "
                     "\"{}\".",
                     recursion.columns[i].name, common.name);
            }
        }
        constexpr int deepest = 100;
        member.values.push_back(levelled(fmt::format("k_recursion({}.level, {})", alias, deepest)));
        all.members.push_back(std::move(member));
        if (part->next) {
            all.operators.emplace_back(" UNION ALL ");
        }
    }
    std::string head = "WITH RECURSIVE " + recursion.sqlName + " (";
    BoundSelect::Member outside;
    for (std::size_t i = 0; i < recursion.columns.size(); ++i) {
        head += fmt::format("c{}, ", i);
        Bound value = recursion.columns[i].value;
        value.kind = Bound::Kind::expression;
        value.column = nullptr;
        value.text = fmt::format("{}.c{}", recursion.sqlName, i);
        all.columns[i].value = value;
        outside.values.push_back(std::move(value));
    }
    outside.head = head + "level) AS (" + all.Text(false, false) + ") SELECT ";
    outside.tail = " FROM " + recursion.sqlName;
    BoundSelect result;
    result.columns = std::move(all.columns);
    result.members.push_back(std::move(outside));
    return result;
}

std::string Binder::BindRecursiveSource(const std::string& alias) {
    ScopeSource added;
    added.alias = alias.empty() ? recursion_->name : alias;
    added.sqlName = fmt::format("t{}", sourceCount_++);
    for (std::size_t i = 0; i < recursion_->columns.size(); ++i) {
        Bound value;
        value.kind = Bound::Kind::column;
        value.text = fmt::format("{}.c{}", added.sqlName, i);
        value.type = recursion_->columns[i].value.type;
        added.columns.push_back({recursion_->columns[i].name, std::move(value)});
    }
    recursion_->alias = added.sqlName;
    std::string text = fmt::format("{} AS {}", recursion_->sqlName, added.sqlName);
    scope_->sources.push_back(std::move(added));
    return text;
}

} // namespace refhost::sql
