#include "refhost/sql/engine/CopyAccount.h"

#include "refhost/sql/engine/EmbeddedDatabase.h"
#include "refhost/sql/engine/Sqlite.h"
#include "refhost/sql/types/Errors.h"
#include "text/ConnectionString.h"

#include <filesystem>

namespace refhost::sql {
namespace {

namespace fs = std::filesystem;

DatabaseHandle Open(const fs::path& file, int flags) {
    sqlite3* raw = nullptr;
    const int code = sqlite3_open_v2(file.string().c_str(), &raw, flags, nullptr);
    DatabaseHandle db(raw);
    if (code != SQLITE_OK) {
        FailOwn(host::error_number::unspecified, "Cannot open database \"{}\": {}", file.string(),
                SqliteError(raw).description());
    }
    return db;
}

void CopyFile(const fs::path& from, const fs::path& to) {
    constexpr int busyMilliseconds = 30'000;
    const DatabaseHandle source = Open(from, SQLITE_OPEN_READWRITE);
    sqlite3_busy_timeout(source.get(), busyMilliseconds);
    const DatabaseHandle target = Open(to, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    Run(target.get(), "PRAGMA synchronous = OFF");
    sqlite3_backup* const backup = sqlite3_backup_init(target.get(), "main", source.get(), "main");
    if (backup == nullptr) {
        FailSqlite(target.get());
    }
    constexpr int allPages = -1;
    sqlite3_backup_step(backup, allPages);
    if (sqlite3_backup_finish(backup) != SQLITE_OK) {
        FailSqlite(target.get());
    }
}

} // namespace

std::string CopyAccount(const std::string& connectionString, const std::string& folder) {
    const fs::path file = FileOf(connectionString);
    const fs::path copy = fs::path(folder) / file.filename();
    CopyFile(file, copy);
    const fs::path system = file.parent_path() / "QxSystem.db";
    if (fs::exists(system)) {
        CopyFile(system, fs::path(folder) / system.filename());
    }
    return text::WithConnectionStringValue(connectionString, "Data Source", copy.string());
}

} // namespace refhost::sql
