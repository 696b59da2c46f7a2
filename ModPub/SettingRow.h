#pragma once

#include "ModPub/FunctionRef.h"
#include "ModPub/ImportState.h"

#include <string>

namespace ModPub {

/// Imports one row of a settings class and records its outcome under the key as it stands afterwards: none when
/// `checkAndSave` returns false (it has recorded the refusal), code 101 with the description of an error that it lets
/// out, else code 0 with "ok". Throws only what recording throws.
void ImportSetting(ImportState& state, const std::string& key, FunctionRef<bool()> checkAndSave);

/// Checks one row: true when `checks` leaves the message empty. Else the refusal is recorded under the key as it stands
/// then. An error that `checks` lets out refuses the row with the message as it stood; its own text is not reported.
/// Throws only what recording throws.
bool CheckSetting(ImportState& state, const std::string& key, FunctionRef<void(std::string& message)> checks);

} // namespace ModPub
