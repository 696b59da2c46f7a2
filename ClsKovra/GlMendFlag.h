#pragma once

#include "ModPub/ImportState.h"

#include <string_view>

namespace kovra {

/// Whether `system` ("IA", "GL") is closed for `period` of the login's year; period 0 is the opening.
/// Throws 94 for a Null flag, and the database's error.
bool GlMendFlag(ModPub::ImportState& state, std::string_view system, int period);

} // namespace kovra
