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
    Shared(std::shared_ptr<refhost::Database> database, const StatementSink& note)
        : ForwardingDatabase(std::move(database)), note_(note) {}

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
        if (note_) {
            note_(sql);
        }
    }

    StatementSink note_;
};

} // namespace

MemoryAccount::MemoryAccount() : database_(refhost::sql::OpenEmbedded(connectionString, refhost::sql::Mode::create)) {
    refhost::Connection connection(Opener());
    connection.Open(connectionString, "", "", host::command_option::unspecified);
    refhost::CreateAccount(connection, "001", false);
}

refhost::DatabaseOpener MemoryAccount::Opener() const {
    return [database = database_](const std::string&) { return std::make_unique<Shared>(database, StatementSink()); };
}

refhost::DatabaseOpener MemoryAccount::RecordingOpener(const StatementSink& note) const {
    return [database = database_, note](const std::string&) { return std::make_unique<Shared>(database, note); };
}

void MemoryAccount::Fill(const std::vector<std::string>& statements) {
    database_->BeginTrans();
    for (const std::string& statement : statements) {
        database_->Execute(statement);
    }
    database_->CommitTrans();
}

} // namespace bench
