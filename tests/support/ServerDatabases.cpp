#include "tests/support/ServerDatabases.h"

#include "refhost/OpenDatabase.h"
#include "refhost/ado/ServerErrors.h"

#include <utility>

namespace test {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view master = "master";
/// What every account reaches beside itself.
constexpr std::string_view systemDatabase = "QxSystem";

[[noreturn]] void Fail(int native, const std::string& message) {
    throw host::Error(refhost::AdoNumber(native).value(), message, native);
}

/// The name between `before` and `after`, which make up the whole statement, with doubled closing quotes taken once.
std::optional<std::string> NameIn(std::string_view sql, std::string_view before, std::string_view after) {
    if (!sql.starts_with(before) || !sql.ends_with(after) || sql.size() <= before.size() + after.size()) {
        return std::nullopt;
    }
    std::string name(sql.substr(before.size(), sql.size() - before.size() - after.size()));
    const std::string doubled(2, after.front());
    for (std::size_t at = name.find(doubled); at != std::string::npos; at = name.find(doubled, at + 1)) {
        name.erase(at, 1);
    }
    return name;
}

std::string Account(const fs::path& file) { return "Provider=KovraAccount;Data Source=" + file.string(); }

refhost::ResultSet OneValue(const char* name, host::FieldType type, host::Value value) {
    refhost::ResultSet result;
    result.fields = std::make_shared<refhost::Fields>(1, host::Field{.name = name, .type = type, .definedSize = 128});
    result.cells.Add(std::move(value));
    result.rowCount = 1;
    return result;
}

} // namespace

ServerDatabases::ServerDatabases(fs::path folder, std::string_view database, bool mayCreate)
    : folder_(std::move(folder)), mayCreate_(mayCreate) {
    if (!Exists(database)) {
        Fail(4060, "Cannot open database \"" + std::string(database) + "\" requested by the login. The login failed.");
    }
    Use(database);
}

refhost::ResultSet ServerDatabases::Query(std::string_view sql) {
    refhost::ResultSet first;
    RunBatch(sql, std::nullopt, [&](refhost::BatchAnswer answer) {
        if (const auto* const error = std::get_if<host::Error>(&answer)) {
            throw host::Error(*error);
        }
        if (auto* const rows = std::get_if<refhost::ResultSet>(&answer); rows != nullptr && !first.fields) {
            first = std::move(*rows);
        }
    });
    return first;
}

void ServerDatabases::Execute(std::string_view sql) { Query(sql); }

void ServerDatabases::RunBatch(std::string_view sql, refhost::TimeLimit limit, const refhost::BatchSink& sink) {
    std::optional<refhost::BatchAnswer> answer;
    try {
        answer = OfDatabases(sql);
    } catch (const host::Error& error) {
        answer = error;
    }
    if (answer) {
        sink(std::move(*answer));
    } else {
        database_->RunBatch(sql, limit, sink);
    }
}

void ServerDatabases::BeginTrans() {
    database_->BeginTrans();
    inTransaction_ = true;
}

void ServerDatabases::CommitTrans() {
    database_->CommitTrans();
    inTransaction_ = false;
}

void ServerDatabases::RollbackTrans() {
    database_->RollbackTrans();
    inTransaction_ = false;
}

/// The answer to a batch about databases; nothing for any other. -1 is the count of a statement that writes no rows.
std::optional<refhost::BatchAnswer> ServerDatabases::OfDatabases(std::string_view sql) {
    if (const auto asked = NameIn(sql, "SELECT DB_ID(N'", "') AS id")) {
        refhost::ResultSet id;
        id.fields = std::make_shared<refhost::Fields>(1, host::Field{.name = "id", .type = host::FieldType::smallInt});
        id.cells.Add(Exists(*asked) ? host::Value(5) : host::Value(host::Null{}));
        id.rowCount = 1;
        return id;
    }
    if (opened_ == master && sql == "SELECT DB_NAME() AS name") {
        return OneValue("name", host::FieldType::varWideChar, host::Value(std::string(master)));
    }
    if (const auto created = NameIn(sql, "CREATE DATABASE [", "]")) {
        Create(*created);
    } else if (const auto dropped = NameIn(sql, "DROP DATABASE [", "]")) {
        Drop(*dropped);
    } else if (const auto used = NameIn(sql, "USE [", "]")) {
        Use(*used);
    } else {
        return std::nullopt;
    }
    return refhost::RowsWritten{-1};
}

fs::path ServerDatabases::File(std::string_view database) const { return folder_ / (std::string(database) + ".db"); }

bool ServerDatabases::Exists(std::string_view database) const { return database == master || exists(File(database)); }

void ServerDatabases::Use(std::string_view database) {
    if (!Exists(database)) {
        Fail(911,
             "Database '" + std::string(database) + "' does not exist. Make sure that the name is entered correctly.");
    }
    if (database == opened_ || (database == systemDatabase && !opened_.empty() && opened_ != master)) {
        // The account's own connection reaches both, also inside a transaction.
        database_->RunBatch("USE [" + std::string(database) + "]", std::nullopt, [](const refhost::BatchAnswer&) {});
        return;
    }
    opened_ = database;
    database_ = database == master ? refhost::OpenEmbeddedDatabase("Provider=KovraAccount;Data Source=:memory:",
                                                                   refhost::OpenMode::create)
                                   : refhost::OpenEmbeddedDatabase(Account(File(database)));
}

void ServerDatabases::Create(std::string_view database) {
    RequireNoTransaction("CREATE DATABASE");
    if (!mayCreate_) {
        Fail(262, "CREATE DATABASE permission denied in database 'master'.");
    }
    if (Exists(database)) {
        Fail(1801, "Database '" + std::string(database) + "' already exists. Choose a different database name.");
    }
    const bool hadSystem = Exists(systemDatabase);
    refhost::OpenEmbeddedDatabase(Account(File(database)), refhost::OpenMode::create);
    if (!hadSystem && database != systemDatabase) {
        // An embedded account brings it along; a server's database does not.
        fs::remove(File(systemDatabase));
    } else if (database == systemDatabase && opened_ != master) {
        // A connection reaches what was there when it was opened.
        database_ = refhost::OpenEmbeddedDatabase(Account(File(opened_)));
    }
}

void ServerDatabases::Drop(std::string_view database) {
    RequireNoTransaction("DROP DATABASE");
    if (database == opened_) {
        Fail(3702, "Cannot drop database \"" + std::string(database) + "\" because it is currently in use.");
    }
    if (!fs::remove(File(database))) {
        Fail(3701, "Cannot drop the database '" + std::string(database) +
                       "', because it does not exist or you do not have permission.");
    }
    for (const char* const log : {".db-wal", ".db-shm"}) {
        fs::remove(folder_ / (std::string(database) + log));
    }
}

void ServerDatabases::RequireNoTransaction(std::string_view statement) const {
    if (inTransaction_) {
        Fail(226, std::string(statement) + " statement not allowed within multi-statement transaction.");
    }
}

} // namespace test
