#pragma once

#include "host/Value.h"

#include <optional>
#include <string>

namespace refhost {

/// A field's value as the text of an element; nothing for Null. Bits are "1" and "0", dates "YYYY-MM-DD" with
/// " hh:mm:ss" where they have a time of day, bytes hexadecimal digits, numbers as the run-time writes them.
std::optional<std::string> FieldText(const host::Value& value);

} // namespace refhost
