#pragma once

#include "host/Database.h"
#include "tests/support/WatchedHost.h"

#include <memory>
#include <string>

namespace test {

/// A connection whose operations are seen before they run.
class WatchedConnection : public host::Connection {
public:
    /// @param watch outlives the connection
    WatchedConnection(std::unique_ptr<host::Connection> inner, HostWatch& watch)
        : inner_(std::move(inner)), watch_(watch), number_(watch.NextConnection()) {}

    void Open(const std::string& connectionString, const std::string& userId, const std::string& password,
              int options) override;
    void Execute(std::string_view commandText, int options) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;

    host::Connection& inner() { return *inner_; }
    int number() const { return number_; }

private:
    void Notice(std::string_view name, std::string_view text = {});

    std::unique_ptr<host::Connection> inner_;
    HostWatch& watch_;
    int number_;
};

/// A recordset whose operations are seen before they run.
class WatchedRecordset : public host::Recordset {
public:
    /// @param watch outlives the recordset
    WatchedRecordset(std::unique_ptr<host::Recordset> inner, HostWatch& watch)
        : inner_(std::move(inner)), watch_(watch), number_(watch.NextRecordset()) {}

    void SetCursorLocation(host::CursorLocation location) override;
    host::CursorLocation GetCursorLocation() const override;
    void Open(std::string_view source, host::Connection& connection, host::CursorType cursorType,
              host::LockType lockType, int options) override;
    void Close() override;
    bool IsOpen() const override;
    bool AtEOF() const override;
    bool AtBOF() const override;
    std::int64_t RecordCount() const override;
    void MoveNext() override;
    std::size_t FieldCount() const override;
    const host::Field& FieldAt(std::size_t index) const override;
    std::size_t FieldIndex(std::string_view name) const override;
    using host::Recordset::FieldValue;
    host::Value FieldValue(std::size_t index) const override;
    void Save(host::DOMDocument& document) const override;

private:
    void Notice(std::string_view name) const;

    std::unique_ptr<host::Recordset> inner_;
    HostWatch& watch_;
    int number_;
    /// Of the latest `Open`.
    std::string source_;
    int connection_ = 0;
};

} // namespace test
