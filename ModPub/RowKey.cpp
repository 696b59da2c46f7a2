#include "ModPub/RowKey.h"

namespace ModPub {

void AppendKeyPart(std::string& key, std::string_view label, std::string_view value) {
    if (!key.empty()) {
        key.append("， ");
    }
    if (!value.empty()) {
        key.append(label).append(value);
    }
}

} // namespace ModPub
