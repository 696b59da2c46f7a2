#pragma once

#include "host/Value.h"
#include "refhost/ado/Database.h"
#include "refhost/sql/binding/Binder.h"
#include "refhost/sql/engine/GatheredLog.h"
#include "refhost/sql/engine/IdentityNumbers.h"
#include "refhost/sql/engine/KeptReadLock.h"
#include "refhost/sql/engine/PlanCache.h"
#include "refhost/sql/engine/RepeatedAnswers.h"
#include "refhost/sql/engine/StatementGuess.h"
#include "refhost/sql/engine/Violation.h"
#include "refhost/sql/store/Plan.h"
#include "refhost/sql/syntax/Parser.h"

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace refhost::sql {

class EmbeddedDatabase;

/// What opening does about a file that does not exist.
enum class Mode {
    open,   ///< throws and creates nothing
    create, ///< creates it, and the system database beside it
};

/// Opens the database of a connection string "Provider=KovraAccount;Data Source=FILE[;Delete Star=Accept]
/// [;Synchronous=Full|Normal][;Commit=Each|Grouped]"; keys and provider in any letter case, FILE ":memory:" for a
/// database that lives with the object. The system database QxSystem is the file QxSystem.db beside FILE, in memory
/// likewise. Throws `host::Error` "unspecified" for a file that cannot be opened or is no account database.
std::unique_ptr<EmbeddedDatabase> OpenEmbedded(const std::string& connectionString, Mode mode = Mode::open);

/// The account's file that such a connection string names. Throws for one that names none.
std::string FileOf(const std::string& connectionString);
/// The file of the system database beside an account's file.
std::string SystemFile(const std::string& file);

/// How long a statement waits for another process that writes, as imports do side by side.
inline constexpr int busyMilliseconds = 30'000;

/// What a power failure may take of what was committed; the failure of a process takes nothing either way.
enum class Durability {
    normal, ///< commits since the logs were last flushed, but nothing of the database's consistency
    full,   ///< nothing: each commit waits for the disk
};

/// A statement as SQLite gets it.
struct Translation {
    std::string text;
    std::vector<host::Value> parameters;
};

/// SQL Server's language on SQLite.
class EmbeddedDatabase : public Database {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    struct Settings {
        std::string file;
        bool deleteStar = false;
        Mode mode = Mode::open;
        Durability durability = Durability::normal;
        /// Whether the writes of a series are committed together, some milliseconds' at a time: a process that is
        /// killed takes those of the group at hand with it.
        bool grouped = false;
        /// How long a batch may run: ADO's `CommandTimeout` as it is when nobody sets it.
        std::chrono::milliseconds batchTime = std::chrono::seconds(30);
        /// The clock that a batch's time is measured by.
        Clock clock = std::chrono::steady_clock::now;
    };

    explicit EmbeddedDatabase(const Settings& settings);
    ~EmbeddedDatabase() override;

    ResultSet Query(std::string_view sql) override;
    void Execute(std::string_view sql) override;
    void RunBatch(std::string_view sql, TimeLimit limit, const BatchSink& sink) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;
    void BeginSeries() override;
    void EndSeries() override;

    /// What Query and Execute would hand to SQLite, for measuring; of SELECT, INSERT, UPDATE and DELETE only.
    Translation Translate(std::string_view sql);
    /// The connection underneath, for measuring.
    sqlite3* Handle() const { return db_.get(); }
    /// Number of translations kept, each with its prepared statement.
    std::size_t PlanCount() const { return plans_.Size(); }
    /// Number of translations made since the database was opened.
    std::size_t TranslationCount() const { return translations_; }

private:
    friend class BatchRunner;

    void Attach(const Settings& settings);
    void SetDurability(Schema schema);
    /// Puts in front of a file what spares the system calls.
    void SpareCalls(Schema schema);
    /// Has the disk take what stands in the logs: what a result tells of outlives a power failure.
    void FlushLogs() noexcept;
    /// Runs what a class sends; `first` receives the first of its result sets, unless it is nullptr. So do the two
    /// below.
    void Batch(std::string_view sql, ResultSet* first);
    void RunStatement(std::string_view sql, ResultSet* first);
    /// Has the writes from here on committed together, where that is wanted and possible.
    void OpenGroup(const Plan& plan);
    /// Commits the open group, if there is one. Throws when that fails, and what it said when it was lost before.
    void CommitGroup();
    /// Commits the group that another connection of the thread has open.
    void SettleOthers();
    /// Notes that rows are gone which statements had written.
    void LoseGroup(const host::Error& error);
    /// A batch of one statement that has no plan of its own kept.
    void RunSingle(std::string_view sql, ResultSet* first);
    const Plan* CachedPlan(std::string_view sql);
    void RunDefinition(const Statement& statement, const std::vector<Literal>& literals);
    /// The tables that a definition makes or drops when nothing else depends on it; nothing for every other definition.
    std::optional<std::vector<std::string>> TablesAlone(const Statement& statement);
    void RunSelectInto(const Select& select, const std::vector<Literal>& literals, const BatchSink& sink);
    void RunSetOption(const SetOption& option);
    /// The name of the database that is used from here on.
    std::string RunUse(const Use& use);
    void RunTransaction(const Transaction& transaction);
    void Save(const std::string& savepoint);
    void RollbackTo(const std::string& savepoint);
    /// Throws when the open transaction was ended by an error, so that nothing runs outside of it unnoticed.
    void RequireLiveTransaction() const;
    /// Throws when the batch at hand has had its time.
    void RequireTime();
    /// Takes an open transaction back, after an error under XACT_ABORT.
    void Abort();
    void NoteError(const host::Error& error);
    /// The translation of a SELECT, INSERT, UPDATE or DELETE.
    Plan BindPlan(const Statement& statement, const std::vector<Literal>& literals);
    void PreparePlan(Plan& plan);
    /// Prepares a plan that was kept without its statement. False where it holds no more, and every plan is forgotten.
    bool EnsurePrepared(Plan& plan);
    /// Runs a plan and tells of what it answers or of how much it wrote.
    void RunPlan(const Plan& plan, const std::vector<Literal>& literals, const BatchSink& sink);
    /// Runs a plan; `rows` receives what it answers, unless it is nullptr.
    void Answer(const Plan& plan, const std::vector<Literal>& literals, ResultSet* rows);
    /// What a look-up has answered before and would answer again; nullptr where only asking tells.
    const ResultSet* KnownAnswer(const Plan& plan, const std::vector<Literal>& literals);
    /// Whether another connection has written to the account since it was asked last.
    bool OthersHaveWritten();
    /// Opens a transaction in which nobody else writes to the account.
    void TakeRightToWrite();
    void NoteChanges(const Plan& plan);
    /// Runs a plan that writes row by row, as a whole or not at all; `answer` receives what its OUTPUT tells, unless it
    /// is nullptr.
    void RunRows(const Plan& plan, const std::vector<Literal>& literals, ResultSet* answer);
    /// Writes rows that are chosen, and tells of them; `told` receives what goes to the caller.
    void WriteRows(const RowPlan& rows, const RowPlan::Write& write, std::vector<std::vector<Cell>>& chosen,
                   const std::vector<Literal>& literals, ResultSet& told);
    /// Steps a bound plan to its end and hands each of its rows out.
    void StepEach(const Plan& plan, const std::function<void(sqlite3_stmt*)>& take);
    /// Steps a bound plan to its end; `rows` receives what it selects, unless it is nullptr.
    void Step(const Plan& plan, ResultSet* rows);
    /// The one value of a bound plan that selects one.
    Cell StepValue(const Plan& plan);
    [[noreturn]] void FailStep(const Plan& plan);
    void NoteIdentity(const Plan& plan);
    /// Completes the error of a duplicate key with the key's value. Throws it.
    [[noreturn]] void FailDuplicate(const DuplicateKey& duplicate, const Statement& statement,
                                    const std::vector<Literal>& literals);
    /// Forgets everything that definitions shaped.
    void ForgetPlans();
    /// Forgets what these tables shaped, by their keys, alone.
    void ForgetPlansOf(const std::vector<std::string>& tables);
    /// Stops a batch that has had its time.
    static int CheckTime(void* self);
    static int Authorize(void* self, int action, const char*, const char*, const char*, const char*);

    /// One for each file.
    std::array<GatheredLog, 2> logs_;
    std::array<KeptReadLock, 2> readLocks_;
    DatabaseHandle db_;
    ParserOptions options_;
    std::unique_ptr<Runtime> runtime_;
    std::unique_ptr<Catalog> catalog_;
    IdentityNumbers identities_;
    bool inMemory_;
    Durability durability_;
    bool grouped_;
    bool inSeries_ = false;
    /// When the open group began; nothing where none is open.
    std::optional<std::chrono::steady_clock::time_point> groupBegan_;
    /// Why a group of the series is gone.
    std::optional<host::Error> groupLost_;
    SessionState session_;
    ShapeScanner scanner_;
    PlanCache plans_;
    StatementGuess guess_;
    TableChanges changes_;
    /// What the statement being prepared touches, nullptr where nobody asks.
    TouchedTables* touched_ = nullptr;
    /// Tells whether others have written; made when it is first asked.
    StatementHandle dataVersion_;
    std::int64_t seenVersion_ = 0;
    /// Of the statement that `CachedPlan` was asked for last.
    const std::vector<Literal>* literals_ = nullptr;
    std::size_t translations_ = 0;
    std::chrono::milliseconds batchTime_;
    Clock clock_;
    /// How many rows had been changed when the disk last took the logs.
    std::int64_t changesFlushed_ = 0;
    /// What the batch at hand may take of it.
    TimeLimit limit_;
    /// When the batch at hand has had its time. It counts from the first check on: short batches look at no clock, and
    /// waiting for another process does not count.
    std::optional<std::chrono::steady_clock::time_point> deadline_;
    /// Whether a batch runs; nothing else is stopped.
    bool inBatch_ = false;
    /// Whether a transaction is open for the caller; one that SQLite itself ended stays so until it is rolled back.
    bool inTransaction_ = false;
    /// The open transaction's own name, empty without one.
    std::string transactionName_;
    /// Names of the open transaction's savepoints.
    std::vector<std::string> savepoints_;
    /// Whether the open transaction changed definitions.
    bool definitionsChanged_ = false;
    /// Whether SQLite was kept from compiling a statement anew because another connection changed definitions.
    bool definitionsMoved_ = false;
    /// Counts up whenever plans are forgotten.
    std::size_t generation_ = 1;
    /// How many texts run inside one another.
    int nesting_ = 0;
};

/// SQLite refused to run a plan, before it did anything: another connection changed definitions since it was made.
struct DefinitionsMoved {};
/// Throws the error of a statement whose definitions never stay.
[[noreturn]] void FailMoving();

} // namespace refhost::sql
