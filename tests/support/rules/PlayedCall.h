#pragma once

#include "ModPub/Trap.h"
#include "host/Environment.h"
#include "tests/support/rules/Play.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace test {

/// A further call of `Transact` of an instance.
using TransactAgain = std::function<std::string(std::string_view request, host::HostLogin& login)>;

/// Where a call begins and ends among what its instance asks of the host: what comes before is not failed, and what
/// comes after is the instance's release.
struct CallMarks {
    std::function<void()> begin;
    std::function<void()> returned;
    /// Gets a way to call `Transact` of the instance once it is made, for a call from inside of another.
    std::function<void(const TransactAgain& again)> made = {};
};

/// Tells of an instance that has just been made; it outlives the call.
template <class Class> void TellMade(const CallMarks& marks, Class& instance) {
    if (marks.made) {
        marks.made(
            [&](std::string_view request, host::HostLogin& login) { return instance.Transact(request, &login); });
    }
}

/// A call on an account, with what the rules make of it.
struct PlayedCall {
    std::string name;
    /// The request's operation.
    std::string proc;
    /// Batches that fill an account once, and those that bring it back to that state after a call that wrote.
    std::string setup;
    std::string restore;
    /// Queries of what the account holds.
    std::vector<std::string> contents;
    /// Runs the call and gives its result text.
    std::function<std::string(host::Environment& environment, host::HostLogin& login, const CallMarks& marks)> run;
    /// Plays the rules of the call: gives the result that they prescribe and leaves the account's contents in `play`.
    std::function<std::string(Play& play)> rules;
    /// Added to the connection string.
    std::string connectionMore = {};
};

/// One call of `Transact` of a new instance, whose making belongs to the call.
template <class Class> auto TransactOf(std::string request) {
    return
        [request = std::move(request)](host::Environment& environment, host::HostLogin& login, const CallMarks& marks) {
            marks.begin();
            std::optional<Class> instance;
            try {
                instance.emplace(environment);
            } catch (...) {
                marks.returned();
                return "raised " + std::to_string(ModPub::PendingError().number());
            }
            TellMade(marks, *instance);
            std::string result = instance->Transact(request, &login);
            marks.returned();
            return result;
        };
}

} // namespace test
