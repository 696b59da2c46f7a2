// Writing through views. SQL Server writes through a view what it can trace to columns of one table ("CREATE VIEW",
// updatable views); here the view is over one table, and its columns are that table's.

#include "refhost/sql/binding/Binder.h"
#include "refhost/sql/syntax/Parser.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <utility>

namespace refhost::sql {
namespace {

/// Whether a query sums up rows instead of showing them.
bool IsCondensed(const Select& select) {
    return select.distinct || !select.groupBy.empty() || select.having ||
           std::ranges::any_of(select.items, [](const SelectItem& item) { return item.value->node == Node::function; });
}

} // namespace

int Binder::WriteTarget::Find(std::string_view name) const {
    if (!view) {
        return table->Find(name);
    }
    const auto found =
        std::ranges::find_if(columns, [&](const auto& column) { return EqualNames(column.first, name); });
    return found == columns.end() ? -1 : found->second;
}

Binder::WriteTarget Binder::OpenView(const Table& view) {
    const std::string text = catalog_.ViewText(view);
    Parser parser(text, {});
    const std::optional<Statement> statement = parser.ParseBatch();
    const CreateView* const create = statement ? statement->As<CreateView>() : nullptr;
    if (create == nullptr) {
        Fail(208, "Invalid object name '{}'.", view.name);
    }
    const Select& select = *create->select;
    if (IsCondensed(select)) {
        Fail(
            4403,
            "Cannot update the view or function '{}' because it contains aggregates, or a DISTINCT or GROUP BY clause, "
            "or PIVOT or UNPIVOT operator.",
            view.name);
    }
    const Source* const source = select.from.size() == 1 ? select.from.front().get() : nullptr;
    const bool single = source != nullptr && !source->left && !source->select;
    if (!single) {
        Fail(4405, "View or function '{}' is not updatable because the modification affects multiple base tables.",
             view.name);
    }
    const auto refuse = [&] {
        FailOwn(host::error_number::unspecified,
                "The embedded database writes through views over one table whose columns are that table's; '{}' is "
                "none.",
                view.name);
    };
    WriteTarget target;
    target.view = true;
    // What the view names is in its own database.
    Name base = source->name;
    if (base.parts.size() == 1) {
        base.parts = {catalog_.DatabaseOf(view.schema), "", base.Last()};
    }
    target.table = catalog_.Get(base);
    if (target.table->view || !select.with.empty() || select.top || select.offset ||
        select.operation != SetOperation::none) {
        refuse();
    }
    for (const SelectItem& item : select.items) {
        if (item.value->node == Node::star) {
            for (std::size_t i = 0; i < target.table->columns.size(); ++i) {
                target.columns.emplace_back(target.table->columns[i].name, static_cast<int>(i));
            }
            continue;
        }
        const int place = item.value->node == Node::column ? target.table->Find(item.value->name.Last()) : -1;
        if (place < 0) {
            refuse();
        }
        target.columns.emplace_back(item.alias.empty() ? item.value->name.Last() : item.alias, place);
    }
    for (std::size_t i = 0; i < create->columns.size(); ++i) {
        target.columns.at(i).first = create->columns[i];
    }
    // A star shows the columns that there were when the view was made.
    target.columns.resize(std::min(target.columns.size(), view.columns.size()));
    if (select.where) {
        Binder inner(catalog_, session_, parser.Literals(), LiteralUse::inlined);
        target.rows = inner.BindRows(target.table, source->alias, *select.where);
    }
    return target;
}

std::string Binder::BindRows(std::shared_ptr<const Table> table, const std::string& alias,
                             const Expression& condition) {
    const ScopeGuard guard(*this, nullptr);
    const std::string from = table->source;
    const std::string name = AddTable(std::move(table), alias, false).sqlName;
    return fmt::format("SELECT {0}.rowid FROM {1} AS {0} WHERE {2}", name, from, BindCondition(condition, true));
}

Binder::ScopeSource& Binder::AddTarget(const WriteTarget& target, const std::string& name, bool outerSide) {
    ScopeSource& source = AddTable(target.table, name, outerSide);
    if (target.view) {
        std::vector<ScopeColumn> seen;
        for (const auto& [column, place] : target.columns) {
            seen.push_back({column, source.columns.at(static_cast<std::size_t>(place)).value});
        }
        source.columns = std::move(seen);
    }
    return source;
}

std::string Binder::BindTargetView(const Table& view, const std::string& alias, bool outerSide) {
    auto target = std::make_shared<const WriteTarget>(OpenView(view));
    ScopeSource& source = AddTarget(*target, alias.empty() ? view.name : alias, outerSide);
    source.tableName = view.name;
    source.row = source.sqlName + ".kovra_row";
    source.written = target;
    const std::string shown = target->rows.empty() ? std::string() : fmt::format(" WHERE rowid IN ({})", target->rows);
    return fmt::format("(SELECT rowid AS kovra_row, * FROM {}{}) AS {}", target->table->source, shown, source.sqlName);
}

} // namespace refhost::sql
