#pragma once

#include "text/Fault.h"

#include <string_view>
#include <system_error>

namespace os {

/// Why the system has just failed at a file. One that another program holds is std::errc::device_or_resource_busy.
std::error_code LastFileError() noexcept;

/// Why a file could not be used, in words that tell what to do where another program holds it.
text::Words FileWords(const std::error_code& reason);

/// The fault of a file that could not be used: its name, and why.
text::Fault FileFault(std::string_view name, const std::error_code& reason);

} // namespace os
