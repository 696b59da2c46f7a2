#pragma once

#include "ModPub/RowLookups.h"
#include "host/Value.h"

#include <string>

namespace kovra {

/// The item's tracking flag as it stands, Null included; false for an unknown item. Throws the database's error.
host::Value GetTrackFlag(ModPub::RowLookups& lookups, const std::string& cInvCode);

} // namespace kovra
