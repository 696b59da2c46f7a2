#include "refhost/sql/engine/EmbeddedDatabase.h"

#include "refhost/sql/binding/Definer.h"
#include "refhost/sql/engine/BatchRunner.h"
#include "refhost/sql/engine/Storage.h"
#include "refhost/sql/functions/Functions.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"
#include "text/ConnectionString.h"

#include <algorithm>
#include <array>
#include <utility>

namespace refhost::sql {
namespace {

using host::error_number::unspecified;

/// Steps of SQLite's machine from one look at the clock to the next: some milliseconds.
constexpr int stepsPerCheck = 100'000;
/// How large a log grows before it is moved into the database. Each time takes two waits for the disk, and pages that
/// were written often meanwhile are moved once.
constexpr int bytesPerCheckpoint = 16'000'000;
/// How long writes of a group wait for each other.
constexpr std::chrono::milliseconds groupTime(20);
/// The database of this thread whose group is open. It holds the right to write, which another connection of the thread
/// would wait for in vain.
thread_local EmbeddedDatabase* groupOwner = nullptr;
constexpr std::string_view inMemory = ":memory:";

EmbeddedDatabase::Settings ReadSettings(const std::string& connectionString) {
    const auto value = [&](std::string_view key) { return text::ConnectionStringValue(connectionString, key); };
    EmbeddedDatabase::Settings settings;
    settings.file = value("Data Source").value_or("");
    if (settings.file.empty()) {
        FailOwn(unspecified, "The connection string names no Data Source.");
    }
    settings.deleteStar = EqualNames(value("Delete Star").value_or(""), "Accept");
    if (const std::optional<std::string> synchronous = value("Synchronous")) {
        if (!EqualNames(*synchronous, "Full") && !EqualNames(*synchronous, "Normal")) {
            FailOwn(unspecified, "The connection string's Synchronous is Full or Normal, not '{}'.", *synchronous);
        }
        settings.durability = EqualNames(*synchronous, "Full") ? Durability::full : Durability::normal;
    }
    if (const std::optional<std::string> commit = value("Commit")) {
        if (!EqualNames(*commit, "Each") && !EqualNames(*commit, "Grouped")) {
            FailOwn(unspecified, "The connection string's Commit is Each or Grouped, not '{}'.", *commit);
        }
        settings.grouped = EqualNames(*commit, "Grouped");
    }
    return settings;
}

std::size_t NameStart(const std::string& file) {
    const std::size_t slash = file.find_last_of("/\\");
    return slash == std::string::npos ? 0 : slash + 1;
}

/// The account database's name: that of its file without the ending.
std::string NameOfFile(const std::string& file) {
    if (file == inMemory) {
        return "account";
    }
    const std::string name = file.substr(NameStart(file));
    const std::size_t point = name.find_last_of('.');
    return point == 0 ? name : name.substr(0, point);
}

DatabaseHandle OpenFile(const EmbeddedDatabase::Settings& settings) {
    // Nobody asks how much memory SQLite has taken, and counting it costs a lock with every piece.
    static const int countsMemory = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    static_cast<void>(countsMemory);
    const bool create = settings.mode == Mode::create || settings.file == inMemory;
    sqlite3* raw = nullptr;
    // One thread at a time uses a connection, so SQLite needs no mutex of its own.
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (create ? SQLITE_OPEN_CREATE : 0);
    const int code = sqlite3_open_v2(settings.file.c_str(), &raw, flags, nullptr);
    DatabaseHandle db(raw);
    if (code != SQLITE_OK) {
        FailOwn(unspecified, "Cannot open database \"{}\": {}", settings.file, SqliteError(raw).description());
    }
    return db;
}

/// Resets a statement for the next run, whatever happened in this one.
class Reset {
public:
    Reset(sqlite3_stmt* statement, bool& stepping) : statement_(statement), stepping_(stepping) { stepping_ = true; }
    ~Reset() {
        stepping_ = false;
        sqlite3_reset(statement_);
    }
    Reset(const Reset&) = delete;
    Reset& operator=(const Reset&) = delete;

private:
    sqlite3_stmt* statement_;
    bool& stepping_;
};

/// A batch, as long as it runs.
class BatchTime {
public:
    BatchTime(bool& inBatch, std::optional<std::chrono::steady_clock::time_point>& deadline) : inBatch_(inBatch) {
        deadline.reset();
        inBatch_ = true;
    }
    ~BatchTime() { inBatch_ = false; }
    BatchTime(const BatchTime&) = delete;
    BatchTime& operator=(const BatchTime&) = delete;

private:
    bool& inBatch_;
};

host::Value ValueOf(const Cell& cell) {
    switch (cell.kind) {
    case Cell::Kind::null:
        return host::Null{};
    case Cell::Kind::integer:
        return cell.integer;
    case Cell::Kind::real:
        return cell.real;
    case Cell::Kind::text:
        return std::string(cell.Bytes());
    case Cell::Kind::blob:
        break;
    }
    return host::Bytes{{cell.Bytes().begin(), cell.Bytes().end()}};
}

} // namespace

void FailMoving() { FailOwn(unspecified, "Could not complete the statement because definitions keep changing."); }

std::string FileOf(const std::string& connectionString) { return ReadSettings(connectionString).file; }

std::string SystemFile(const std::string& file) {
    return file == inMemory ? file : file.substr(0, NameStart(file)) + "QxSystem.db";
}

std::unique_ptr<EmbeddedDatabase> OpenEmbedded(const std::string& connectionString, Mode mode) {
    EmbeddedDatabase::Settings settings = ReadSettings(connectionString);
    settings.mode = mode;
    return std::make_unique<EmbeddedDatabase>(settings);
}

EmbeddedDatabase::EmbeddedDatabase(const Settings& settings)
    : db_(OpenFile(settings)), options_{settings.deleteStar}, runtime_(std::make_unique<Runtime>(db_.get())),
      catalog_(std::make_unique<Catalog>(db_.get(), NameOfFile(settings.file))), identities_(db_.get()),
      inMemory_(settings.file == inMemory), durability_(settings.durability), grouped_(settings.grouped),
      batchTime_(settings.batchTime), clock_(settings.clock) {
    RegisterFunctions(db_.get(), *runtime_);
    sqlite3_extended_result_codes(db_.get(), 1);
    sqlite3_busy_timeout(db_.get(), busyMilliseconds);
    // "name" is always a name.
    sqlite3_db_config(db_.get(), SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(db_.get(), SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    // A plan does not depend on the values that it is run with.
    sqlite3_db_config(db_.get(), SQLITE_DBCONFIG_ENABLE_QPSG, 1, nullptr);
    // What is deleted is overwritten where its page is written anyway. A page that becomes free is not: every page of a
    // table that is dropped would be written once more, and be kept in memory for the sake of a savepoint.
    Run(db_.get(), "PRAGMA secure_delete = FAST");
    InitializeFile(db_.get(), Schema::account, settings.mode == Mode::create || settings.file == inMemory);
    SetDurability(Schema::account);
    SpareCalls(Schema::account);
    Attach(settings);
    UpgradeFile(db_.get(), *catalog_, Schema::account);
    Run(db_.get(), "PRAGMA temp_store = MEMORY");
    Catalog::CreateTables(db_.get(), Schema::temporary);
    Run(db_.get(), "PRAGMA foreign_keys = ON");
    // Ids of their own: the session tells tables apart by them.
    Run(db_.get(), "UPDATE temp.sqlite_sequence SET seq = 900000000");
    sqlite3_set_authorizer(db_.get(), Authorize, this);
    sqlite3_progress_handler(db_.get(), stepsPerCheck, CheckTime, this);
    changesFlushed_ = sqlite3_total_changes64(db_.get());
}

EmbeddedDatabase::~EmbeddedDatabase() {
    try {
        CommitGroup();
    } catch (...) {
        // Only `EndSeries` could have told.
    }
    plans_.Clear();
    dataVersion_.reset();
    runtime_->Forget();
    FlushLogs();
}

void EmbeddedDatabase::FlushLogs() noexcept {
    const std::int64_t changes = sqlite3_total_changes64(db_.get());
    if (durability_ == Durability::full || changes == changesFlushed_) {
        return;
    }
    changesFlushed_ = changes;
    for (const Schema schema : {Schema::account, Schema::system}) {
        sqlite3_file* log = nullptr;
        sqlite3_file_control(db_.get(), schema == Schema::account ? "main" : "QxSystem", SQLITE_FCNTL_JOURNAL_POINTER,
                             static_cast<void*>(&log));
        if (log != nullptr && log->pMethods != nullptr) {
            log->pMethods->xSync(log, SQLITE_SYNC_NORMAL);
        }
    }
}

void EmbeddedDatabase::Attach(const Settings& settings) {
    const std::string file = SystemFile(settings.file);
    try {
        Command(db_.get(), fmt::format("ATTACH ? AS {}", SqliteName(Schema::system))).Bind(file).Step();
    } catch (const host::Error&) {
        const bool missing = (sqlite3_errcode(db_.get()) & 0xff) == SQLITE_CANTOPEN;
        if (settings.mode == Mode::create || !missing) {
            throw;
        }
        return; // an account without a system database; naming one gives "Invalid object name"
    }
    catalog_->SetSystemAttached(true);
    InitializeFile(db_.get(), Schema::system, settings.mode == Mode::create || file == inMemory);
    SetDurability(Schema::system);
    SpareCalls(Schema::system);
    UpgradeFile(db_.get(), *catalog_, Schema::system);
}

void EmbeddedDatabase::SetDurability(Schema schema) {
    // With a write-ahead log a commit outlives its process either way.
    Run(db_.get(), fmt::format("PRAGMA {}.synchronous = {}", SqliteName(schema),
                               durability_ == Durability::full ? "FULL" : "NORMAL"));
}

void EmbeddedDatabase::SpareCalls(Schema schema) {
    const auto index = static_cast<std::size_t>(schema);
    const std::string name(SqliteName(schema));
    logs_.at(index).Attach(db_.get(), name);
    readLocks_.at(index).Attach(db_.get(), name);
    Command pageSize(db_.get(), fmt::format("PRAGMA {}.page_size", name));
    pageSize.Step();
    Run(db_.get(), fmt::format("PRAGMA {}.wal_autocheckpoint = {}", name, bytesPerCheckpoint / pageSize.Integer(0)));
}

void EmbeddedDatabase::BeginSeries() {
    changes_.ChangeAll();
    for (KeptReadLock& lock : readLocks_) {
        lock.Begin();
    }
    inSeries_ = true;
}

void EmbeddedDatabase::EndSeries() {
    for (KeptReadLock& lock : readLocks_) {
        lock.End();
    }
    inSeries_ = false;
    try {
        CommitGroup();
    } catch (...) {
        groupLost_.reset();
        throw;
    }
    FlushLogs();
}

void EmbeddedDatabase::OpenGroup(const Plan& plan) {
    if (grouped_ && inSeries_ && !inTransaction_ && !groupBegan_ && plan.kind != PlanKind::select) {
        TakeRightToWrite();
        groupBegan_ = clock_();
        groupOwner = this;
    }
}

void EmbeddedDatabase::CommitGroup() {
    if (groupLost_) {
        throw host::Error(*groupLost_);
    }
    if (!groupBegan_) {
        return;
    }
    try {
        runtime_->Commit();
    } catch (const host::Error& error) {
        LoseGroup(error);
        throw host::Error(*groupLost_);
    }
    identities_.Committed();
    groupBegan_.reset();
    groupOwner = nullptr;
}

void EmbeddedDatabase::SettleOthers() {
    if (groupOwner == nullptr || groupOwner == this) {
        return;
    }
    try {
        groupOwner->CommitGroup();
    } catch (const host::Error&) {
        // Its own next statement tells.
        return;
    }
}

void EmbeddedDatabase::LoseGroup(const host::Error& error) {
    groupBegan_.reset();
    groupOwner = nullptr;
    groupLost_.emplace(error.number(), "Rows that were written last are lost: " + error.description(), error.native());
    if (sqlite3_get_autocommit(db_.get()) == 0) {
        sqlite3_exec(db_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
    changes_.ChangeAll();
    identities_.RolledBack();
}

int EmbeddedDatabase::CheckTime(void* self) {
    auto* database = static_cast<EmbeddedDatabase*>(self);
    if (!database->inBatch_ || !database->limit_) {
        return 0;
    }
    const auto now = database->clock_();
    if (!database->deadline_) {
        database->deadline_ = now + *database->limit_;
    }
    return now > *database->deadline_ ? 1 : 0;
}

int EmbeddedDatabase::Authorize(void* self, int action, const char* first, const char* second, const char* schema,
                                const char* /*trigger*/) {
    auto* database = static_cast<EmbeddedDatabase*>(self);
    if (!database->runtime_->stepping) {
        if (database->touched_ != nullptr) {
            database->touched_->Note(action, first, second, schema);
        }
        return SQLITE_OK;
    }
    // SQLite compiles a statement anew while it runs only when its tables changed under it. The translation may then
    // be wrong as well, so it is made anew instead.
    database->definitionsMoved_ = true;
    return SQLITE_DENY;
}

ResultSet EmbeddedDatabase::Query(std::string_view sql) {
    ResultSet first;
    Batch(sql, &first);
    return first;
}

void EmbeddedDatabase::Execute(std::string_view sql) { Batch(sql, nullptr); }

void EmbeddedDatabase::Batch(std::string_view sql, ResultSet* first) {
    SettleOthers();
    if (groupLost_ || (groupBegan_ && clock_() - *groupBegan_ > groupTime)) {
        CommitGroup();
    }
    try {
        RunStatement(sql, first);
    } catch (const host::Error& error) {
        changes_.ChangeAll();
        // Most errors undo their statement; some, a full disk for one, everything that is not committed.
        if (groupBegan_ && sqlite3_get_autocommit(db_.get()) != 0) {
            LoseGroup(error);
        }
        throw;
    }
}

void EmbeddedDatabase::RunStatement(std::string_view sql, ResultSet* first) {
    constexpr int attempts = 5;
    limit_ = batchTime_;
    const BatchTime time(inBatch_, deadline_);
    for (int attempt = 1; attempt <= attempts; ++attempt) {
        const Plan* plan = CachedPlan(sql);
        if (plan == nullptr) {
            CommitGroup();
            return RunSingle(sql, first);
        }
        RequireLiveTransaction();
        OpenGroup(*plan);
        try {
            return Answer(*plan, *literals_, first);
        } catch (const DuplicateKey& duplicate) {
            Parser parser(sql, options_);
            const std::optional<Statement> statement = parser.ParseBatch();
            FailDuplicate(duplicate, *statement, parser.Literals());
        } catch (const DefinitionsMoved&) {
            ForgetPlans();
            if (first != nullptr) {
                *first = {};
            }
        }
    }
    FailMoving();
}

void EmbeddedDatabase::RunSingle(std::string_view sql, ResultSet* first) {
    Parser parser(sql, options_);
    const std::optional<Statement> statement = parser.ParseBatch();
    if (!statement) {
        return;
    }
    // An IF may go on behind an error; its first one is the batch's.
    std::optional<host::Error> failure;
    const BatchSink keepFirst = [&](BatchAnswer&& answer) {
        if (const auto* error = std::get_if<host::Error>(&answer)) {
            failure = failure ? failure : *error;
        } else if (auto* rows = std::get_if<ResultSet>(&answer);
                   rows != nullptr && first != nullptr && !first->fields) {
            *first = std::move(*rows);
        }
    };
    BatchRunner(*this, parser, keepFirst).Run(*statement);
    if (failure) {
        throw host::Error(*failure);
    }
}

void EmbeddedDatabase::RunBatch(std::string_view sql, TimeLimit limit, const BatchSink& sink) {
    SettleOthers();
    CommitGroup();
    limit_ = limit;
    const BatchTime time(inBatch_, deadline_);
    Parser parser(sql, options_);
    Statements statements;
    try {
        statements = parser.ParseScript();
    } catch (const host::Error& error) {
        NoteError(error);
        return sink(error);
    }
    BatchRunner(*this, parser, sink).Run(statements);
}

/// The plan of a SELECT, INSERT, UPDATE or DELETE that stands alone; nullptr for everything else, which is rare.
const Plan* EmbeddedDatabase::CachedPlan(std::string_view sql) {
    if (const Plan* plan = guess_.Guess(sql)) {
        literals_ = &guess_.Literals();
        return plan;
    }
    literals_ = &scanner_.Literals();
    if (!scanner_.Scan(sql)) {
        return nullptr;
    }
    if (Plan* plan = plans_.Find(scanner_.Shape(), scanner_.Literals()); plan != nullptr && EnsurePrepared(*plan)) {
        guess_.Learn(*plan, sql, scanner_.Literals());
        return plan;
    }
    Parser parser(sql, options_);
    const std::optional<Statement> statement = parser.ParseBatch();
    const Select* select = statement ? statement->Query() : nullptr;
    const bool manipulates =
        statement && (select != nullptr || statement->As<Insert>() != nullptr || statement->As<Update>() != nullptr ||
                      statement->As<Delete>() != nullptr || statement->As<Merge>() != nullptr);
    if (!manipulates || (select != nullptr && select->into)) {
        return nullptr;
    }
    NamedTables named;
    Plan plan = [&] {
        const Catalog::NotingNames noting(*catalog_, named);
        return BindPlan(*statement, parser.Literals());
    }();
    plan.named = std::move(named);
    PreparePlan(plan);
    guess_.Clear();
    return plans_.Add(scanner_.Shape(), scanner_.Literals(), std::move(plan));
}

bool EmbeddedDatabase::EnsurePrepared(Plan& plan) {
    if (plan.statement || plan.rows) {
        return true;
    }
    try {
        PreparePlan(plan);
        return true;
    } catch (const host::Error&) {
        // Another connection changed what the plan names. Translated anew, the statement tells.
        ForgetPlans();
        return false;
    }
}

Plan EmbeddedDatabase::BindPlan(const Statement& statement, const std::vector<Literal>& literals) {
    ++translations_;
    Binder binder(*catalog_, session_, literals, LiteralUse::parameters);
    if (const Select* select = statement.Query()) {
        return binder.BindSelectPlan(*select);
    }
    if (const auto* insert = statement.As<Insert>()) {
        return binder.BindInsert(*insert);
    }
    if (const auto* update = statement.As<Update>()) {
        return binder.BindUpdate(*update);
    }
    if (const auto* merge = statement.As<Merge>()) {
        return binder.BindMerge(*merge);
    }
    return binder.BindDelete(*statement.As<Delete>());
}

void EmbeddedDatabase::PreparePlan(Plan& plan) {
    if (plan.rows) {
        return PrepareRows(*plan.rows, db_.get());
    }
    TouchedTables touched;
    touched_ = &touched;
    try {
        PrepareStatement(plan, db_.get());
    } catch (...) {
        touched_ = nullptr;
        throw;
    }
    touched_ = nullptr;
    const bool ofVariables =
        std::ranges::any_of(plan.slots, [](const Slot& slot) { return slot.variable.has_value(); });
    plan.changes.clear();
    if (!touched.complete) {
        return;
    }
    if (plan.kind == PlanKind::select && touched.answersFromTables && !ofVariables) {
        plan.answers = std::make_shared<RepeatedAnswers>(changes_, touched.read);
    } else if (plan.kind == PlanKind::insert) {
        for (const std::string& table : touched.inserted) {
            plan.changes.push_back(&changes_.Of(table));
        }
    }
}

void EmbeddedDatabase::RunDefinition(const Statement& statement, const std::vector<Literal>& literals) {
    Definer definer(db_.get(), *catalog_, session_, literals);
    definitionsChanged_ = true;
    try {
        const std::optional<std::vector<std::string>> tables = TablesAlone(statement);
        if (const auto* table = statement.As<CreateTable>()) {
            definer.Create(*table);
        } else if (const auto* view = statement.As<CreateView>()) {
            definer.Create(*view);
        } else if (const auto* index = statement.As<CreateIndex>()) {
            definer.Create(*index);
        } else if (const auto* dropped = statement.As<Drop>()) {
            definer.Drop(*dropped);
        } else if (const auto* altered = statement.As<AlterTable>()) {
            definer.Alter(*altered);
        } else if (const auto* truncated = statement.As<Truncate>()) {
            definer.Truncate(*truncated);
        }
        return tables ? ForgetPlansOf(*tables) : ForgetPlans();
    } catch (...) {
        ForgetPlans();
        if (const std::optional<host::Error> error = runtime_->TakeError()) {
            throw host::Error(*error);
        }
        throw;
    }
}

std::optional<std::vector<std::string>> EmbeddedDatabase::TablesAlone(const Statement& statement) try {
    if (const auto* created = statement.As<CreateTable>()) {
        // A foreign key shapes how rows of the other table are written.
        const bool refersToAnother = std::ranges::any_of(created->constraints, [](const Constraint& constraint) {
            return constraint.kind == ConstraintKind::foreignKey;
        });
        return refersToAnother ? std::nullopt : std::optional(std::vector{catalog_->KeyOf(created->table)});
    }
    const auto* dropped = statement.As<Drop>();
    if (dropped == nullptr || dropped->kind != ObjectKind::table) {
        return std::nullopt;
    }
    std::vector<std::string> keys;
    for (const Name& name : dropped->names) {
        const std::shared_ptr<const Table> table = catalog_->Find(name);
        if (!table || !catalog_->Constraints(table->schema, "F ", table->id).empty()) {
            return std::nullopt;
        }
        keys.push_back(catalog_->KeyOf(name));
    }
    return keys;
} catch (const host::Error&) {
    return std::nullopt; // whoever follows the name refuses it
}

void EmbeddedDatabase::RunSelectInto(const Select& select, const std::vector<Literal>& literals,
                                     const BatchSink& sink) {
    Definer definer(db_.get(), *catalog_, session_, literals);
    definitionsChanged_ = true;
    {
        Binder binder(*catalog_, session_, literals, LiteralUse::parameters);
        definer.CreateFor(*select.into, binder.BindSelect(select).columns);
    }
    ForgetPlans();
    Binder binder(*catalog_, session_, literals, LiteralUse::parameters);
    Plan plan = binder.BindSelectInto(select, catalog_->Get(*select.into));
    PreparePlan(plan);
    RunPlan(plan, literals, sink);
}

void EmbeddedDatabase::RunSetOption(const SetOption& option) {
    switch (option.option) {
    case Option::identityInsert: {
        const std::shared_ptr<const Table> table = catalog_->Get(*option.table);
        if (table->Identity() < 0) {
            Fail(8106, "Table '{}' does not have the identity property. Cannot perform SET operation.", table->name);
        }
        session_.identityInsert = option.on ? table->id : 0;
        return ForgetPlans();
    }
    case Option::noCount:
        session_.noCount = option.on;
        return;
    case Option::xactAbort:
        session_.xactAbort = option.on;
        return;
    case Option::dateFormat: {
        static constexpr std::array<std::pair<std::string_view, int>, 6> styles{{{"mdy", 101},
                                                                                 {"dmy", 103},
                                                                                 {"ymd", 0},
                                                                                 {"ydm", yearDayMonthStyle},
                                                                                 {"myd", monthYearDayStyle},
                                                                                 {"dym", dayYearMonthStyle}}};
        const auto* const found =
            std::ranges::find_if(styles, [&](const auto& style) { return EqualNames(style.first, option.order); });
        if (found == styles.end()) {
            Fail(2741, "SET DATEFORMAT date order '{}' is invalid.", option.order);
        }
        session_.dateStyle = found->second;
        return ForgetPlans();
    }
    case Option::other:
        return;
    }
}

std::string EmbeddedDatabase::RunUse(const Use& use) {
    catalog_->Use(use.database);
    ForgetPlans();
    return catalog_->DatabaseOf(catalog_->Current());
}

void EmbeddedDatabase::RunTransaction(const Transaction& transaction) {
    switch (transaction.verb) {
    case TransactionVerb::begin:
        if (inTransaction_) {
            RequireLiveTransaction();
            ++runtime_->tranCount;
            return;
        }
        BeginTrans();
        transactionName_ = transaction.name;
        return;
    case TransactionVerb::commit:
        if (!inTransaction_) {
            Fail(3902, "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION.");
        }
        if (runtime_->tranCount > 1) {
            --runtime_->tranCount;
            return;
        }
        CommitTrans();
        return;
    case TransactionVerb::rollback:
        if (!inTransaction_) {
            Fail(3903, "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION.");
        }
        if (transaction.name.empty() || EqualNames(transaction.name, transactionName_)) {
            return RollbackTrans();
        }
        return RollbackTo(transaction.name);
    case TransactionVerb::save:
        if (!inTransaction_) {
            Fail(628, "Cannot issue SAVE TRANSACTION when there is no active transaction.");
        }
        return Save(transaction.name);
    }
}

void EmbeddedDatabase::Save(const std::string& savepoint) {
    RequireLiveTransaction();
    // What was written before goes to the log at once: a page that went there later would be kept in memory until the
    // transaction ends, for the savepoint's sake.
    sqlite3_db_cacheflush(db_.get());
    Run(db_.get(), "SAVEPOINT " + Quoted(savepoint));
    savepoints_.push_back(savepoint);
}

void EmbeddedDatabase::RollbackTo(const std::string& savepoint) {
    RequireLiveTransaction();
    const auto found = std::find(savepoints_.rbegin(), savepoints_.rend(), savepoint);
    if (found == savepoints_.rend()) {
        Fail(6401, "Cannot roll back {}. No transaction or savepoint of that name was found.", savepoint);
    }
    Run(db_.get(), "ROLLBACK TO " + Quoted(savepoint));
    changes_.ChangeAll();
    savepoints_.erase(found.base(), savepoints_.end()); // later ones are gone
    if (definitionsChanged_) {
        ForgetPlans();
    }
    identities_.Restore();
}

void EmbeddedDatabase::RunPlan(const Plan& plan, const std::vector<Literal>& literals, const BatchSink& sink) {
    const bool tells = sink && plan.assigned.empty();
    ResultSet rows;
    Answer(plan, literals, tells ? &rows : nullptr);
    if (rows.fields) {
        sink(std::move(rows));
    } else if (tells && !session_.noCount) {
        sink(RowsWritten{runtime_->rowCount});
    }
}

void EmbeddedDatabase::Answer(const Plan& plan, const std::vector<Literal>& literals, ResultSet* rows) {
    NoteChanges(plan);
    if (plan.rows) {
        return RunRows(plan, literals, rows);
    }
    const bool remembers = rows != nullptr && inSeries_ && plan.answers;
    if (const ResultSet* known = remembers ? KnownAnswer(plan, literals) : nullptr) {
        runtime_->rowCount = static_cast<std::int64_t>(known->rowCount);
        *rows = *known;
        return;
    }
    BindParameters(plan, literals, session_.variables);
    Step(plan, rows);
    if (remembers) {
        plan.answers->Note(literals, *rows);
    }
}

const ResultSet* EmbeddedDatabase::KnownAnswer(const Plan& plan, const std::vector<Literal>& literals) {
    const ResultSet* known = plan.answers->Find(literals);
    if (known != nullptr && OthersHaveWritten()) {
        changes_.ChangeAll();
        return nullptr;
    }
    return known;
}

bool EmbeddedDatabase::OthersHaveWritten() {
    // In memory there is nobody else, and a transaction has taken the right to write.
    if (inMemory_ || sqlite3_get_autocommit(db_.get()) == 0) {
        return false;
    }
    if (!dataVersion_) {
        dataVersion_ = Prepare(db_.get(), "PRAGMA main.data_version");
    }
    const bool told = sqlite3_step(dataVersion_.get()) == SQLITE_ROW;
    const std::int64_t version = told ? sqlite3_column_int64(dataVersion_.get(), 0) : 0;
    sqlite3_reset(dataVersion_.get());
    return !told || std::exchange(seenVersion_, version) != version;
}

void EmbeddedDatabase::TakeRightToWrite() {
    runtime_->BeginWriting(Schema::account);
    if (!inMemory_) {
        changes_.ChangeAll(); // others may have written just before
    }
}

void EmbeddedDatabase::NoteChanges(const Plan& plan) {
    if (plan.kind == PlanKind::select) {
        return;
    }
    if (plan.changes.empty()) {
        return changes_.ChangeAll();
    }
    for (std::uint64_t* count : plan.changes) {
        ++*count;
    }
}

Cell EmbeddedDatabase::StepValue(const Plan& plan) {
    const Reset reset(plan.statement.get(), runtime_->stepping);
    if (sqlite3_step(plan.statement.get()) != SQLITE_ROW) {
        FailStep(plan);
    }
    return Copied(ReadCell(plan.statement.get(), 0));
}

void EmbeddedDatabase::StepEach(const Plan& plan, const std::function<void(sqlite3_stmt*)>& take) {
    sqlite3_stmt* statement = plan.statement.get();
    const Reset reset(statement, runtime_->stepping);
    int code = 0;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
        take(statement);
    }
    if (code != SQLITE_DONE) {
        FailStep(plan);
    }
}

void EmbeddedDatabase::Step(const Plan& plan, ResultSet* rows) {
    sqlite3_stmt* statement = plan.statement.get();
    const Reset reset(statement, runtime_->stepping);
    const bool read = rows != nullptr && plan.fields && plan.assigned.empty();
    if (read) {
        rows->fields = plan.fields;
    }
    std::int64_t count = 0;
    const bool numbered = plan.kind == PlanKind::insert && plan.target->Identity() >= 0;
    if (numbered) {
        identities_.Expect();
    }
    int code = 0;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
        ++count;
        int assigned = 0;
        for (const std::size_t variable : plan.assigned) {
            session_.variables->Set(variable, ReadCell(statement, assigned++));
        }
        if (!read) {
            continue;
        }
        if (++rows->rowCount == 1) {
            rows->cells.Expect(plan.types.size());
        }
        int column = 0;
        for (const Type& type : plan.types) {
            rows->cells.Add(ReadValue(statement, column++, type));
        }
    }
    if (code != SQLITE_DONE) {
        FailStep(plan);
    }
    runtime_->rowCount = plan.kind == PlanKind::select ? count : sqlite3_changes64(db_.get());
    if (plan.kind == PlanKind::insert) {
        NoteIdentity(plan);
    }
}

void EmbeddedDatabase::NoteIdentity(const Plan& plan) {
    if (plan.target->Identity() < 0) {
        runtime_->identity.reset();
    } else if (sqlite3_changes(db_.get()) > 0) {
        runtime_->stepping = false; // the insert has run, and a statement of its own may be compiled
        runtime_->identity = identities_.Given(*plan.target, session_.identityInsert == plan.target->id);
    }
}

void EmbeddedDatabase::FailStep(const Plan& plan) {
    if (std::exchange(definitionsMoved_, false)) {
        runtime_->TakeError();
        throw DefinitionsMoved();
    }
    if (std::optional<host::Error> error = runtime_->TakeError()) {
        throw host::Error(*error);
    }
    runtime_->stepping = false;
    const int code = sqlite3_extended_errcode(db_.get());
    const std::string message = sqlite3_errmsg(db_.get());
    if (plan.kind == PlanKind::insert && plan.target->Identity() >= 0 && (code & 0xff) == SQLITE_CONSTRAINT &&
        session_.identityInsert != plan.target->id) {
        sqlite3_reset(plan.statement.get());
        identities_.Lost(*plan.target);
    }
    ThrowStepError(plan, code, message, *catalog_, db_.get());
}

void EmbeddedDatabase::FailDuplicate(const DuplicateKey& duplicate, const Statement& statement,
                                     const std::vector<Literal>& literals) {
    Binder binder(*catalog_, session_, literals, LiteralUse::inlined);
    const DuplicateQueries queries =
        binder.BindDuplicates(statement.As<Insert>(), statement.As<Update>(), duplicate.table, duplicate.columns);
    throw WithKey(duplicate, KeyText(queries, db_.get()));
}

void EmbeddedDatabase::ForgetPlans() {
    plans_.Clear();
    ForgetPlansOf({});
}

void EmbeddedDatabase::ForgetPlansOf(const std::vector<std::string>& tables) {
    ++generation_;
    guess_.Clear();
    plans_.Forget(tables);
    catalog_->Forget();
}

void EmbeddedDatabase::RequireLiveTransaction() const {
    // A full disk, for one, makes SQLite roll back.
    if (inTransaction_ && sqlite3_get_autocommit(db_.get()) != 0) {
        Fail(3930, "The current transaction cannot be committed and cannot support operations that write to the "
                   "log file. Roll back the transaction.");
    }
}

void EmbeddedDatabase::RequireTime() {
    if (CheckTime(this) != 0) {
        FailOwn(timeExpired, "Query timeout expired");
    }
}

void EmbeddedDatabase::Abort() {
    if (inTransaction_) {
        RollbackTrans();
    }
}

void EmbeddedDatabase::NoteError(const host::Error& error) {
    changes_.ChangeAll();
    runtime_->lastError = error.native();
    runtime_->rowCount = 0;
}

void EmbeddedDatabase::BeginTrans() {
    if (inTransaction_) {
        FailOwn(transactionOpen, "Cannot start more transactions on this session.");
    }
    SettleOthers();
    CommitGroup();
    TakeRightToWrite();
    inTransaction_ = true;
    runtime_->tranCount = 1;
    transactionName_.clear();
    savepoints_.clear();
    definitionsChanged_ = false;
}

void EmbeddedDatabase::CommitTrans() {
    if (!inTransaction_) {
        FailOwn(noTransaction, "No transaction is active.");
    }
    RequireLiveTransaction();
    runtime_->Commit();
    identities_.Committed();
    inTransaction_ = false;
    runtime_->tranCount = 0;
}

void EmbeddedDatabase::RollbackTrans() {
    if (!inTransaction_) {
        FailOwn(noTransaction, "No transaction is active.");
    }
    if (sqlite3_get_autocommit(db_.get()) == 0) {
        Run(db_.get(), "ROLLBACK");
    }
    changes_.ChangeAll();
    inTransaction_ = false;
    runtime_->tranCount = 0;
    if (std::exchange(definitionsChanged_, false)) {
        ForgetPlans();
    }
    identities_.RolledBack();
}

Translation EmbeddedDatabase::Translate(std::string_view sql) {
    const Plan* plan = CachedPlan(sql);
    if (plan == nullptr) {
        FailOwn(unspecified, "Only SELECT, INSERT, UPDATE and DELETE have a translation.");
    }
    Translation translation;
    translation.text = plan->text;
    for (const Slot& slot : plan->slots) {
        translation.parameters.push_back(ValueOf(Evaluate((*literals_)[slot.literal], slot)));
    }
    return translation;
}

} // namespace refhost::sql
