#include "import/run/RunImport.h"

#include "host/Error.h"
#include "import/account/ReadCodeLists.h"
#include "import/checks/CheckAgainstAccount.h"
#include "import/ledger/Ledger.h"
#include "import/log/Settle.h"
#include "import/outcome/Totals.h"
#include "import/rows/Documents.h"
#include "import/run/UnitHashes.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace importing {
namespace {

/// The server has ended the transaction that a test run works in.
struct TransactionEnded {
    std::size_t line = 0;
};

/// Rows of a request of a test run on a server: the transaction ends with it, so that others do not wait for long.
constexpr std::size_t rowsOfPortion = 200;

class Import {
public:
    explicit Import(const ImportTask& task)
        : task_(task), session_(task.account.Open()), account_(session_->environment(), session_->login()) {
        outcome_.file = task.file;
        outcome_.login = {.operatorName = session_->login().UserName(),
                          .account = session_->login().AccountId(),
                          .year = account_.year()};
        outcome_.committed = task.commit;
        outcome_.time = task.time;
    }

    Outcome Run() {
        ReadRows();
        if (!outcome_.faults.empty()) {
            return Finish();
        }
        ledger_.emplace(*outcome_.classFields, account_);
        if (task_.commit && task_.account.OnServer() && !outcome_.classFields->document.empty()) {
            outcome_.faults.push_back({message::serverDocuments, {}});
            return Finish();
        }
        outcome_.refused = AskWhetherOpen(outcome_, *session_, task_.transact);
        // What is in the ledger counts among what was read.
        const std::set<std::int64_t> ids = ledger_->Ids();
        const std::string fingerprint = account_.Fingerprint();
        const std::vector<std::int64_t> settled = SettleUnfinished(task_.log, *ledger_, Identity(), ClassName());
        FindWhatIsIn(ids);
        if (!task_.allowDuplicates) {
            RefuseWhatTheLedgerHas(outcome_, account_);
            RefuseDocuments();
        }
        NoteRefused();
        if (outcome_.refused) {
            return std::move(outcome_);
        }
        if (task_.commit) {
            TellChanges(fingerprint);
            Commit(fingerprint, settled);
        } else {
            Test();
            NoteTestRun(fingerprint);
        }
        return std::move(outcome_);
    }

private:
    std::string Identity() const { return task_.account.Identity(); }
    std::string ClassName() const { return std::string(outcome_.classFields->className); }

    void ReadRows() {
        const ClassFields& classFields = task_.spreadsheet.classFields();
        const CodeLists codes = ReadCodeLists(classFields, account_);
        Sheet sheet = task_.spreadsheet.Read(codes);
        outcome_.classFields = sheet.classFields;
        outcome_.columns = std::move(sheet.columns);
        outcome_.headerLine = sheet.headerLine;
        outcome_.hiddenRows = sheet.hiddenRows;
        outcome_.faults = std::move(sheet.faults);
        outcome_.rows.reserve(sheet.rows.size());
        for (Row& row : sheet.rows) {
            outcome_.rows.emplace_back().row = std::move(row);
        }
        for (const CodeList list : {CodeList::warehouse, CodeList::costedWarehouse}) {
            if (const auto found = codes.find(list); found != codes.end()) {
                for (const auto& [spelling, known] : found->second.all()) {
                    outcome_.warehouseNames[known.code] = known.name;
                }
            }
        }
        CheckAgainstAccount(outcome_, account_);
        if (task_.strict) {
            RefuseWhatIsNotPlain();
        }
        RefuseDocuments();
    }

    void RefuseWhatIsNotPlain() {
        for (RowOutcome& each : outcome_.rows) {
            for (const Correction& correction : each.row.corrections) {
                each.row.refusals.push_back(
                    {correction.column, {message::strictCorrection, {correction.old, correction.now}}, correction.now});
            }
            std::ranges::move(each.row.warnings, std::back_inserter(each.row.refusals));
            each.row.warnings.clear();
        }
    }

    void RefuseDocuments() {
        std::vector<Row*> rows;
        for (RowOutcome& each : outcome_.rows) {
            rows.push_back(&each.row);
        }
        RefuseWithTheirDocuments(*outcome_.classFields, outcome_.columns, rows);
    }

