#include "ModPub/ImportState.h"

namespace ModPub {

void ImportState::AddOutcome(std::string_view key, long code, std::string_view description) {
    environment.GetEaiHelper().AddResultItem(*resultDocument, key, code, description);
    if (observer != nullptr) {
        observer->OutcomeRecorded(key, code, description);
    }
}

void ImportState::AddAccepted(std::string_view key) { AddOutcome(key, outcome::accepted, "ok"); }

void ImportState::AddRefused(std::string_view key, std::string_view message) {
    AddOutcome(key, outcome::refused, message);
}

} // namespace ModPub
