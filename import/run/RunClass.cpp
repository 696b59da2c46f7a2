#include "import/run/RunClass.h"

#include "ModPub/ImportState.h"
#include "host/Error.h"
#include "import/request/BuildRequest.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <vector>

namespace importing {
namespace {

/// Notes what the class says of the units of one request. Nothing is thrown through the class: what goes wrong here
/// stops the request, and is thrown behind it.
class Observer final : public ModPub::ImportObserver {
public:
    Observer(std::span<Unit> units, RowState taken, const RunListeners& listeners)
        : units_(units), taken_(taken), listeners_(listeners) {}

    void RequestBegins(std::string_view, std::string_view) noexcept override {}
    void RowsSelected(std::size_t) noexcept override {}

    bool RowBegins(std::size_t number, const host::DOMNode&) noexcept override {
        return Guard([&] {
                   EndUnit();
                   if (GoesOn()) {
                       if (listeners_.unitBegins) {
                           listeners_.unitBegins(units_[number - 1]);
                       }
                       begun_ = number;
                       outcomes_ = 0;
                       told_.clear();
                   }
               }) &&
               !stopped_;
    }

    void EntriesSelected(std::size_t) noexcept override {}

    bool EntryBegins(std::size_t number, const host::DOMNode&) noexcept override {
        entry_ = number;
        return true;
    }

    void EntryRefused(std::string_view message) noexcept override {
        Guard([&] {
            const std::string_view news = message.starts_with(told_) ? message.substr(told_.size()) : message;
            Current().rows.at(entry_ - 1)->messages.emplace_back(news);
            told_ = message;
        });
    }

    void OutcomeRecorded(std::string_view key, long code, std::string_view description) noexcept override {
        Guard([&] {
            if (begun_ == 0) {
                refusal_ = {std::to_string(code), std::string(description)};
                return;
            }
            // A row may have several outcomes; the first one tells whether it was written.
            if (outcomes_++ == 0) {
                Settle(key, code == ModPub::outcome::accepted, description);
            } else if (code != ModPub::outcome::accepted && IsTaken(Current().rows.front()->state)) {
                AddMessage(description);
            }
        });
    }

    void RequestUndone() noexcept override { undone_ = true; }

    void RequestRefused(std::string_view code, std::string_view message) noexcept override {
        Guard([&] { refusal_ = {std::string(code), std::string(message)}; });
    }

    /// To be called once the class has returned. Throws what went wrong meanwhile.
    void End() {
        if (undone_) {
            TakeBack();
        }
        EndUnit();
        if (failure_) {
            std::rethrow_exception(failure_);
        }
    }

    std::size_t begun() const noexcept { return begun_; }
    bool stopped() const noexcept { return stopped_; }
    const std::optional<RequestRefusal>& refusal() const noexcept { return refusal_; }

private:
    template <class Action> bool Guard(const Action& action) noexcept {
        if (failure_) {
            return false;
        }
        try {
            action();
        } catch (...) {
            failure_ = std::current_exception();
        }
        return !failure_;
    }

    bool GoesOn() {
        stopped_ = stopped_ || (listeners_.wantsStop && listeners_.wantsStop());
        return !stopped_;
    }

    Unit& Current() { return units_[begun_ - 1]; }

    void Settle(std::string_view key, bool accepted, std::string_view description) {
        for (RowOutcome* const row : Current().rows) {
            row->key = key;
            row->state = accepted ? taken_ : RowState::refusedByClass;
        }
        if (!accepted) {
            AddMessage(description);
        }
    }

    /// To the rows that no message of their own tells of.
    void AddMessage(std::string_view message) {
        for (RowOutcome* const row : Current().rows) {
            if (row->messages.empty()) {
                row->messages.emplace_back(message);
            }
        }
    }

    void EndUnit() {
        if (begun_ > ended_) {
            ended_ = begun_;
            // A class that ends a row without a word has not refused it.
            if (Current().rows.front()->state == RowState::notReached && !undone_ && !refusal_) {
                Settle({}, true, {});
            }
            if (listeners_.unitEnded) {
                listeners_.unitEnded(Current());
            }
        }
    }

    /// What was recorded of the request's units does not hold any more.
    void TakeBack() {
        for (std::size_t number = 1; number <= begun_; ++number) {
            for (RowOutcome* const row : units_[number - 1].rows) {
                if (row->state == taken_) {
                    row->state = stopped_ ? RowState::notReached : RowState::refusedByClass;
                }
            }
        }
    }

    std::span<Unit> units_;
    RowState taken_;
    const RunListeners& listeners_;
    std::size_t begun_ = 0;
    std::size_t ended_ = 0;
    std::size_t entry_ = 0;
    std::size_t outcomes_ = 0;
    /// What was said of the entries so far.
    std::string told_;
    bool stopped_ = false;
    bool undone_ = false;
    std::optional<RequestRefusal> refusal_;
    std::exception_ptr failure_;
};

/// What the request is called in its result; nobody else reads it.
constexpr std::string_view docid = "kovra-import";

std::string RequestOf(const Outcome& outcome, std::span<const Unit> units) {
    std::vector<const Row*> rows;
    for (const Unit& unit : units) {
        for (const RowOutcome* const row : unit.rows) {
            rows.push_back(&row->row);
        }
    }
    return BuildRequest(*outcome.classFields, outcome.columns, rows, docid, "ADD");
}

} // namespace

void RunClass(Outcome& outcome, std::span<Unit> units, Session& session, const Transact& transact,
              const RunOptions& options, const RunListeners& listeners) {
    const bool oneByOne = outcome.classFields->className == "ClsPriceJustVou";
    const std::size_t most = oneByOne ? 1 : options.unitsPerRequest;
    while (!units.empty()) {
        const std::span<Unit> asked = units.first(std::min(most, units.size()));
        if (listeners.requestBegins) {
            listeners.requestBegins(asked);
        }
        Observer observer(asked, options.taken, listeners);
        try {
            transact(session.environment(), RequestOf(outcome, asked), &session.login(), &observer);
        } catch (const host::Error& error) {
            // The class itself could not be created.
            observer.RequestRefused(std::to_string(error.number()), error.description());
        }
        observer.End();
        if (listeners.requestEnded) {
            listeners.requestEnded();
        }
        if (observer.stopped()) {
            outcome.interrupted = true;
            return;
        }
        if (observer.refusal() || observer.begun() == 0) {
            outcome.refused = observer.refusal().value_or(RequestRefusal{});
            return;
        }
        units = units.subspan(observer.begun());
    }
}

std::optional<RequestRefusal> AskWhetherOpen(const Outcome& outcome, Session& session, const Transact& transact) {
    if (!outcome.classFields->document.empty()) {
        return std::nullopt;
    }
    const RunListeners nobody;
    Observer observer({}, RowState::ready, nobody);
    try {
        transact(session.environment(), RequestOf(outcome, {}), &session.login(), &observer);
    } catch (const host::Error& error) {
        observer.RequestRefused(std::to_string(error.number()), error.description());
    }
    observer.End();
    return observer.refusal();
}

} // namespace importing
