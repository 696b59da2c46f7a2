#include "import/ledger/Ledger.h"

#include "ModPub/Conversions.h"
#include "import/fields/KeyPart.h"
#include "import/file/Sha256.h"
#include "import/ledger/LedgerTable.h"

#include <algorithm>
#include <map>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace importing {
namespace {

using Kind = MatchColumn::Kind;

void AppendNumber(std::string& match, double number) {
    match.append(number == 0 ? std::string() : ModPub::NumberText(number)).push_back(partEnd);
}

/// What tells an entry of a price voucher from the others.
constexpr std::string_view entryElements[] = {"cInvCode", "cFree1", "cFree2", "cFree3", "cFree4", "cFree5",
                                              "cFree6",   "cFree7", "cFree8", "cFree9", "cFree10"};

std::string Condition(const LedgerTable& table, const std::string& year) {
    return table.condition.empty() ? "1 = 1" : fmt::format(fmt::runtime(table.condition), year);
}

bool IsVoucher(const LedgerTable& table) { return table.table == "CostJustVouch"; }

} // namespace

Ledger::Ledger(const ClassFields& classFields, AccountReader& account)
    : table_(LedgerTableOf(classFields.className)), account_(account) {}

std::int64_t Ledger::HighestId() {
    const std::string id = account_.First(fmt::format("select isnull(max({}), 0) from {}", table_.id, table_.table));
    return ModPub::ToInt32(id);
}

std::set<std::int64_t> Ledger::Ids() {
    std::set<std::int64_t> ids;
    account_.Rows(
        fmt::format("select {} from {} where {}", table_.id, table_.table, Condition(table_, account_.year())),
        [&](const host::Recordset& row) { ids.insert(ModPub::ToInt32(row.FieldValue(0))); });
    return ids;
}

std::vector<LedgerRecord> Ledger::RecordsAbove(std::int64_t id, Lock lock) {
    std::vector<LedgerRecord> records;
    const auto take = [&](const host::Recordset& row) {
        LedgerRecord& record = records.emplace_back();
        record.id = ModPub::ToInt32(row.FieldValue(table_.id));
        for (const MatchColumn& each : table_.columns) {
            const host::Value value = row.FieldValue(each.column);
            switch (each.kind) {
            case Kind::text:
                AppendKeyPart(record.match, TextOf(value));
                break;
            case Kind::number:
                AppendNumber(record.match, value.IsNull() ? 0 : ModPub::ToDouble(value));
                break;
            case Kind::date:
                AppendKeyPart(record.match, value.IsNull() ? std::string() : ModPub::FormatDate(value));
                break;
            }
        }
        Sha256 content;
        for (std::size_t column = 0; column < row.FieldCount(); ++column) {
            content.Add(TextOf(row.FieldValue(column)));
            content.Add(std::string_view(&partEnd, 1));
        }
        record.content = content.Finish();
    };
    account_.Rows(fmt::format("select * from {}{} where {} > {} and {} order by {}", table_.table,
                              lock == Lock::held ? " WITH (UPDLOCK, HOLDLOCK)" : "", table_.id, id,
                              Condition(table_, account_.year()), table_.id),
                  take);
    if (IsVoucher(table_)) {
        AddEntries(records, id);
    }
    return records;
}

/// Adds the entries of price vouchers to their matches: each item once, since a voucher has a row of it for each
/// warehouse.
void Ledger::AddEntries(std::vector<LedgerRecord>& records, std::int64_t id) {
    std::map<std::int64_t, std::set<std::string>> entries;
    account_.Rows(fmt::format("select H.AutoID as voucher, B.{} from CostJustVouchs B inner join CostJustVouch H on "
                              "H.ID = B.ID where H.AutoID > {}",
                              fmt::join(entryElements, ", B."), id),
                  [&](const host::Recordset& row) {
                      std::string entry;
                      for (const std::string_view element : entryElements) {
                          AppendKeyPart(entry, TextOf(row.FieldValue(element)));
                      }
                      entries[ModPub::ToInt32(row.FieldValue("voucher"))].insert(std::move(entry));
                  });
    for (LedgerRecord& record : records) {
        for (const std::string& entry : entries[record.id]) {
            record.match.append(entry);
        }
    }
}

std::string Ledger::MatchOf(const Outcome& outcome, const Unit& unit) const {
    std::string match;
    const Row& row = unit.rows.front()->row;
    for (const MatchColumn& each : table_.columns) {
        const std::string& value = ValueOf(outcome, row, each.element);
        each.kind == Kind::number ? AppendNumber(match, ModPub::Val(value)) : AppendKeyPart(match, value);
    }
    if (IsVoucher(table_)) {
        std::set<std::string> entries;
        for (const RowOutcome* const each : unit.rows) {
            std::string entry;
            for (const std::string_view element : entryElements) {
                AppendKeyPart(entry, ValueOf(outcome, each->row, element));
            }
            entries.insert(std::move(entry));
        }
        for (const std::string& entry : entries) {
            match.append(entry);
        }
    }
    return match;
}

bool Ledger::CanUndo() const noexcept { return table_.canUndo; }

void Ledger::Delete(const std::vector<std::int64_t>& ids) {
    constexpr std::size_t most = 500;
    for (std::size_t first = 0; first < ids.size(); first += most) {
        const auto begin = ids.begin() + static_cast<std::ptrdiff_t>(first);
        const auto end = ids.begin() + static_cast<std::ptrdiff_t>(std::min(first + most, ids.size()));
        account_.connection().Execute(
            fmt::format("delete from {} where {} in ({})", table_.table, table_.id, fmt::join(begin, end, ", ")),
            host::command_option::textNoRecords);
    }
}

} // namespace importing
