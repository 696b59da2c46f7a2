#include "ModPub/Conversions.h"
#include "ModPub/ReadAccOption.h"
#include "ModPub/Text.h"
#include "import/checks/CheckAgainstAccount.h"
#include "import/checks/RowChecks.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>

namespace importing {
namespace {

constexpr std::string_view individual = "个别计价法";
constexpr std::string_view plannedPrice = "计划价法";
constexpr std::string_view retailPrice = "售价法";
constexpr std::array<std::string_view, 4> methodsWithBatches = {"全月平均法", "移动平均法", "先进先出法", "后进先出法"};

constexpr std::size_t freeItems = 10;
/// Dates up to this one are refused.
constexpr std::string_view firstDay = "1949-01-01";

/// What an item asks of its opening balances.
struct Item {
    /// Empty where none is set.
    std::string method;
    bool hasPlannedPrice = false;
    bool checksBatch = false;
    bool tracked = false;
    /// Nothing where the account does not say; the class then refuses the row by itself.
    std::optional<bool> hasBatches;
    std::optional<bool> hasShelfLife;
    std::array<bool, freeItems> needsFree = {};
};

std::optional<bool> Flag(const host::Value& value) {
    return value.IsNull() ? std::nullopt : std::optional(ModPub::ToBoolean(value));
}

std::string FreeItem(std::size_t number) { return "cFree" + std::to_string(number + 1); }

class OpeningChecks {
public:
    OpeningChecks(const Outcome& outcome, AccountReader& account) {
        byItem_ =
            ModPub::ReadAccOption(account.environment(), account.connection(), "IA", "cValueStyle") == "按存货核算";
        account.Remember(byItem_ ? "1" : "0");
        ReadItems(account);
        account.Rows("select cWhCode, cwhvaluestyle from Warehouse", [&](const host::Recordset& row) {
            methods_[ModPub::UpperCase(TextOf(row.FieldValue(0)))] = TextOf(row.FieldValue(1));
        });
        account.Rows("select distinct cInvCode from InvCheckFreeIA870", [&](const host::Recordset& row) {
            pricedByFreeItems_.insert(ModPub::UpperCase(TextOf(row.FieldValue(0))));
        });
        if (outcome.columns.Find("dVouDate")) {
            const host::HostLogin::PeriodRange period =
                account.login().PeriodDates(account.login().StartPeriod(), ModPub::ToInt32(account.year()));
            start_ = period.first.IsNull() ? std::string() : ModPub::FormatDate(period.first);
            account.Remember(start_);
        }
    }

    void Check(CheckedRow& row) const {
        CheckDates(row);
        const auto found = items_.find(ModPub::UpperCase(row["cInvCode"]));
        if (found == items_.end()) {
            return; // The column's list of codes has told.
        }
        const Item& item = found->second;
        for (std::size_t number = 0; number < freeItems; ++number) {
            if (item.needsFree[number] && row[FreeItem(number)].empty()) {
                row.Refuse(FreeItem(number), message::freeItemMissing);
            }
        }
        CheckBatch(row, item);
        CheckShelfLife(row, item);
        const std::optional<std::string> method = Method(row, item);
        if (method) {
            CheckAmounts(row, item, *method);
        }
    }

private:
    void ReadItems(AccountReader& account) {
        account.Rows("select cInvCode, cValuetype, iInvRCost, bCheckBatch, bTrack, bInvBatch, bInvQuality, bFree1, "
                     "bFree2, bFree3, bFree4, bFree5, bFree6, bFree7, bFree8, bFree9, bFree10 from inventory where "
                     "bService = 0 and bInvType = 0 and isnull(bPTOModel, 0) = 0",
                     [&](const host::Recordset& row) {
                         Item& item = items_[ModPub::UpperCase(TextOf(row.FieldValue(0)))];
                         item.method = TextOf(row.FieldValue(1));
                         item.hasPlannedPrice = !row.FieldValue(2).IsNull();
                         item.checksBatch = Flag(row.FieldValue(3)).value_or(false);
                         item.tracked = Flag(row.FieldValue(4)).value_or(false);
                         item.hasBatches = Flag(row.FieldValue(5));
                         item.hasShelfLife = Flag(row.FieldValue(6));
                         for (std::size_t number = 0; number < freeItems; ++number) {
                             item.needsFree[number] = Flag(row.FieldValue(7 + number)).value_or(false);
                         }
                     });
    }

