#include "refhost/ado/Connection.h"

#include "refhost/ado/AdoErrors.h"
#include "refhost/trace/Trace.h"

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

void Connection::Open(const std::string& connectionString, const std::string& userId, const std::string& password,
                      int options) {
    Traced(
        [&] {
            if (database_) {
                RaiseObjectOpen();
            }
            database_ = opener_(connectionString);
        },
        [&](Trace::Result result) {
            if (trace_ != nullptr) {
                trace_->Connect(connectionString, userId, password, options, result);
            }
        });
}

void Connection::Execute(std::string_view commandText, int options) {
    Traced([&] { database().Execute(commandText); },
           [&](Trace::Result result) {
               if (trace_ != nullptr) {
                   trace_->Execute(commandText, options, result);
               }
           });
}

void Connection::BeginTrans() {
    Transaction("BeginTrans", &Database::BeginTrans);
    inTransaction_ = true;
}

void Connection::CommitTrans() {
    Transaction("CommitTrans", &Database::CommitTrans);
    inTransaction_ = false;
}

void Connection::RollbackTrans() {
    Transaction("RollbackTrans", &Database::RollbackTrans);
    inTransaction_ = false;
}

void Connection::Transaction(std::string_view operation, void (Database::*member)()) {
    Traced([&] { (database().*member)(); },
           [&](Trace::Result result) {
               if (trace_ != nullptr) {
                   trace_->Transaction(operation, result);
               }
           });
}

Database& Connection::database() {
    if (!database_) {
        RaiseObjectClosed();
    }
    return *database_;
}

} // namespace refhost
