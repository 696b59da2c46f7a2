#pragma once

#include "host/EaiHelper.h"

#include <memory>

namespace server {

/// The host's integration helper. Throws error 429 when it cannot be created.
std::unique_ptr<host::EaiHelper> MakeEaiHelper();

} // namespace server
