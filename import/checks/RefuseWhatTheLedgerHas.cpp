#include "import/checks/CheckAgainstAccount.h"
#include "import/checks/RowChecks.h"
#include "import/fields/KeyPart.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <span>

namespace importing {
namespace {

struct KeyColumn {
    std::string_view column;
    std::string_view element;
};

constexpr std::array openingKey = {
    KeyColumn{"cWhCode", "cWhCode"}, KeyColumn{"cInvCode", "cInvCode"}, KeyColumn{"cBatchIA", "cBatchCode"},
    KeyColumn{"cFree1", "cFree1"},   KeyColumn{"cFree2", "cFree2"},     KeyColumn{"cFree3", "cFree3"},
    KeyColumn{"cFree4", "cFree4"},   KeyColumn{"cFree5", "cFree5"},     KeyColumn{"cFree6", "cFree6"},
    KeyColumn{"cFree7", "cFree7"},   KeyColumn{"cFree8", "cFree8"},     KeyColumn{"cFree9", "cFree9"},
    KeyColumn{"cFree10", "cFree10"},
};
constexpr std::array inventoryKey = {
    KeyColumn{"cWhCode", "cWhCode"},
    KeyColumn{"cInvCCode", "cInvCCode"},
    KeyColumn{"cInvCode", "cInvCode"},
};
constexpr std::array oppositeKey = {
    KeyColumn{"cRdCode", "cRdCode"},   KeyColumn{"cInvcCode", "cInvcCode"},     KeyColumn{"cInvCode", "cInvCode"},
    KeyColumn{"cDepCode", "cDepCode"}, KeyColumn{"citem_class", "cItem_class"}, KeyColumn{"citemcode", "cItemCode"},
};
constexpr std::array standardKey = {
    KeyColumn{"cRdCode", "cRdCode"},
    KeyColumn{"cInvcCode", "cInvcCode"},
    KeyColumn{"cDepCode", "cDepCode"},
};
constexpr std::array provisionsKey = {KeyColumn{"cDecCode", "Deccode"}};

/// What makes a row one that the ledger has.
struct KeyRules {
    std::string_view className;
    std::string_view table;
    std::string_view condition;
    bool ofYear;
    std::span<const KeyColumn> columns;
    /// The class looks for the columns that the row fills in alone: a setting of a warehouse is met by any setting in
    /// it.
    bool byFilled;
    Message message;
};

constexpr std::array keyRules = {
    KeyRules{"ClsInvSubject", "IA_HeadSet", "1 = 1", true, inventoryKey, true, message::settingExists},
    KeyRules{"ClsKovra", "Ia_subsidiary", "cVouType = '34'", true, openingKey, false, message::openingExists},
    KeyRules{"ClsKovraProof", "IA_DecReady", "1 = 1", false, provisionsKey, false, message::documentExists},
    KeyRules{"ClsOppSubject", "IA_OppHead", "1 = 1", true, oppositeKey, false, message::settingExists},
    KeyRules{"ClsOppSubjectST", "IA_OppHead", "1 = 1", true, standardKey, false, message::settingExists},
};

/// The keys that the ledger has, of all columns or of those that are asked for.
class LedgerKeys {
public:
    LedgerKeys(const KeyRules& rule, AccountReader& account) : rule_(rule) {
        std::string sql = "select ";
        for (const KeyColumn& each : rule.columns) {
            sql.append(&each == rule.columns.data() ? "" : ", ").append(each.column);
        }
        sql.append(" from ").append(rule.table).append(" where ").append(rule.condition);
        if (rule.ofYear) {
            sql.append(" and iYear = ").append(account.year());
        }
        account.Rows(sql, [&](const host::Recordset& row) {
            std::vector<std::string>& record = records_.emplace_back();
            for (std::size_t column = 0; column < rule.columns.size(); ++column) {
                record.push_back(TextOf(row.FieldValue(column)));
            }
        });
    }

    bool Have(const CheckedRow& row) {
        std::string filled;
        std::string key;
        for (const KeyColumn& each : rule_.columns) {
            const std::string& value = row[each.element];
            const bool asks = !rule_.byFilled || !value.empty();
            filled.push_back(asks ? '1' : '0');
            if (asks) {
                AppendKeyPart(key, value);
            }
        }
        return KeysOf(filled).contains(key);
    }

private:
    /// The records' keys of the columns marked "1".
    const std::set<std::string>& KeysOf(const std::string& filled) {
        const auto [found, isNew] = keys_.try_emplace(filled);
        if (isNew) {
            for (const std::vector<std::string>& record : records_) {
                std::string key;
                for (std::size_t column = 0; column < record.size(); ++column) {
                    if (filled[column] == '1') {
                        AppendKeyPart(key, record[column]);
                    }
                }
                found->second.insert(std::move(key));
            }
        }
        return found->second;
    }

    const KeyRules& rule_;
    std::vector<std::vector<std::string>> records_;
    std::map<std::string, std::set<std::string>> keys_;
};

} // namespace

void RefuseWhatTheLedgerHas(Outcome& outcome, AccountReader& account) {
    const auto* const rule = std::ranges::find(keyRules, outcome.classFields->className, &KeyRules::className);
    if (rule == keyRules.end()) {
        return;
    }
    LedgerKeys keys(*rule, account);
    for (RowOutcome& each : outcome.rows) {
        CheckedRow row(outcome, each);
        const bool named =
            std::ranges::any_of(rule->columns, [&](const KeyColumn& column) { return !row[column.element].empty(); });
        const bool read =
            std::ranges::all_of(rule->columns, [&](const KeyColumn& column) { return row.WasRead(column.element); });
        if (each.state != RowState::alreadyIn && named && read && keys.Have(row)) {
            row.Refuse(rule->message, rule->message == message::documentExists
                                          ? std::vector<std::string>{row[rule->columns.front().element]}
                                          : std::vector<std::string>{});
        }
    }
}

} // namespace importing
