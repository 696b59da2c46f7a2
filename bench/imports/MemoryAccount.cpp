#include "bench/imports/MemoryAccount.h"

#include "refhost/account/Account.h"
#include "refhost/ado/Connection.h"
#include "refhost/ado/ForwardingDatabase.h"

#include <utility>

namespace bench {
namespace {

/// A connection's share in a database that others use too.
class Shared : public refhost::ForwardingDatabase {
public:
    Shared(std::shared_ptr<refhost::Database> database, std::vector<std::string>* statements)
        : ForwardingDatabase(std::move(database)), statements_(statements) {}

    refhost::ResultSet Query(std::string_view sql) override {
        Note(sql);
        return ForwardingDatabase::Query(sql);
    }
    void Execute(std::string_view sql) override {
        Note(sql);
        ForwardingDatabase::Execute(sql);
    }
    void BeginTrans() override {
        Note(beginTransaction);
        ForwardingDatabase::BeginTrans();
    }
    void CommitTrans() override {
        Note(commitTransaction);
        ForwardingDatabase::CommitTrans();
    }

private:
    void Note(std::string_view sql) {
        if (statements_ != nullptr) {
            statements_->emplace_back(sql);
        }
    }

    std::vector<std::string>* statements_;
};

} // namespace

MemoryAccount::MemoryAccount() : database_(refhost::sql::OpenEmbedded(connectionString, refhost::sql::Mode::create)) {
    refhost::Connection connection(Opener());
    connection.Open(connectionString, "", "", host::command_option::unspecified);
    refhost::CreateAccount(connection, "001", false);
}

refhost::DatabaseOpener MemoryAccount::Opener() const {
    return [database = database_](const std::string&) { return std::make_unique<Shared>(database, nullptr); };
}

refhost::DatabaseOpener MemoryAccount::RecordingOpener(std::vector<std::string>& statements) const {
    return [database = database_, &statements](const std::string&) {
        return std::make_unique<Shared>(database, &statements);
    };
}

void MemoryAccount::Fill(const std::vector<std::string>& statements) {
    database_->BeginTrans();
    for (const std::string& statement : statements) {
        database_->Execute(statement);
    }
    database_->CommitTrans();
}

} // namespace bench
