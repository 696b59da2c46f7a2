#include "refhost/trace/Traced.h"

#include "host/Error.h"
#include "host/Forwarding.h"
#include "refhost/ado/ConnectionLost.h"

#include <string>
#include <string_view>

namespace refhost {
namespace {

/// Runs `operation` and passes its result, success or the error's number, to `note`; an error goes on its way.
template <class Operation, class Note> void Noted(Trace& trace, const Operation& operation, const Note& note) {
    try {
        operation();
    } catch (const host::Error& error) {
        note(error.number());
        if (dynamic_cast<const ConnectionLost*>(&error) != nullptr) {
            trace.ConnectionLost(error.description());
        }
        throw;
    }
    note(Trace::Result{0});
}

class TracedConnection final : public host::ForwardingConnection {
public:
    TracedConnection(Trace& trace, std::unique_ptr<host::Connection> inner)
        : ForwardingConnection(std::move(inner)), trace_(trace) {}

    void Open(const std::string& connectionString, const std::string& userId, const std::string& password,
              int options) override {
        Noted(
            trace_, [&] { inner().Open(connectionString, userId, password, options); },
            [&](Trace::Result result) { trace_.Connect(connectionString, userId, password, options, result); });
    }
    void Execute(std::string_view commandText, int options) override {
        Noted(
            trace_, [&] { inner().Execute(commandText, options); },
            [&](Trace::Result result) { trace_.Execute(commandText, options, result); });
    }
    void BeginTrans() override { Transaction("BeginTrans", &host::Connection::BeginTrans); }
    void CommitTrans() override { Transaction("CommitTrans", &host::Connection::CommitTrans); }
    void RollbackTrans() override { Transaction("RollbackTrans", &host::Connection::RollbackTrans); }

private:
    void Transaction(std::string_view operation, void (host::Connection::*member)()) {
        Noted(
            trace_, [&] { (inner().*member)(); }, [&](Trace::Result result) { trace_.Transaction(operation, result); });
    }

    Trace& trace_;
};

class TracedRecordset final : public host::ForwardingRecordset {
public:
    TracedRecordset(Trace& trace, std::unique_ptr<host::Recordset> inner)
        : ForwardingRecordset(std::move(inner)), trace_(trace) {}

    void Open(std::string_view source, host::Connection& connection, host::CursorType cursorType,
              host::LockType lockType, int options) override {
        Noted(
            trace_, [&] { inner().Open(source, connection, cursorType, lockType, options); },
            [&](Trace::Result result) {
                trace_.Open(source, static_cast<int>(cursorType), static_cast<int>(lockType), options,
                            static_cast<int>(inner().GetCursorLocation()), result);
            });
    }

private:
    Trace& trace_;
};

} // namespace

std::unique_ptr<host::Connection> WithTrace(Trace* trace, std::unique_ptr<host::Connection> connection) {
    return trace == nullptr ? std::move(connection) : std::make_unique<TracedConnection>(*trace, std::move(connection));
}

std::unique_ptr<host::Recordset> WithTrace(Trace* trace, std::unique_ptr<host::Recordset> recordset) {
    return trace == nullptr ? std::move(recordset) : std::make_unique<TracedRecordset>(*trace, std::move(recordset));
}

} // namespace refhost
