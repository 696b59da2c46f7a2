#include "import/encoding/Encoding.h"

#include "import/reading/UnreadableFile.h"

#include <utility>

namespace importing {

std::optional<std::string> Decode(std::string_view bytes, const std::string& name) {
    std::optional<os::Decoded> decoded = os::Decode(bytes, name);
    if (!decoded) {
        throw UnreadableFile({Message::encodingUnknown, {name}});
    }
    return decoded->read == bytes.size() ? std::optional(std::move(decoded->text)) : std::nullopt;
}

} // namespace importing
