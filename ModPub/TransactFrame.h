#pragma once

#include "ModPub/ErrorResult.h"
#include "ModPub/ImportState.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ModPub {

/// A request that is refused as a whole.
struct RequestError {
    std::string code;
    std::string message;
};

/// The messages of the frame, which one class words in its own way.
struct FrameTexts {
    /// Code "100": the request is no well-formed XML.
    std::string_view notParsed = "解析XML时发生错误,请你检查XML参数格式";
    /// Code "101": the request has no root element.
    std::string_view noRoot = "qxinterface结点不存在";
    /// Code "710": the class does not offer the operation.
    std::string_view unsupported = "本模块暂不提供此功能！";
};

/// One operation of a class.
struct Operation {
    /// Compared as it stands with the request's upper-cased `proc`.
    std::string_view proc;
    /// Gives the result text from the request's root element; nothing where it is that of the result document, which
    /// is written when the request's memory is free again.
    std::function<std::optional<std::string>(const host::DOMNode& root)> run;
};

/// What differs between the classes inside the frame. Steps that a class does not have stay empty.
struct FrameVariation {
    FrameTexts texts = {};
    /// Whether the root element is tested before `roottag` is read (else after).
    bool testsRootFirst = false;
    /// Runs when the login is held and the result document created, before the connection is opened.
    std::function<void()> beforeConnection = {};
    /// Gives the connection string; the login's member `QxDbName` when empty.
    std::function<std::string()> connectionString = {};
    /// Runs when the connection is open, before the request is parsed.
    std::function<void()> afterConnection = {};
    /// May refuse the request before the result document is built.
    std::function<std::optional<RequestError>()> preCheck = {};
    /// May refuse the request when the result document is built.
    std::function<std::optional<RequestError>()> ledgerCheck = {};
    std::vector<Operation> operations = {};
};

/// The steps of one call of `Transact`: opens the database, parses the request, dispatches on its operation and returns
/// the result text. Throws what any of them throws.
std::string RunSteps(ImportState& state, const FrameVariation& variation, std::string_view sXml,
                     host::HostLogin* login);

/// A call of `Transact` that is under way. The host can call the same instance again during anything that it is asked
/// for; such an inner call ends here, before it touches what the outer one works with.
class TransactInProgress {
public:
    /// Throws 3705, as the open connection would, when a call is under way.
    explicit TransactInProgress(ImportState& state);
    ~TransactInProgress() {
        state_.inTransact = false;
        state_.request.reset();
    }
    TransactInProgress(const TransactInProgress&) = delete;
    TransactInProgress& operator=(const TransactInProgress&) = delete;

private:
    ImportState& state_;
};

/// Runs one call of `Transact` as its class varies it. Never throws: every failure becomes an error result.
/// @param makeVariation gives the `FrameVariation`; called inside, since it takes memory to make one
template <class MakeVariation>
std::string RunTransact(ImportState& state, const MakeVariation& makeVariation, std::string_view sXml,
                        host::HostLogin* login) noexcept {
    try {
        const TransactInProgress inProgress(state);
        // The error result too is the helper's, which may call again.
        try {
            return RunSteps(state, makeVariation(), sXml, login);
        } catch (...) {
            return ErrorResult(state.environment, state.observer);
        }
    } catch (...) {
        // Of a call from inside nobody is told: the observer watches the outer one.
        return ErrorResult(state.environment);
    }
}

/// An operation that selects the request's rows and imports them; its result is the result document.
Operation RowsOperation(ImportState& state, std::string_view proc,
                        std::function<void(const host::DOMNodeList& rows)> importRows);

/// An operation that executes one statement and gives the empty result.
Operation StatementOperation(ImportState& state, std::string_view proc, std::string_view statement);

} // namespace ModPub
