#include "ModPub/RowKey.h"

#include <cstddef>

namespace ModPub {

void AppendKeyPart(std::string& key, std::string_view label, std::string_view value) {
    constexpr std::size_t usualSize = 120;
    if (key.empty()) {
        key.reserve(usualSize);
    } else {
        key.append("， ");
    }
    if (!value.empty()) {
        key.append(label).append(value);
    }
}

} // namespace ModPub