    /// Marks the rows that an earlier import wrote, and whose records are still there.
    void FindWhatIsIn(const std::set<std::int64_t>& ids) {
        const auto known = task_.log.Known(Identity(), ClassName());
        if (known.empty()) {
            return;
        }
        std::vector<Unit> units = UnitsOf(outcome_);
        const std::vector<std::string> hashes = UnitHashes(outcome_, units);
        std::size_t rows = 0;
        for (std::size_t index = 0; index < units.size(); ++index) {
            const auto [first, last] = known.equal_range(hashes[index]);
            const bool isIn = std::any_of(first, last, [&](const auto& each) {
                // Where repeated rows are wanted, another file's row is one of them.
                return ids.contains(each.second.id) &&
                       (!task_.allowDuplicates || each.second.file == outcome_.file.hash);
            });
            if (isIn) {
                for (RowOutcome* const row : units[index].rows) {
                    row->state = RowState::alreadyIn;
                }
                rows += units[index].rows.size();
            }
        }
        if (rows > 0) {
            outcome_.remarks.push_back({message::rowsAlreadyIn, {std::to_string(rows)}});
        }
    }

    /// Tells when file or account are not what the latest test run saw.
    void TellChanges(const std::string& fingerprint) {
        const std::optional<LoggedImport> test = task_.log.LatestTestRun(Identity(), ClassName(), outcome_.file.path);
        if (!test) {
            return;
        }
        if (test->hash != outcome_.file.hash) {
            outcome_.remarks.push_back({message::fileChanged, {test->time}});
        }
        if (test->fingerprint != fingerprint) {
            outcome_.remarks.push_back({message::accountChanged, {test->time}});
        }
    }

    RunListeners Progress(std::size_t of) {
        return {.wantsStop = task_.wantsStop, .unitBegins = {}, .unitEnded = [this, of](Unit& unit) {
                    ++done_;
                    refused_ += IsRefused(unit.rows.front()->state) ? 1U : 0U;
                    if (task_.progress) {
                        task_.progress(done_, of, refused_);
                    }
                }};
    }

    void Test() {
        const std::unique_ptr<TestSession> session = task_.account.OpenForTest();
        std::vector<Unit> units = UnitsOf(outcome_);
        // Settings may meet each other, and price vouchers change the prices that the next ones meet.
        constexpr std::array<std::string_view, 2> alone = {"ClsKovra", "ClsKovraProof"};
        const bool standAlone = std::ranges::find(alone, outcome_.classFields->className) != alone.end();
        std::optional<TransactionEnded> ended;
        RunListeners listeners = Progress(units.size());
        listeners.unitBegins = [&](Unit&) {
            if (ended) {
                throw *ended;
            }
        };
        listeners.unitEnded = [&, progress = std::move(listeners.unitEnded)](Unit& unit) {
            progress(unit);
            // A transaction that the server ends is ended with an error, and an error refuses the row.
            if (IsRefused(unit.rows.front()->state) && !session->Holds()) {
                ended = TransactionEnded{unit.rows.front()->row.line};
            }
        };
        listeners.requestEnded = [&] {
            if (ended) {
                throw *ended;
            }
            if (standAlone) {
                session->TakeBack();
            }
        };
        const RunOptions options{
            .taken = RowState::ready,
            .unitsPerRequest = standAlone && task_.account.OnServer() ? rowsOfPortion : RunOptions().unitsPerRequest};
        while (!units.empty()) {
            try {
                RunClass(outcome_, units, *session, task_.transact, options, listeners);
                return;
            } catch (const TransactionEnded& caught) {
                ended.reset();
                if (!standAlone) {
                    outcome_.remarks.push_back({message::transactionEnded, {std::to_string(caught.line)}});
                    return;
                }
                session->TakeBack();
                units = UnitsOf(outcome_);
            }
        }
    }

    void Commit(const std::string& fingerprint, const std::vector<std::int64_t>& settled) {
        units_ = UnitsOf(outcome_);
        const std::vector<std::string> hashes = UnitHashes(outcome_, units_);
        for (std::size_t index = 0; index < units_.size(); ++index) {
            logged_.push_back({.line = static_cast<std::int64_t>(units_[index].rows.front()->row.line),
                               .hash = hashes[index],
                               .match = ledger_->MatchOf(outcome_, units_[index])});
        }
        BeginInLog(fingerprint, settled);
        RunListeners listeners = Progress(units_.size());
        listeners.requestBegins = [this](std::span<Unit> asked) {
            const auto first = logged_.begin() + (asked.data() - units_.data());
            task_.log.NoteBegun(outcome_.number, {first, first + static_cast<std::ptrdiff_t>(asked.size())});
        };
        listeners.unitEnded = [this, progress = std::move(listeners.unitEnded)](Unit& unit) {
            const RowState state = unit.rows.front()->state;
            if (state != RowState::notReached) {
                task_.log.NoteState(outcome_.number, LoggedOf(unit).hash,
                                    IsTaken(state) ? LoggedUnit::State::imported : LoggedUnit::State::notIn);
            }
            progress(unit);
        };
        RunClass(outcome_, units_, *session_, task_.transact, {}, listeners);
        EndInLog();
    }

