#include "fuzz/Account.h"

#include "refhost/account/Account.h"
#include "refhost/ado/Connection.h"

#include <sqlite3.h>

namespace fuzz {
namespace {

constexpr std::size_t writesPerAccount = 5000;
/// Steps of SQLite's machine after which a statement is stopped: far beyond what a class's own statement takes.
constexpr int stepsPerCheck = 1000;
constexpr int checksPerStatement = 500;

/// Hands every call on to the database that the account has at the time: components keep their connection for long.
class Lent final : public refhost::Database {
public:
    explicit Lent(const std::unique_ptr<refhost::sql::EmbeddedDatabase>& database) : database_(database) {}

    refhost::ResultSet Query(std::string_view sql) override { return database_->Query(sql); }
    void Execute(std::string_view sql) override { database_->Execute(sql); }
    void BeginTrans() override { database_->BeginTrans(); }
    void CommitTrans() override { database_->CommitTrans(); }
    void RollbackTrans() override { database_->RollbackTrans(); }

private:
    const std::unique_ptr<refhost::sql::EmbeddedDatabase>& database_;
};

int checksLeft = checksPerStatement;

int CheckProgress(void*) { return --checksLeft <= 0 ? 1 : 0; }

} // namespace

const std::string_view loginXml = "<login QxDbName=\"Provider=KovraAccount;Data Source=:memory:\" cAcc_Id=\"001\""
                                  " cIYear=\"2024\" cUserId=\"demo\" cUserName=\"王敏\" cUserPassWord=\"\""
                                  " CurDate=\"2024-01-15\" cServer=\"\" cSerial=\"\" iMonth=\"1\" iStartPeriod=\"1\"/>";

Account::Account() { Make(); }

void Account::Make() {
    database_.reset();
    database_ = std::make_unique<refhost::sql::EmbeddedDatabase>(refhost::sql::EmbeddedDatabase::Settings{
        .file = ":memory:", .deleteStar = true, .mode = refhost::sql::Mode::create});
    refhost::Connection connection(Opener());
    connection.Open("", "", "", host::command_option::unspecified);
    refhost::CreateAccount(connection, "001", true);
    sqlite3_update_hook(database_->Handle(), NoteChange, this);
    sqlite3_progress_handler(database_->Handle(), stepsPerCheck, CheckProgress, nullptr);
    written_ = 0;
}

refhost::DatabaseOpener Account::Opener() {
    return [this](const std::string&) { return std::make_unique<Lent>(database_); };
}

void Account::Begin() {
    if (written_ > writesPerAccount) {
        Make();
    }
    changes_.clear();
    checksLeft = checksPerStatement;
}

std::set<std::string> Account::Tables() {
    std::set<std::string> names;
    sqlite3_exec(
        database_->Handle(), "select name from main.sqlite_schema where type in ('table', 'view')",
        [](void* out, int, char** values, char**) {
            static_cast<std::set<std::string>*>(out)->insert(values[0]);
            return 0;
        },
        &names, nullptr);
    return names;
}

void Account::NoteChange(void* self, int operation, const char*, const char* table, sqlite3_int64) {
    // The database's own dictionary is not what a statement writes.
    if (std::string_view(table).starts_with("sys:")) {
        return;
    }
    auto& account = *static_cast<Account*>(self);
    const char* const verb = operation == SQLITE_INSERT   ? "INSERT "
                             : operation == SQLITE_UPDATE ? "UPDATE "
                                                          : "DELETE ";
    // The numbers that identity columns have given are written down beside the statement.
    if (std::string_view(table) == "sqlite_sequence") {
        return;
    }
    account.changes_.insert(std::string(verb) + table);
    ++account.written_;
}

} // namespace fuzz
