#include "tests/support/WatchedDatabase.h"

namespace test {

void WatchedConnection::Notice(std::string_view name, std::string_view text) {
    watch_.Notice({.kind = HostOperation::Kind::database, .name = name, .text = text, .connection = number_});
}

void WatchedConnection::Open(const std::string& connectionString, const std::string& userId,
                             const std::string& password, int options) {
    Notice("Connect", connectionString);
    inner().Open(connectionString, userId, password, options);
}

void WatchedConnection::Execute(std::string_view commandText, int options) {
    Notice("Execute", commandText);
    inner().Execute(commandText, options);
}

void WatchedConnection::BeginTrans() {
    Notice("BeginTrans");
    inner().BeginTrans();
}

void WatchedConnection::CommitTrans() {
    Notice("CommitTrans");
    inner().CommitTrans();
}

void WatchedConnection::RollbackTrans() {
    Notice("RollbackTrans");
    inner().RollbackTrans();
}

void WatchedRecordset::Before(std::string_view member) const {
    watch_.Notice({.kind = HostOperation::Kind::database,
                   .name = member,
                   .text = source_,
                   .connection = connection_,
                   .recordset = number_});
}

void WatchedRecordset::Open(std::string_view source, host::Connection& connection, host::CursorType cursorType,
                            host::LockType lockType, int options) {
    source_ = source;
    connection_ = dynamic_cast<WatchedConnection&>(connection).number();
    ForwardingRecordset::Open(source, connection, cursorType, lockType, options);
}

} // namespace test