    const LoggedUnit& LoggedOf(const Unit& unit) const {
        return logged_[static_cast<std::size_t>(&unit - units_.data())];
    }

    void BeginInLog(const std::string& fingerprint, const std::vector<std::int64_t>& settled) {
        const std::optional<LoggedImport> latest = task_.log.LatestOf(Identity(), ClassName(), outcome_.file.hash);
        if (latest && std::ranges::find(settled, latest->number) != settled.end()) {
            outcome_.number = latest->number;
            outcome_.remarks.push_back({message::importResumed, {std::to_string(latest->number)}});
            task_.log.Resume(latest->number);
        } else if (latest && units_.empty()) {
            outcome_.number = latest->number;
        } else {
            outcome_.number = task_.log.Add(Logged(fingerprint));
        }
    }

    LoggedImport Logged(const std::string& fingerprint) {
        return {.time = outcome_.time,
                .className = ClassName(),
                .account = Identity(),
                .file = outcome_.file.path,
                .hash = outcome_.file.hash,
                .operatorName = outcome_.login.operatorName,
                .testRun = !outcome_.committed,
                .fingerprint = fingerprint,
                .baseline = ledger_->HighestId()};
    }

    /// Finds the records that were written, and notes the end. Where the ledger cannot be asked any more, the import
    /// stays open in the log, and the next run asks.
    void EndInLog() {
        LoggedImport import = *task_.log.Find(outcome_.number);
        AskAboutRefused();
        try {
            const std::vector<LoggedUnit> changed =
                MatchRecords(task_.log.Units(outcome_.number), ledger_->RecordsAbove(import.baseline));
            task_.log.NoteRecords(outcome_.number, changed);
            TakeOver(changed);
        } catch (const host::Error&) {
            TellDoubt();
            return;
        }
        NoteTotals(import);
        task_.log.End(import);
    }

    /// An error may have come behind the write that it was about: what the class refused is looked for too.
    void AskAboutRefused() {
        std::vector<LoggedUnit> refused;
        for (const Unit& unit : units_) {
            if (unit.rows.front()->state == RowState::refusedByClass) {
                refused.push_back(LoggedOf(unit));
            }
        }
        task_.log.NoteRecords(outcome_.number, refused);
    }

    void TakeOver(const std::vector<LoggedUnit>& changed) {
        std::set<std::string> in;
        for (const LoggedUnit& unit : changed) {
            if (unit.state == LoggedUnit::State::imported) {
                in.insert(unit.hash);
            }
        }
        for (const Unit& unit : units_) {
            if (unit.rows.front()->state == RowState::refusedByClass && in.contains(LoggedOf(unit).hash)) {
                SetState(unit, RowState::imported);
            }
        }
    }

    void TellDoubt() {
        std::size_t rows = 0;
        for (const Unit& unit : units_) {
            if (unit.rows.front()->state == RowState::refusedByClass) {
                SetState(unit, RowState::inDoubt);
                rows += unit.rows.size();
            }
        }
        if (rows > 0) {
            outcome_.remarks.push_back({message::rowsInDoubt, {std::to_string(rows)}});
        }
    }

    static void SetState(const Unit& unit, RowState state) {
        for (RowOutcome* const row : unit.rows) {
            row->state = state;
        }
    }

    void NoteTotals(LoggedImport& import) const {
        const Totals totals = TotalsOf(outcome_);
        import.state = LoggedImport::State::ended;
        import.taken = static_cast<std::int64_t>(totals.taken.rows);
        import.refused = static_cast<std::int64_t>(totals.refused.rows);
        import.quantity = totals.taken.quantity;
        import.amount = totals.taken.amount;
    }

    void NoteTestRun(const std::string& fingerprint) {
        LoggedImport test = Logged(fingerprint);
        NoteTotals(test);
        outcome_.number = task_.log.Add(test);
    }

    void NoteRefused() {
        for (RowOutcome& each : outcome_.rows) {
            if (!each.row.refusals.empty()) {
                each.state = RowState::refusedByChecks;
            }
        }
    }

    Outcome Finish() {
        NoteRefused();
        return std::move(outcome_);
    }

    const ImportTask& task_;
    std::unique_ptr<Session> session_;
    AccountReader account_;
    Outcome outcome_;
    std::optional<Ledger> ledger_;
    /// What the class is asked about in earnest, and what the log has of each.
    std::vector<Unit> units_;
    std::vector<LoggedUnit> logged_;
    std::size_t done_ = 0;
    std::size_t refused_ = 0;
};

} // namespace

Outcome RunImport(const ImportTask& task) { return Import(task).Run(); }

} // namespace importing
