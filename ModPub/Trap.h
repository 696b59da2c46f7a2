#pragma once

#include "host/Error.h"

namespace ModPub {

/// The error that a trap finds: to be called inside `catch (...)`. It turns whatever was thrown into a number and a
/// description: a `host::Error` as it is, a failed allocation into the run-time's error 7, anything else into
/// E_FAIL with its own text.
host::Error PendingError();

} // namespace ModPub
