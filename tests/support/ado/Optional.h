#pragma once

#include "server/inproc/Automation.h"

#include <string>

namespace test {

/// The argument at `index` as text, empty when it was left out.
inline std::string TextOr(const server::Arguments& arguments, std::size_t index) {
    return arguments.Has(index) ? server::ToText(arguments[index]) : std::string();
}

/// The argument at `index` as whole number, `otherwise` when it was left out.
inline int NumberOr(const server::Arguments& arguments, std::size_t index, int otherwise) {
    return arguments.Has(index) ? server::ToInt(arguments[index]) : otherwise;
}

} // namespace test
