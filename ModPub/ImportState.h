#pragma once

#include "ModPub/ImportObserver.h"
#include "host/Environment.h"

#include <memory>
#include <string>
#include <string_view>

namespace ModPub {

/// Outcome codes of rows and documents.
namespace outcome {
inline constexpr long accepted = 0;
inline constexpr long refused = 101;
/// An error that stopped the row loop, and refused price vouchers.
inline constexpr long stopped = 999;
} // namespace outcome

/// What a class instance holds for a call of `Transact`. The connection is opened at the start of the call and never
/// closed: a second call on one instance fails when it opens it again.
struct ImportState {
    explicit ImportState(host::Environment& theEnvironment, ImportObserver* theObserver = nullptr)
        : environment(theEnvironment), observer(theObserver) {}

    host::Environment& environment;
    /// Nobody where it is nullptr.
    ImportObserver* observer;
    std::unique_ptr<host::Connection> connection;
    std::unique_ptr<host::DOMDocument> resultDocument;
    /// The request of the call under way, as long as something of it is still to be read.
    std::unique_ptr<host::DOMDocument> request;
    /// The latest caller's login. It outlives the instance, since calls after `Transact` read it too.
    host::HostLogin* login = nullptr;
    /// Whether a call is under way.
    bool inTransact = false;
    /// The request's `roottag`.
    std::string rowTag;
    /// The request's `proc` in upper case.
    std::string operation;

    /// Appends one outcome to the result document. Throws what the helper throws.
    void AddOutcome(std::string_view key, long code, std::string_view description);
    /// The outcome of a row that was written: code 0, "ok".
    void AddAccepted(std::string_view key);
    /// The outcome of a row that was refused: code 101 with its message.
    void AddRefused(std::string_view key, std::string_view message);
};

} // namespace ModPub
