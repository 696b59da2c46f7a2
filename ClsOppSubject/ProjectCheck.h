#pragma once

#include "ModPub/RowLookups.h"

#include <string_view>

namespace kovra {

struct OppositeSetting;

/// Checks the row's project in its checked spelling: the message that refuses it, or the empty text.
/// Throws the database's error.
std::string_view ProjectFailure(ModPub::RowLookups& lookups, const OppositeSetting& setting);

} // namespace kovra
