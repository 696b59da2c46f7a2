#pragma once

#include "refhost/xml/Tree.h"

#include <optional>
#include <string_view>
#include <vector>

namespace refhost::xml {

/// A declaration of a namespace.
struct Declaration {
    /// Empty for the namespace of names without prefix.
    std::string_view prefix;
    std::string_view uri;
};

/// The prefix that an attribute of this name declares, or nothing for an attribute that declares none.
std::optional<std::string_view> DeclaredPrefix(std::string_view attributeName);

/// The prefix of a name, empty where there is none.
std::string_view PrefixOf(std::string_view name);

/// The declarations that stand above `top` and that names in it need, in the order of their need: with them `top` can
/// be read by itself.
std::vector<Declaration> NeededFromAbove(const Element& top);

/// Whether the prefix is declared at `element` or above it.
bool IsDeclaredAt(const Element& element, std::string_view prefix);

} // namespace refhost::xml
