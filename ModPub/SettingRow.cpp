#include "ModPub/SettingRow.h"

#include "ModPub/Trap.h"

namespace ModPub {

void ImportSetting(ImportState& state, const std::string& key, FunctionRef<bool()> checkAndSave) {
    std::string failure;
    try {
        if (!checkAndSave()) {
            return;
        }
    } catch (...) {
        failure = PendingError().description();
    }
    // A row whose save was refused gets its "ok" all the same: callers know both outcomes.
    if (failure.empty()) {
        state.AddAccepted(key);
    } else {
        state.AddRefused(key, failure);
    }
}

bool CheckSetting(ImportState& state, const std::string& key, FunctionRef<void(std::string& message)> checks) {
    std::string message;
    try {
        checks(message);
        if (message.empty()) {
            return true;
        }
    } catch (...) {
        // The message stays as it stood, as a rule empty: callers know this outcome of a value with a quote.
    }
    state.AddRefused(key, message);
    return false;
}

} // namespace ModPub
