#include "refhost/sql/engine/Storage.h"

#include "refhost/sql/binding/Definer.h"
#include "refhost/sql/store/IdentityLine.h"
#include "refhost/sql/types/Errors.h"

#include <utility>

namespace refhost::sql {
namespace {

using host::error_number::unspecified;

/// Marks SQLite files as account databases ("Kvra").
constexpr std::int64_t applicationId = 0x4B767261;

/// Bytes of a page of new files, the unit in which a commit writes: a row and its places in the indexes touch some five
/// pages, and with 1 KB each they take a third of the time that SQLite's 4 KB take (`scripts/bench`).
constexpr int pageSize = 1024;

std::int64_t Pragma(sqlite3* db, Schema schema, std::string_view text) {
    Command command(db, fmt::format("PRAGMA {}.{}", SqliteName(schema), text));
    return command.Step() ? command.Integer(0) : 0;
}

std::string FileName(sqlite3* db, Schema schema) {
    const char* name = sqlite3_db_filename(db, std::string(SqliteName(schema)).c_str());
    return name == nullptr ? std::string() : std::string(name);
}

/// The names that a query of one column gives.
std::vector<std::string> Names(sqlite3* db, const std::string& query) {
    Command command(db, query);
    std::vector<std::string> names;
    while (command.Step()) {
        names.push_back(command.Text(0));
    }
    return names;
}

/// A file's way from one format to the next, inside one transaction.
class Upgrade {
public:
    Upgrade(sqlite3* db, Catalog& catalog, Schema schema) : db_(db), catalog_(catalog), schema_(schema) {}

    /// What the order of texts shapes: made anew once, whatever the format was.
    void FollowOrder(std::string_view nowAlike) {
        RebuildIndexes(nowAlike);
        RebuildViews();
    }

    void FromFormat0() {
        Run(db_, fmt::format("ALTER TABLE {}.\"sys:columns\" ADD COLUMN seed INTEGER NOT NULL DEFAULT 1", In()));
        Run(db_, fmt::format("ALTER TABLE {}.\"sys:columns\" ADD COLUMN step INTEGER NOT NULL DEFAULT 1", In()));
        EndIdentities();
    }

    void FromFormat1() {
        Run(db_, fmt::format("ALTER TABLE {}.\"sys:columns\" ADD COLUMN computed_text TEXT NOT NULL DEFAULT ''", In()));
        Run(db_, fmt::format("ALTER TABLE {}.\"sys:columns\" ADD COLUMN persisted INTEGER NOT NULL DEFAULT 0", In()));
    }

private:
    std::string_view In() const { return SqliteName(schema_); }

    /// What is stored in an index follows the order of texts.
    void RebuildIndexes(std::string_view nowAlike) {
        for (const std::string& index :
             Names(db_, fmt::format("SELECT name FROM {}.sqlite_schema WHERE type = 'index'", In()))) {
            try {
                Run(db_, fmt::format("REINDEX {}.{}", In(), Quoted(index)));
            } catch (const host::Error&) {
                if ((sqlite3_extended_errcode(db_) & 0xff) != SQLITE_CONSTRAINT) {
                    throw;
                }
                const std::size_t bar = index.find('|');
                FailOwn(
                    unspecified,
                    "The account database \"{}\" cannot be brought up to date: two rows of table '{}' have the same "
                    "key '{}' now that {} are alike. Change one of them with the program "
                    "that wrote the file.",
                    FileName(db_, schema_), index.substr(0, bar),
                    bar == std::string::npos ? std::string() : index.substr(bar + 1), nowAlike);
            }
        }
    }

    /// Writes the end of their types into the tables that have identity columns.
    void EndIdentities() {
        struct Identity {
            std::string table;
            Column column;
        };
        std::vector<Identity> identities;
        {
            Command find(db_, fmt::format("SELECT o.name, c.name, c.type FROM {0}.\"sys:columns\" c JOIN "
                                          "{0}.\"sys:objects\" o ON o.id = c.id WHERE c.is_identity AND o.xtype = 'U '",
                                          In()));
            while (find.Step()) {
                Column column;
                column.name = find.Text(1);
                column.type = Unpack(find.Integer(2));
                identities.push_back({find.Text(0), std::move(column)});
            }
        }
        Run(db_, "PRAGMA writable_schema = ON");
        for (const Identity& identity : identities) {
            Command(db_, fmt::format("UPDATE {}.sqlite_schema SET sql = replace(sql, ?, ?) WHERE type = 'table' AND "
                                     "name = ?",
                                     In()))
                .Bind(EndlessIdentityLine(identity.column))
                .Bind(IdentityLine(identity.column))
                .Bind(identity.table)
                .Step();
        }
        Pragma(db_, schema_, fmt::format("schema_version = {}", Pragma(db_, schema_, "schema_version") + 1));
        Run(db_, "PRAGMA writable_schema = RESET");
    }

    void RebuildViews() {
        const SessionState session;
        const std::vector<Literal> none;
        Definer(db_, catalog_, session, none).RebuildViews(schema_);
    }

    sqlite3* db_;
    Catalog& catalog_;
    Schema schema_;
};

} // namespace

std::int64_t FileFormat(sqlite3* db, Schema schema) { return Pragma(db, schema, "user_version"); }

void InitializeFile(sqlite3* db, Schema schema, bool mayCreate) {
    if (Pragma(db, schema, "application_id") != applicationId) {
        Command known(db, fmt::format("SELECT 1 FROM {}.sqlite_schema LIMIT 1", SqliteName(schema)));
        if (!mayCreate || known.Step()) {
            FailOwn(unspecified, "The file is not an account database.");
        }
        if (!FileName(db, schema).empty()) {
            Run(db, fmt::format("PRAGMA {}.page_size = {}", SqliteName(schema), pageSize));
        }
        Pragma(db, schema, "journal_mode = WAL");
        Run(db, "BEGIN IMMEDIATE");
        Catalog::CreateTables(db, schema);
        Pragma(db, schema, fmt::format("application_id = {}", applicationId));
        Pragma(db, schema, fmt::format("user_version = {}", formatVersion));
        Run(db, "COMMIT");
        return;
    }
    const std::int64_t format = FileFormat(db, schema);
    if (format > formatVersion) {
        FailOwn(
            unspecified,
            "The account database \"{}\" has format {}, and this program knows formats up to {}. Use a newer program.",
            FileName(db, schema), format, formatVersion);
    }
}

void UpgradeFile(sqlite3* db, Catalog& catalog, Schema schema) {
    if (FileFormat(db, schema) == formatVersion) {
        return;
    }
    Run(db, "BEGIN IMMEDIATE");
    try {
        // Another process may have been faster.
        const std::int64_t format = FileFormat(db, schema);
        if (format < formatVersion) {
            Upgrade upgrade(db, catalog, schema);
            if (format == 0) {
                upgrade.FromFormat0();
            }
            upgrade.FromFormat1();
            upgrade.FollowOrder(format == 0 ? "full-width and half-width forms"
                                            : "one letter and the two it stands for");
            Pragma(db, schema, fmt::format("user_version = {}", formatVersion));
        }
        Run(db, "COMMIT");
    } catch (...) {
        sqlite3_exec(db, "ROLLBACK; PRAGMA writable_schema = RESET", nullptr, nullptr, nullptr);
        throw;
    }
    catalog.Forget();
}

} // namespace refhost::sql
