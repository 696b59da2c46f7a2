#pragma once

#include "ModPub/ImportState.h"
#include "host/Value.h"

#include <string>

namespace kovra {

/// The item's tracking flag as it stands, Null included; false for an unknown item. Throws the database's error.
host::Value GetTrackFlag(ModPub::ImportState& state, const std::string& cInvCode);

} // namespace kovra
