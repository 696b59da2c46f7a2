#include "tests/support/WatchedDatabase.h"

namespace test {

void WatchedConnection::Notice(std::string_view name, std::string_view text) {
    watch_.Notice({.kind = HostOperation::Kind::database, .name = name, .text = text, .connection = number_});
}

void WatchedConnection::Open(const std::string& connectionString, const std::string& userId,
                             const std::string& password, int options) {
    Notice("Connect", connectionString);
    inner_->Open(connectionString, userId, password, options);
}

void WatchedConnection::Execute(std::string_view commandText, int options) {
    Notice("Execute", commandText);
    inner_->Execute(commandText, options);
}

void WatchedConnection::BeginTrans() {
    Notice("BeginTrans");
    inner_->BeginTrans();
}

void WatchedConnection::CommitTrans() {
    Notice("CommitTrans");
    inner_->CommitTrans();
}

void WatchedConnection::RollbackTrans() {
    Notice("RollbackTrans");
    inner_->RollbackTrans();
}

void WatchedRecordset::Notice(std::string_view name) const {
    watch_.Notice({.kind = HostOperation::Kind::database,
                   .name = name,
                   .text = source_,
                   .connection = connection_,
                   .recordset = number_});
}

void WatchedRecordset::SetCursorLocation(host::CursorLocation location) {
    Notice("SetCursorLocation");
    inner_->SetCursorLocation(location);
}

host::CursorLocation WatchedRecordset::GetCursorLocation() const {
    Notice("GetCursorLocation");
    return inner_->GetCursorLocation();
}

void WatchedRecordset::Open(std::string_view source, host::Connection& connection, host::CursorType cursorType,
                            host::LockType lockType, int options) {
    auto& watched = dynamic_cast<WatchedConnection&>(connection);
    source_ = source;
    connection_ = watched.number();
    Notice("Open");
    inner_->Open(source, watched.inner(), cursorType, lockType, options);
}

void WatchedRecordset::Close() {
    Notice("Close");
    inner_->Close();
}

bool WatchedRecordset::IsOpen() const {
    Notice("IsOpen");
    return inner_->IsOpen();
}

bool WatchedRecordset::AtEOF() const {
    Notice("AtEOF");
    return inner_->AtEOF();
}

bool WatchedRecordset::AtBOF() const {
    Notice("AtBOF");
    return inner_->AtBOF();
}

std::int64_t WatchedRecordset::RecordCount() const {
    Notice("RecordCount");
    return inner_->RecordCount();
}

void WatchedRecordset::MoveNext() {
    Notice("MoveNext");
    inner_->MoveNext();
}

std::size_t WatchedRecordset::FieldCount() const {
    Notice("FieldCount");
    return inner_->FieldCount();
}

const host::Field& WatchedRecordset::FieldAt(std::size_t index) const {
    Notice("FieldAt");
    return inner_->FieldAt(index);
}

std::size_t WatchedRecordset::FieldIndex(std::string_view name) const {
    Notice("FieldIndex");
    return inner_->FieldIndex(name);
}

host::Value WatchedRecordset::FieldValue(std::size_t index) const {
    Notice("FieldValue");
    return inner_->FieldValue(index);
}

void WatchedRecordset::Save(host::DOMDocument& document) const {
    Notice("Save");
    inner_->Save(document);
}

} // namespace test