    /// The valuation method of the row's item or warehouse; nothing where it is not known, which is told.
    std::optional<std::string> Method(CheckedRow& row, const Item& item) const {
        if (byItem_) {
            if (item.method.empty()) {
                row.Refuse("cInvCode", message::itemWithoutValuation);
                return std::nullopt;
            }
            return item.method;
        }
        const auto found = methods_.find(ModPub::UpperCase(row["cWhCode"]));
        if (found == methods_.end()) {
            return std::nullopt;
        }
        if (found->second.empty()) {
            row.Refuse("cWhCode", message::warehouseWithoutValuation);
            return std::nullopt;
        }
        return found->second;
    }

    void CheckDates(CheckedRow& row) const {
        const std::string& date = row["dVouDate"];
        if (!date.empty() && date <= firstDay) {
            row.Refuse("dVouDate", message::receiptTooEarly);
        } else if (!date.empty() && !start_.empty() && date >= start_) {
            row.Refuse("dVouDate", message::receiptNotBeforeStart);
        }
    }

    static void CheckBatch(CheckedRow& row, const Item& item) {
        if (!row["cBatchCode"].empty() && item.hasBatches == false) {
            row.Refuse("cBatchCode", message::batchNotManaged);
        }
    }

    static void CheckShelfLife(CheckedRow& row, const Item& item) {
        const std::string& made = row["dMadeDate"];
        const std::string& expires = row["dVDate"];
        if (item.hasShelfLife == false) {
            for (const std::string_view element : {"dMadeDate", "dVDate"}) {
                if (!row[element].empty()) {
                    row.Refuse(element, message::shelfLifeNotManaged);
                }
            }
        } else if (item.hasShelfLife == true && !made.empty() && !expires.empty()) {
            // One date alone passes unchecked, as in the class.
            if (made <= firstDay) {
                row.Refuse("dMadeDate", message::madeTooEarly);
            } else if (expires <= firstDay) {
                row.Refuse("dVDate", message::expiryTooEarly);
            } else if (expires <= made) {
                row.Refuse("dVDate", message::expiryBeforeMade);
            }
        }
    }

    void CheckAmounts(CheckedRow& row, const Item& item, const std::string& method) const {
        if (item.checksBatch && row["cBatchCode"].empty() &&
            std::ranges::find(methodsWithBatches, method) != methodsWithBatches.end()) {
            row.Refuse("cBatchCode", message::batchMissing);
        }
        const double quantity = ModPub::Val(row["iQuantity"]);
        if (quantity < 0 && method == individual) {
            row.Refuse("iQuantity", message::quantityNegativeIndividual);
        } else if (quantity < 0 && item.tracked) {
            row.Refuse("iQuantity", message::quantityNegativeTracked);
        }
        if (method != plannedPrice && method != retailPrice) {
            return;
        }
        if (quantity == 0) {
            row.Refuse("iQuantity", message::quantityZeroPlanned);
        }
        if (!item.hasPlannedPrice && !pricedByFreeItems_.contains(ModPub::UpperCase(row["cInvCode"]))) {
            row.Refuse("cInvCode", method == plannedPrice ? message::plannedPriceMissing : message::retailPriceMissing);
        }
    }

    /// Whether items have valuation methods, or warehouses.
    bool byItem_ = false;
    std::map<std::string, Item> items_;
    std::map<std::string, std::string> methods_;
    std::set<std::string> pricedByFreeItems_;
    /// The module's first day; empty where the calendar does not tell.
    std::string start_;
};

} // namespace

void CheckOpening(Outcome& outcome, AccountReader& account) {
    const OpeningChecks checks(outcome, account);
    for (RowOutcome& each : outcome.rows) {
        CheckedRow row(outcome, each);
        checks.Check(row);
    }
}

} // namespace importing
