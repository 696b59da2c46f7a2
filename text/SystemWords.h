#pragma once

#include "text/Fault.h"

#include <system_error>

namespace text {

/// What the system means by an error: in English its own text, in Chinese ours for what can befall a file, else its
/// own.
Words SystemWords(const std::error_code& error);

} // namespace text
