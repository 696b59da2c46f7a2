#include "bench/imports/FileAccount.h"

#include "refhost/OpenDatabase.h"
#include "refhost/account/Account.h"
#include "refhost/ado/Connection.h"

namespace bench {

FileAccount::FileAccount(const std::filesystem::path& folder)
    : connectionString_("Provider=KovraAccount;Data Source=" +
                        (std::filesystem::absolute(folder) / "account.db").string()) {
    for (const char* file : {"account.db", "QxSystem.db"}) {
        for (const char* ending : {"", "-wal", "-shm"}) {
            std::filesystem::remove(folder / (std::string(file) + ending));
        }
    }
    refhost::Connection connection(refhost::OpenOrCreate());
    connection.Open(connectionString_, "", "", host::command_option::unspecified);
    refhost::CreateAccount(connection, "001", false);
}

void FileAccount::Fill(const std::vector<std::string>& statements) const {
    const auto database = refhost::OpenDatabase(connectionString_);
    database->BeginTrans();
    for (const std::string& statement : statements) {
        database->Execute(statement);
    }
    database->CommitTrans();
}

} // namespace bench
