#pragma once

#include "host/DOMDocument.h"

#include <string>
#include <string_view>

namespace ModPub {

/// The text of the first node that `path` selects under `node`, its descendants' text included; the empty text when
/// there is none, so that a missing field and an empty one read the same. Throws for an invalid path.
std::string GetNodeText(const host::DOMNode& node, std::string_view path);

} // namespace ModPub
