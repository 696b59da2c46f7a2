#include "import/outcome/Totals.h"

#include "ModPub/Numbers.h"
#include "import/rows/Sum.h"

#include <map>

namespace importing {
namespace {

struct AddingSums {
    std::size_t rows = 0;
    Sum quantity;
    Sum amount;

    void Add(double theQuantity, double theAmount) {
        ++rows;
        quantity.Add(theQuantity);
        amount.Add(theAmount);
    }
    Sums Result() const { return {rows, quantity.value(), amount.value()}; }
};

using Names = std::map<std::string, std::string, std::less<>>;

std::vector<Group> Groups(const std::map<std::string, AddingSums>& sums, const Names& names) {
    std::vector<Group> groups;
    for (const auto& [code, adding] : sums) {
        const auto name = names.find(code);
        groups.push_back({code, name == names.end() ? std::string() : name->second, adding.Result()});
    }
    return groups;
}

} // namespace

Totals TotalsOf(const Outcome& outcome) {
    const bool hasWarehouses = outcome.columns.Find("cWhCode").has_value();
    const bool hasAmounts = outcome.columns.Find("iPrice").has_value();
    AddingSums taken;
    AddingSums refused;
    AddingSums open;
    std::map<std::string, AddingSums> byWarehouse;
    std::map<std::string, AddingSums> byAccount;
    Totals totals;
    for (const RowOutcome& each : outcome.rows) {
        const double quantity = ModPub::Val(ValueOf(outcome, each.row, "iQuantity"));
        const double amount = ModPub::Val(ValueOf(outcome, each.row, "iPrice"));
        if (!IsTaken(each.state)) {
            (IsRefused(each.state) ? refused : open).Add(quantity, amount);
            continue;
        }
        taken.Add(quantity, amount);
        totals.corrected += each.row.corrections.empty() ? 0U : 1U;
        if (hasWarehouses) {
            byWarehouse[ValueOf(outcome, each.row, "cWhCode")].Add(quantity, amount);
        }
        if (hasAmounts) {
            byAccount[each.account].Add(quantity, amount);
        }
    }
    totals.taken = taken.Result();
    totals.refused = refused.Result();
    totals.open = open.Result();
    totals.byWarehouse = Groups(byWarehouse, outcome.warehouseNames);
    totals.byAccount = Groups(byAccount, outcome.accountNames);
    return totals;
}

} // namespace importing
