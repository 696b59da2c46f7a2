#pragma once

#include "refhost/ado/ConnectionLost.h"
#include "refhost/ado/Database.h"

#include <functional>

namespace refhost {

/// `opener`, for databases that tell when their connection turns out to be lost.
/// @param tell hears of each operation that met the loss, before its error goes on; outlives the databases, never
/// throws
DatabaseOpener TellingOfLoss(DatabaseOpener opener, std::function<void(const ConnectionLost&)> tell);

} // namespace refhost
