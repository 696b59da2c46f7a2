#pragma once

#include "host/DOMDocument.h"
#include "refhost/xml/Selector.h"

#include <vector>

namespace refhost::xml {

/// A handle on what a path selected, or nullptr for nothing.
host::DOMNodePtr MakeHandle(Selector& selector, const Selected& selected);
host::DOMNodeList MakeHandles(Selector& selector, const std::vector<Selected>& selected);

} // namespace refhost::xml
