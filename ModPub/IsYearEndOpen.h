#pragma once

#include "host/Environment.h"

#include <cstdint>

namespace ModPub {

/// Whether the December closing of inventory accounting is still to be done for `year` (`GL_mend`, period 12).
/// Throws the database's error.
bool IsYearEndOpen(host::Environment& environment, std::int16_t year, host::Connection& connection);

} // namespace ModPub
