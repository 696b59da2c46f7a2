#pragma once

#include "host/DOMDocument.h"

#include <string_view>

namespace kovra {

/// Sets the text of the row's first child `name`. Throws 91 when there is none.
void SetChildText(const host::DOMNode& row, std::string_view name, std::string_view value);

} // namespace kovra
