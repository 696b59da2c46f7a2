#include "import/log/Settle.h"

#include <map>
#include <set>

namespace importing {

std::vector<LoggedUnit> MatchRecords(const std::vector<LoggedUnit>& units, const std::vector<LedgerRecord>& records) {
    std::set<std::int64_t> taken;
    for (const LoggedUnit& unit : units) {
        if (unit.id) {
            taken.insert(*unit.id);
        }
    }
    std::multimap<std::string, const LedgerRecord*> free;
    for (const LedgerRecord& record : records) {
        if (!taken.contains(record.id)) {
            free.emplace(record.match, &record);
        }
    }
    std::vector<LoggedUnit> changed;
    for (const LoggedUnit::State state : {LoggedUnit::State::imported, LoggedUnit::State::begun}) {
        for (const LoggedUnit& unit : units) {
            if (unit.state != state || unit.id) {
                continue;
            }
            LoggedUnit& now = changed.emplace_back(unit);
            const auto record = free.find(unit.match);
            now.state = record == free.end() ? LoggedUnit::State::notIn : LoggedUnit::State::imported;
            if (record != free.end()) {
                now.id = record->second->id;
                now.content = record->second->content;
                free.erase(record);
            }
        }
    }
    return changed;
}

std::vector<std::int64_t> SettleUnfinished(ImportLog& log, Ledger& ledger, const std::string& account,
                                           const std::string& className) {
    std::vector<std::int64_t> numbers;
    for (LoggedImport import : log.Unfinished(account, className)) {
        log.NoteRecords(import.number, MatchRecords(log.Units(import.number), ledger.RecordsAbove(import.baseline)));
        import.state = LoggedImport::State::ended;
        import.taken = 0;
        for (const LoggedUnit& unit : log.Units(import.number)) {
            import.taken += unit.state == LoggedUnit::State::imported ? 1 : 0;
        }
        log.End(import);
        numbers.push_back(import.number);
    }
    return numbers;
}

} // namespace importing
