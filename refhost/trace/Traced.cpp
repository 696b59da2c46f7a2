#include "refhost/trace/Traced.h"

#include "host/Error.h"
#include "host/Forwarding.h"
#include "refhost/ado/ConnectionLost.h"

#include <chrono>
#include <exception>
#include <string>
#include <string_view>

namespace refhost {
namespace {

/// Runs `operation` and passes its result, success or the error's number, to `note`; an error goes on its way. What
/// keeps the trace from being told does not disturb the operation.
template <class Operation, class Note> void Noted(Trace& trace, const Operation& operation, const Note& note) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = trace.TellsTimes() ? Clock::now() : Clock::time_point();
    const auto tell = [&](Trace::Result result, const host::Error* error) {
        try {
            if (trace.TellsTimes()) {
                trace.Took(std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start));
            }
            note(result);
            if (dynamic_cast<const ConnectionLost*>(error) != nullptr) {
                trace.ConnectionLost(error->description());
            }
        } catch (const std::exception&) {
            trace.LineLost();
        }
    };
    try {
        operation();
    } catch (const host::Error& error) {
        tell(error.number(), &error);
        throw;
    }
    tell(Trace::Result{0}, nullptr);
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

class TracedZendaT final : public host::ZendaT {
public:
    TracedZendaT(Trace& trace, std::unique_ptr<host::ZendaT> inner) : trace_(trace), inner_(std::move(inner)) {}

    void OpenDBS(host::Recordset& recordset, host::Connection& connection, std::string_view sql) override {
        Noted(
            trace_, [&] { inner_->OpenDBS(recordset, connection, sql); },
            [&](Trace::Result result) {
                trace_.Open(sql, static_cast<int>(host::CursorType::openStatic),
                            static_cast<int>(host::LockType::readOnly), host::command_option::text,
                            static_cast<int>(recordset.GetCursorLocation()), result);
            });
    }

    bool AllowAdd(std::string& message, std::shared_ptr<host::VoucherContext>& context,
                  host::Connection& connection) override {
        return inner_->AllowAdd(message, context, connection);
    }
    void Update(std::string_view workTable, std::string_view resultTable,
                std::shared_ptr<host::VoucherContext>& context, host::Connection& connection,
                std::string_view voucherId, bool flag) override {
        inner_->Update(workTable, resultTable, context, connection, voucherId, flag);
    }
    host::Value GetDefaultTemplateID(std::string_view cardNumber, host::Connection& connection) override {
        return inner_->GetDefaultTemplateID(cardNumber, connection);
    }
    host::Value GetVouchNum(std::shared_ptr<host::VoucherContext>& context, std::string_view voucherType,
                            host::RsXmlHelper::VouchData& data, bool flag1, bool flag2) override {
        return inner_->GetVouchNum(context, voucherType, data, flag1, flag2);
    }
    bool save(host::DOMDocument& head, host::DOMDocument& rows, int mode, std::string& message,
              host::Connection& connection, bool flag, std::shared_ptr<host::VoucherContext>& context) override {
        return inner_->save(head, rows, mode, message, connection, flag, context);
    }
    host::Value GetMaxID(host::Connection& connection, bool flag) override {
        return inner_->GetMaxID(connection, flag);
    }
    bool DoAccount(host::DOMDocument& head, host::DOMDocument& rows, std::shared_ptr<host::VoucherContext>& context,
                   host::Connection& connection, bool flag, std::string& message) override {
        return inner_->DoAccount(head, rows, context, connection, flag, message);
    }

private:
    Trace& trace_;
    std::unique_ptr<host::ZendaT> inner_;
};

} // namespace

std::unique_ptr<host::Connection> WithTrace(Trace* trace, std::unique_ptr<host::Connection> connection) {
    return trace == nullptr ? std::move(connection) : std::make_unique<TracedConnection>(*trace, std::move(connection));
}

std::unique_ptr<host::Recordset> WithTrace(Trace* trace, std::unique_ptr<host::Recordset> recordset) {
    return trace == nullptr ? std::move(recordset) : std::make_unique<TracedRecordset>(*trace, std::move(recordset));
}

std::unique_ptr<host::ZendaT> WithTracedTexts(Trace* trace, std::unique_ptr<host::ZendaT> component) {
    return trace == nullptr ? std::move(component) : std::make_unique<TracedZendaT>(*trace, std::move(component));
}

} // namespace refhost
