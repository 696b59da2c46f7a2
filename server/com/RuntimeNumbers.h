#pragma once

#include "host/Error.h"
#include "server/com/Platform.h"

#include <optional>
#include <string_view>

namespace server {

/// The number under which scripting clients show an HRESULT of automation, of COM or of the system; nothing for one
/// that they show as it is.
std::optional<host::ErrorNumber> RuntimeNumberOf(HRESULT result) noexcept;

/// The description that a Chinese system gives a number of the table; empty for another number.
std::string_view RuntimeNumberDescription(host::ErrorNumber number) noexcept;

} // namespace server
