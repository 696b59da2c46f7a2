#pragma once

#include "host/Forwarding.h"
#include "tests/support/WatchedHost.h"

#include <memory>
#include <string>

namespace test {

/// A connection whose operations are seen before they run.
class WatchedConnection : public host::ForwardingConnection {
public:
    /// @param watch outlives the connection
    WatchedConnection(std::unique_ptr<host::Connection> inner, HostWatch& watch)
        : ForwardingConnection(std::move(inner)), watch_(watch), number_(watch.NextConnection()) {}

    void Open(const std::string& connectionString, const std::string& userId, const std::string& password,
              int options) override;
    void Execute(std::string_view commandText, int options) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;

    int number() const { return number_; }

private:
    void Notice(std::string_view name, std::string_view text = {});

    HostWatch& watch_;
    int number_;
};

/// A recordset whose operations are seen before they run.
class WatchedRecordset : public host::ForwardingRecordset {
public:
    /// @param watch outlives the recordset
    WatchedRecordset(std::unique_ptr<host::Recordset> inner, HostWatch& watch)
        : ForwardingRecordset(std::move(inner)), watch_(watch), number_(watch.NextRecordset()) {}

    void Open(std::string_view source, host::Connection& connection, host::CursorType cursorType,
              host::LockType lockType, int options) override;

private:
    void Before(std::string_view member) const override;

    HostWatch& watch_;
    int number_;
    /// Of the latest `Open`.
    std::string source_;
    int connection_ = 0;
};

} // namespace test
