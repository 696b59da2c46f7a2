#include "import/log/Undo.h"

#include "ModPub/Conversions.h"
#include "import/account/AccountReader.h"
#include "import/ledger/Ledger.h"
#include "import/log/Settle.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>

namespace importing {
namespace {

using Result = UndoOutcome::Result;

bool IsPosted(AccountReader& account) {
    const std::string flag =
        account.First("Select isnull(bFlag_IA, 0) from gl_mend where iPeriod=0 AND iYear =" + account.year());
    return !flag.empty() && ModPub::ToBoolean(flag);
}

/// Deletes the records of the units where each is as it was written.
UndoOutcome Delete(Ledger& ledger, AccountReader& account, const std::vector<LoggedUnit>& units) {
    UndoOutcome outcome;
    std::vector<std::int64_t> ids;
    for (const LoggedUnit& unit : units) {
        if (unit.id && unit.state == LoggedUnit::State::imported) {
            ids.push_back(*unit.id);
        }
    }
    if (ids.empty()) {
        return outcome;
    }
    account.connection().BeginTrans();
    try {
        std::map<std::int64_t, std::string> contents;
        for (const LedgerRecord& record : ledger.RecordsAbove(*std::ranges::min_element(ids) - 1, Ledger::Lock::held)) {
            contents[record.id] = record.content;
        }
        bool anyLeft = false;
        for (const LoggedUnit& unit : units) {
            if (!unit.id || unit.state != LoggedUnit::State::imported) {
                continue;
            }
            const auto found = contents.find(*unit.id);
            anyLeft = anyLeft || found != contents.end();
            if (found == contents.end() || found->second != unit.content) {
                outcome.lines.push_back(unit.line);
            }
        }
        // Where none is left, an undo was cut off behind the ledger's part of it, and before the log's.
        if (!anyLeft) {
            outcome.lines.clear();
        } else if (!outcome.lines.empty()) {
            outcome.result = Result::changed;
        } else {
            ledger.Delete(ids);
            outcome.rows = ids.size();
        }
        account.connection().CommitTrans();
    } catch (...) {
        account.connection().RollbackTrans();
        throw;
    }
    return outcome;
}

} // namespace

UndoOutcome UndoImport(ImportLog& log, Account& account, std::int64_t number) {
    const std::optional<LoggedImport> import = log.Find(number);
    if (!import || import->account != account.Identity()) {
        return {.result = Result::unknown};
    }
    if (import->testRun || import->state == LoggedImport::State::undone) {
        return {.result = Result::nothingToUndo};
    }
    const std::unique_ptr<Session> session = account.Open();
    AccountReader reader(session->environment(), session->login());
    Ledger ledger(*FieldsOf(import->className), reader);
    if (!ledger.CanUndo()) {
        return {.result = Result::notByClass};
    }
    if (import->className == "ClsKovra" && IsPosted(reader)) {
        return {.result = Result::posted};
    }
    SettleUnfinished(log, ledger, import->account, import->className);
    UndoOutcome outcome = Delete(ledger, reader, log.Units(number));
    if (outcome.result == Result::undone) {
        log.NoteUndone(number);
    }
    return outcome;
}

} // namespace importing
