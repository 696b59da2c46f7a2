#pragma once

#include "refhost/xml/Tree.h"

#include <string>
#include <string_view>

namespace refhost::xml {

/// The node as XML text in MSXML's form: nothing added between nodes, attributes in double quotes, `<a/>` for an
/// element without content. The document starts with a declaration, without encoding, when its text had one.
///
/// Line breaks and tabs in attributes, and carriage returns in text, are written as character references, so that
/// reading gives them back. An element carries the declarations of namespaces that stand above it and that it needs. A
/// character that XML cannot hold is written as U+FFFD.
std::string ToXml(const Tree& tree, const Node& node);
/// `name="value"`.
std::string ToXml(const Attribute& attribute);

/// The text of the node and of all its descendants, comments and instructions left out; of a comment or instruction
/// its own content.
std::string TextOf(const Node& node);

} // namespace refhost::xml
