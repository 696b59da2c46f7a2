#pragma once

#include "tests/faults/DisturbEveryOperation.h"
#include "tests/support/Import.h"
#include "tests/support/rules/SettingRules.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace test {

/// The calls of a class of account settings, each held to the rules whatever happens at one of its operations.
template <class Class> struct SettingsCalls {
    std::string className;
    /// As those of `PlayedCall`.
    std::string setup;
    std::string restore;
    std::string contents;
    /// The request's.
    std::string rows;
    /// What `restore` leaves, by the name that the rules know it by.
    std::vector<std::pair<std::string, std::string>> stored;
    std::string (*play)(Play& play, const std::function<std::string()>& run) = PlaySettingsCall;

    /// The operation "ADD" or "EDIT".
    /// @param played what becomes of `rows`
    void Disturb(const std::string& proc, const std::vector<SettingRow>& played) const {
        DisturbEveryOperation(Call(proc, [&played](Play& rules) { return PlaySettings(rules, played); }));
    }

    void DisturbEmpty(const std::string& table) const {
        PlayedCall call = Call("EMPTY", [&table](Play& rules) { return PlayEmpty(rules, table); });
        call.connectionMore = ";Delete Star=Accept";
        DisturbEveryOperation(call);
    }

private:
    PlayedCall Call(const std::string& proc, const std::function<std::string(Play&)>& operation) const {
        return {.name = className + " " + proc,
                .proc = proc,
                .setup = setup,
                .restore = restore,
                .contents = {contents},
                .run = TransactOf<Class>(Request(proc, rows)),
                .rules = [this, operation](Play& rules) {
                    for (const auto& [name, row] : stored) {
                        rules.Put(name, row);
                    }
                    return play(rules, [&] { return operation(rules); });
                }};
    }
};

} // namespace test
