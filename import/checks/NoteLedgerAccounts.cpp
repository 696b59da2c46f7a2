#include "ModPub/Text.h"
#include "import/checks/CheckAgainstAccount.h"

#include <map>
#include <tuple>

namespace importing {
namespace {

class LedgerAccounts {
public:
    explicit LedgerAccounts(AccountReader& account) {
        account.Rows("select cWhCode, cInvCCode, cInvCode, cInvHead from IA_HeadSet where isnull(cInvHead, N'') <> N'' "
                     "and iYear = " +
                         account.year() + " order by AutoID",
                     [&](const host::Recordset& row) {
                         heads_.try_emplace({Code(TextOf(row.FieldValue(0))), Code(TextOf(row.FieldValue(1))),
                                             Code(TextOf(row.FieldValue(2)))},
                                            TextOf(row.FieldValue(3)));
                     });
        account.Rows("select cInvCode, cInvCCode from inventory", [&](const host::Recordset& row) {
            classes_[Code(TextOf(row.FieldValue(0)))] = Code(TextOf(row.FieldValue(1)));
        });
    }

    std::string Of(const std::string& warehouseCode, const std::string& itemCode) const {
        const std::string warehouse = Code(warehouseCode);
        const std::string item = Code(itemCode);
        for (const std::string& place : {warehouse, std::string()}) {
            if (const std::string* const head = Find(place, {}, item)) {
                return *head;
            }
        }
        const auto found = classes_.find(item);
        // A class above has the beginning of its code.
        for (std::string itemClass = found == classes_.end() ? std::string() : found->second; !itemClass.empty();
             itemClass.pop_back()) {
            for (const std::string& place : {warehouse, std::string()}) {
                if (const std::string* const head = Find(place, itemClass, {})) {
                    return *head;
                }
            }
        }
        const std::string* const head = Find(warehouse, {}, {});
        return head == nullptr ? std::string() : *head;
    }

private:
    static std::string Code(const std::string& code) { return ModPub::UpperCase(code); }

    const std::string* Find(const std::string& warehouse, const std::string& itemClass, const std::string& item) const {
        const auto found = heads_.find({warehouse, itemClass, item});
        return found == heads_.end() ? nullptr : &found->second;
    }

    /// By warehouse, class and item; empty where a setting does not name one.
    std::map<std::tuple<std::string, std::string, std::string>, std::string> heads_;
    std::map<std::string, std::string> classes_;
};

} // namespace

void NoteLedgerAccounts(Outcome& outcome, AccountReader& account) {
    const LedgerAccounts accounts(account);
    for (RowOutcome& each : outcome.rows) {
        each.account = accounts.Of(ValueOf(outcome, each.row, "cWhCode"), ValueOf(outcome, each.row, "cInvCode"));
    }
    account.Rows("select ccode, ccode_name from code where iyear = " + account.year(), [&](const host::Recordset& row) {
        outcome.accountNames[TextOf(row.FieldValue(0))] = TextOf(row.FieldValue(1));
    });
}

} // namespace importing
