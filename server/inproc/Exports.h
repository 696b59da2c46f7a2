#pragma once

#include "server/inproc/Registration.h"

namespace server {

/// What this library offers; each library that contains `Exports.cpp` defines it once.
const Registrant& LibraryContents() noexcept;

} // namespace server
