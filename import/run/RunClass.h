#pragma once

#include "ModPub/ImportObserver.h"
#include "import/run/Account.h"
#include "import/run/Unit.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace importing {

/// Creates an instance of a class, calls its `Transact` and releases it. Throws host::Error when the instance cannot be
/// created.
using Transact = std::function<std::string(host::Environment& environment, std::string_view request,
                                           host::HostLogin* login, ModPub::ImportObserver* observer)>;

/// Hears of a class's run as it happens. What a listener throws ends the run and goes on its way; thrown by
/// `unitBegins`, the class is not asked for that unit.
struct RunListeners {
    /// Whether to stop before the next unit.
    std::function<bool()> wantsStop = {};
    /// A request with these units is about to be handed to the class.
    std::function<void(std::span<Unit> units)> requestBegins = {};
    /// Of these, a unit is next.
    std::function<void(Unit& unit)> unitBegins = {};
    /// Its state is known.
    std::function<void(Unit& unit)> unitEnded = {};
    /// The request is over, and its units with it.
    std::function<void()> requestEnded = {};
};

/// How the class is asked.
struct RunOptions {
    /// The state of what it takes: `imported`, or `ready` in a test run.
    RowState taken = RowState::imported;
    /// Units of a request. A request of price vouchers carries one document always: the class takes no second one.
    std::size_t unitsPerRequest = 1000;
};

/// Asks the class about the units, in requests "ADD", and notes states, keys and messages in their rows. A row that
/// ends a request by an error is refused with it, and the next request begins behind it. Stops when the class refuses a
/// request as a whole (`outcome.refused`) or the user wants it (`outcome.interrupted`); units that were not reached
/// stay so. Throws what a listener throws.
void RunClass(Outcome& outcome, std::span<Unit> units, Session& session, const Transact& transact,
              const RunOptions& options, const RunListeners& listeners);

/// Asks the class whether the account takes anything at all now, by a request without rows. Its refusal, or nothing. Of
/// classes of documents nothing is asked: for them a request without documents is no question.
std::optional<RequestRefusal> AskWhetherOpen(const Outcome& outcome, Session& session, const Transact& transact);

} // namespace importing
