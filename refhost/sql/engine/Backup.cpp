#include "refhost/sql/engine/Backup.h"

#include "os/Files.h"
#include "refhost/sql/engine/Storage.h"
#include "refhost/sql/types/Errors.h"
#include "text/ConnectionString.h"

#include <filesystem>
#include <system_error>

namespace refhost::sql {
namespace {

namespace fs = std::filesystem;
using host::error_number::unspecified;
using os::PathOf;

struct FinishBackup {
    void operator()(sqlite3_backup* backup) const { sqlite3_backup_finish(backup); }
};

/// Opens a file without what work on it needs.
DatabaseHandle OpenRaw(const std::string& file, int more = 0) {
    sqlite3* raw = nullptr;
    const int code = sqlite3_open_v2(file.c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | more, nullptr);
    DatabaseHandle db(raw);
    if (code != SQLITE_OK) {
        FailOwn(unspecified, "Cannot open database \"{}\": {}", file, SqliteError(raw).description());
    }
    sqlite3_busy_timeout(raw, busyMilliseconds);
    return db;
}

DatabaseHandle OpenExisting(const std::string& file) {
    DatabaseHandle db = OpenRaw(file);
    InitializeFile(db.get(), Schema::account, false);
    return db;
}

/// Copies a whole database in one step, so that writers do not make it begin again.
void CopyDatabase(sqlite3* from, sqlite3* to) {
    const std::unique_ptr<sqlite3_backup, FinishBackup> backup(sqlite3_backup_init(to, "main", from, "main"));
    if (!backup) {
        FailSqlite(to);
    }
    const int code = sqlite3_backup_step(backup.get(), -1);
    if (code == SQLITE_DONE) {
        return;
    }
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED) {
        Fail(1222, "Lock request time out period exceeded.");
    }
    FailOwn(unspecified, "The database could not be copied: {}.", sqlite3_errstr(code));
}

/// A copy of a database in a file that is taken away again unless it is kept.
class PartialCopy {
public:
    /// @param durability whether a power failure may take the copy
    PartialCopy(sqlite3* from, const std::string& target, Durability durability)
        : target_(target), name_(target + ".part") {
        Discard();
        const DatabaseHandle copy = OpenRaw(name_, SQLITE_OPEN_CREATE);
        Run(copy.get(), durability == Durability::full ? "PRAGMA synchronous = FULL" : "PRAGMA synchronous = OFF");
        CopyDatabase(from, copy.get());
    }
    ~PartialCopy() { Discard(); }
    PartialCopy(const PartialCopy&) = delete;
    PartialCopy& operator=(const PartialCopy&) = delete;

    const std::string& Name() const { return name_; }

    void Keep() const {
        std::error_code error;
        fs::rename(PathOf(name_), PathOf(target_), error);
        if (error) {
            FailOwn(unspecified, "The file \"{}\" cannot be written: {}.", target_, error.message());
        }
    }

private:
    void Discard() const {
        std::error_code ignored;
        for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
            fs::remove(PathOf(name_ + suffix), ignored);
        }
    }

    std::string target_;
    std::string name_;
};

std::int64_t PageSize(sqlite3* db) {
    Command size(db, "PRAGMA main.page_size");
    size.Step();
    return size.Integer(0);
}

/// Rewrites a database in pages of a size. SQLite copies into a database with a log only what has pages as large as its
/// own, and files of earlier programs have larger ones.
void GivePages(sqlite3* db, std::int64_t size) {
    if (PageSize(db) != size) {
        Run(db, "PRAGMA main.journal_mode = DELETE");
        Run(db, fmt::format("PRAGMA main.page_size = {}", size));
        Run(db, "VACUUM main");
    }
}

std::string FileFor(Schema schema, const std::string& connectionString) {
    const std::string file = FileOf(connectionString);
    return schema == Schema::system ? SystemFile(file) : file;
}

void BackUpFile(const std::string& from, const std::string& to, Durability durability) {
    if (fs::exists(PathOf(to))) {
        FailOwn(unspecified, "The file \"{}\" exists already. Name another, or take it away.", to);
    }
    PartialCopy(OpenExisting(from).get(), to, durability).Keep();
}

std::int64_t FormatOf(const std::string& file) { return FileFormat(OpenExisting(file).get(), Schema::account); }

} // namespace

void BackUp(const std::string& connectionString, Schema schema, const std::string& file) {
    BackUpFile(FileFor(schema, connectionString), file, Durability::full);
}

std::string CopyAccount(const std::string& connectionString, const std::string& folder) {
    const std::string account = FileOf(connectionString);
    const std::string copy = os::NameOf(PathOf(folder) / PathOf(account).filename());
    BackUpFile(account, copy, Durability::normal);
    if (fs::exists(PathOf(SystemFile(account)))) {
        BackUpFile(SystemFile(account), SystemFile(copy), Durability::normal);
    }
    return text::WithConnectionStringValue(connectionString, "Data Source", copy);
}

void Restore(const std::string& connectionString, Schema schema, const std::string& file,
             std::chrono::milliseconds wait) {
    const std::string target = FileFor(schema, connectionString);
    const PartialCopy content(OpenExisting(file).get(), target, Durability::full);
    // Nobody is to meet an older format.
    std::unique_ptr<EmbeddedDatabase> upgraded =
        OpenEmbedded(text::WithConnectionStringValue(connectionString, "Data Source", content.Name()), Mode::open);
    if (!fs::exists(PathOf(target))) {
        upgraded.reset();
        return content.Keep();
    }
    const DatabaseHandle db = OpenExisting(target);
    GivePages(upgraded->Handle(), PageSize(db.get()));
    upgraded.reset();
    sqlite3_busy_timeout(db.get(), static_cast<int>(wait.count()));
    CopyDatabase(OpenRaw(content.Name()).get(), db.get());
}

std::vector<std::string> CheckFiles(const std::string& connectionString) {
    std::vector<std::string> faults;
    try {
        const std::unique_ptr<EmbeddedDatabase> database = OpenEmbedded(connectionString, Mode::open);
        Command schemas(database->Handle(),
                        "SELECT name, file FROM pragma_database_list WHERE name <> 'temp' ORDER BY seq");
        while (schemas.Step()) {
            Command check(database->Handle(), fmt::format("PRAGMA {}.integrity_check", Quoted(schemas.Text(0))));
            while (check.Step()) {
                if (check.Text(0) != "ok") {
                    faults.push_back(fmt::format("{}: {}", schemas.Text(1), check.Text(0)));
                }
            }
        }
    } catch (const host::Error& error) {
        // Damage may keep the files from being opened at all.
        if (error.native() != damagedFile) {
            throw;
        }
        faults.push_back(fmt::format("{}: {}", FileOf(connectionString), error.description()));
    }
    return faults;
}

std::vector<FormatChange> UpgradeFiles(const std::string& connectionString) {
    std::vector<FormatChange> changes;
    for (const Schema schema : {Schema::account, Schema::system}) {
        const std::string file = FileFor(schema, connectionString);
        if (schema == Schema::account || fs::exists(PathOf(file))) {
            changes.push_back({file, FormatOf(file), 0});
        }
    }
    OpenEmbedded(connectionString, Mode::open);
    for (FormatChange& change : changes) {
        change.now = FormatOf(change.file);
    }
    return changes;
}

} // namespace refhost::sql
