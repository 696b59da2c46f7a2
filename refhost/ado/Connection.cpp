#include "refhost/ado/Connection.h"

#include "refhost/ado/AdoErrors.h"

namespace refhost {

Connection::~Connection() {
    if (inTransaction_) {
        try {
            database_->RollbackTrans();
        } catch (...) {
            // The database ends the transaction itself when it is closed.
        }
    }
}

void Connection::Open(const std::string& connectionString, const std::string& /*userId*/,
                      const std::string& /*password*/, int /*options*/) {
    if (database_) {
        RaiseObjectOpen();
    }
    database_ = opener_(connectionString);
}

void Connection::Execute(std::string_view commandText, int /*options*/) { database().Execute(commandText); }

void Connection::BeginTrans() {
    database().BeginTrans();
    inTransaction_ = true;
}

void Connection::CommitTrans() {
    database().CommitTrans();
    inTransaction_ = false;
}

void Connection::RollbackTrans() {
    database().RollbackTrans();
    inTransaction_ = false;
}

void Connection::BeginSeries() { database().BeginSeries(); }

void Connection::EndSeries() {
    if (database_) {
        database_->EndSeries();
    }
}

Database& Connection::database() {
    if (!database_) {
        RaiseObjectClosed();
    }
    return *database_;
}

} // namespace refhost
