#include "import/checks/CheckAgainstAccount.h"
#include "import/checks/RowChecks.h"

#include <algorithm>
#include <array>
#include <span>

namespace importing {
namespace {

constexpr std::array<std::string_view, 3> inventoryKeys = {"cWhCode", "cInvCCode", "cInvCode"};
constexpr std::array<std::string_view, 5> inventoryAccounts = {"cInvHead", "cDifHead", "cOutHead", "cEnDispHead",
                                                               "czyHead"};
// A project alone is no key: the class does not count it.
constexpr std::array<std::string_view, 4> oppositeKeys = {"cRdCode", "cInvcCode", "cInvCode", "cDepCode"};
constexpr std::array<std::string_view, 2> oppositeAccounts = {"cOppHead", "cEstHead"};
constexpr std::array<std::string_view, 3> standardKeys = {"cRdCode", "cInvcCode", "cDepCode"};

/// What a class of settings asks of each row.
struct SettingRules {
    std::string_view className;
    std::span<const std::string_view> keys;
    Message keyMissing;
    /// Empty where a row without an account is taken.
    std::span<const std::string_view> accounts;
    Message accountsMissing = {};
};

constexpr std::array settingRules = {
    SettingRules{"ClsInvSubject", inventoryKeys, message::keyMissingInventory, inventoryAccounts,
                 message::accountsMissingInventory},
    SettingRules{"ClsOppSubject", oppositeKeys, message::keyMissingOpposite, oppositeAccounts,
                 message::accountsMissingOpposite},
    SettingRules{"ClsOppSubjectST", standardKeys, message::keyMissingStandard, {}},
};

/// Whether all of them were left empty; a cell that could not be read was not.
bool AllEmpty(const CheckedRow& row, std::span<const std::string_view> elements) {
    return std::ranges::all_of(elements,
                               [&](std::string_view element) { return row[element].empty() && row.WasRead(element); });
}

} // namespace

void CheckSettings(Outcome& outcome) {
    const SettingRules& rule =
        *std::ranges::find(settingRules, outcome.classFields->className, &SettingRules::className);
    for (RowOutcome& each : outcome.rows) {
        CheckedRow row(outcome, each);
        if (AllEmpty(row, rule.keys)) {
            row.Refuse(rule.keyMissing);
        }
        if (!row["cInvCode"].empty() && !row["cInvCCode"].empty()) {
            row.Refuse("cInvCCode", message::itemAndClass);
        }
        if (!rule.accounts.empty() && AllEmpty(row, rule.accounts)) {
            row.Refuse(rule.accountsMissing);
        }
    }
}

} // namespace importing
