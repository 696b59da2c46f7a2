#include "ModPub/TransactFrame.h"

#include "ModPub/Conversions.h"
#include "ModPub/RuntimeErrors.h"

#include <utility>

namespace ModPub {
namespace {

void OpenConnection(ImportState& state, const FrameVariation& variation) {
    if (!state.connection) {
        state.connection = state.environment.CreateConnection();
    }
    const std::string connectionString =
        variation.connectionString ? variation.connectionString() : ToText(state.login->Member("QxDbName"));
    state.connection->Open(connectionString, "", "", host::command_option::unspecified);
}

/// The statements of a request, which follow closely on each other.
class StatementSeries {
public:
    explicit StatementSeries(host::Connection& connection) : connection_(&connection) { connection.BeginSeries(); }
    ~StatementSeries() {
        try {
            End();
        } catch (...) {
            // An error is on its way already, and the caller learns of that one.
        }
    }
    StatementSeries(const StatementSeries&) = delete;
    StatementSeries& operator=(const StatementSeries&) = delete;

    void End() {
        if (host::Connection* const connection = std::exchange(connection_, nullptr)) {
            connection->EndSeries();
        }
    }

private:
    host::Connection* connection_;
};

std::string Refuse(ImportState& state, const RequestError& error) {
    if (state.observer != nullptr) {
        state.observer->RequestRefused(error.code, error.message);
    }
    return state.environment.GetEaiHelper().MakeErrorResult(error.code, error.message, {});
}

/// What comes once the connection is open.
std::string RunRequest(ImportState& state, const FrameVariation& variation, std::string_view sXml) {
    host::Environment& environment = state.environment;
    if (variation.afterConnection) {
        variation.afterConnection();
    }

    state.request = environment.CreateDOMDocument();
    if (!state.request->LoadXML(sXml)) {
        return Refuse(state, {"100", std::string(variation.texts.notParsed)});
    }
    host::EaiHelper& eaiHelper = environment.GetEaiHelper();
    host::DOMNodePtr root = state.request->DocumentElement();
    const RequestError noRoot{"101", std::string(variation.texts.noRoot)};
    if (variation.testsRootFirst && !root) {
        return Refuse(state, noRoot);
    }
    state.rowTag = eaiHelper.GetAttr(state.request->DocumentElement().get(), "roottag");
    if (!root) {
        return Refuse(state, noRoot);
    }
    if (variation.preCheck) {
        if (const std::optional<RequestError> error = variation.preCheck()) {
            return Refuse(state, *error);
        }
    }

    const std::string docid = eaiHelper.GetAttr(root.get(), "docid");
    const std::string proc = eaiHelper.GetAttr(root.get(), "proc");
    state.resultDocument->LoadXML(eaiHelper.MakeResultDoc(docid, proc));
    if (variation.ledgerCheck) {
        if (const std::optional<RequestError> error = variation.ledgerCheck()) {
            return Refuse(state, *error);
        }
    }
    state.operation = UpperCase(eaiHelper.GetAttr(root.get(), "proc"));
    if (state.observer != nullptr) {
        state.observer->RequestBegins(docid, state.operation);
    }
    for (const Operation& operation : variation.operations) {
        if (operation.proc == state.operation) {
            std::optional<std::string> result = operation.run(*root);
            root.reset();
            state.request.reset();
            return result ? std::move(*result) : state.resultDocument->Xml();
        }
    }
    return Refuse(state, {"710", std::string(variation.texts.unsupported)});
}

} // namespace

TransactInProgress::TransactInProgress(ImportState& state) : state_(state) {
    if (state.inTransact) {
        throw host::Error(host::error_number::objectOpen, "Operation is not allowed when the object is open.");
    }
    state.inTransact = true;
}

std::string RunSteps(ImportState& state, const FrameVariation& variation, std::string_view sXml,
                     host::HostLogin* login) {
    host::Environment& environment = state.environment;
    if (login == nullptr) {
        RaiseRuntimeError(host::error_number::objectNotSet);
    }
    state.login = login;
    state.resultDocument = environment.CreateDOMDocument();
    if (variation.beforeConnection) {
        variation.beforeConnection();
    }
    OpenConnection(state, variation);
    StatementSeries series(*state.connection);
    std::string result = RunRequest(state, variation, sXml);
    series.End();
    return result;
}

Operation RowsOperation(ImportState& state, std::string_view proc,
                        std::function<void(const host::DOMNodeList& rows)> importRows) {
    return {proc, [&state, importRows = std::move(importRows)](const host::DOMNode& root) {
                importRows(root.SelectNodes(state.rowTag));
                return std::nullopt;
            }};
}

Operation StatementOperation(ImportState& state, std::string_view proc, std::string_view statement) {
    return {proc, [&state, statement](const host::DOMNode&) {
                state.connection->Execute(statement);
                return std::string();
            }};
}

} // namespace ModPub
