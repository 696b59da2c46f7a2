#include "refhost/xml/Utf8.h"

#include <cstdint>
#include <cstring>

namespace refhost::xml {

bool IsUtf8(std::string_view bytes) noexcept {
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto* const end = at + bytes.size();
    const auto follows = [](unsigned char byte) { return (byte & 0xC0) == 0x80; };
    while (at != end) {
        // Most text is ASCII: eight bytes at a time.
        if (end - at >= 8) {
            std::uint64_t eight = 0;
            std::memcpy(&eight, at, sizeof eight);
            if ((eight & 0x8080808080808080U) == 0) {
                at += 8;
                continue;
            }
        }
        const unsigned char lead = *at;
        if (lead < 0x80) {
            ++at;
        } else if (lead < 0xE0) {
            if (lead < 0xC2 || end - at < 2 || !follows(at[1]))
                return false;
            at += 2;
        } else if (lead < 0xF0) {
            if (end - at < 3 || !follows(at[1]) || !follows(at[2]))
                return false;
            const bool overlong = lead == 0xE0 && at[1] < 0xA0;
            const bool surrogate = lead == 0xED && at[1] >= 0xA0;
            if (overlong || surrogate)
                return false;
            at += 3;
        } else {
            if (lead > 0xF4 || end - at < 4 || !follows(at[1]) || !follows(at[2]) || !follows(at[3]))
                return false;
            const bool overlong = lead == 0xF0 && at[1] < 0x90;
            const bool beyond = lead == 0xF4 && at[1] >= 0x90;
            if (overlong || beyond)
                return false;
            at += 4;
        }
    }
    return true;
}

} // namespace refhost::xml
