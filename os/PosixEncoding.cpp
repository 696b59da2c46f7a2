#include "os/PosixEncoding.h"

#include "os/Encoding.h"
#include "text/Utf8.h"

#include <array>
#include <cerrno>
#include <memory>
#include <type_traits>

#include <iconv.h>

namespace os {
namespace {

using Converter = std::unique_ptr<std::remove_pointer_t<iconv_t>, int (*)(iconv_t)>;

Converter OpenConverter(const std::string& to, const std::string& from) {
    const iconv_t opened = iconv_open(to.c_str(), from.c_str());
    // iconv's own value for failure.
    const auto none = reinterpret_cast<iconv_t>(-1); // NOLINT(performance-no-int-to-ptr)
    return {opened == none ? nullptr : opened, &iconv_close};
}

/// Appends what `from` begins with, as far as it can be converted, and takes it off.
void Convert(const Converter& converter, std::string& to, std::string_view& from) {
    std::array<char, 1 << 16> block;
    bool goesOn = true;
    while (goesOn && !from.empty()) {
        // iconv only reads through this pointer; its signature is older than const.
        char* next = const_cast<char*>(from.data());
        std::size_t left = from.size();
        char* end = block.data();
        std::size_t room = block.size();
        const std::size_t done = iconv(converter.get(), &next, &left, &end, &room);
        goesOn = done != static_cast<std::size_t>(-1) || errno == E2BIG;
        to.append(block.data(), end);
        from.remove_prefix(from.size() - left);
    }
}

} // namespace

std::optional<Decoded> Decode(std::string_view bytes, const std::string& name) {
    // A "/" would ask iconv to guess what it cannot convert; no name is the locale's encoding.
    const bool isName = !name.empty() && name.find('/') == std::string::npos;
    const Converter converter = OpenConverter("UTF-8", isName ? name : "no encoding");
    if (!converter) {
        return std::nullopt;
    }
    Decoded decoded;
    std::string_view rest = bytes;
    Convert(converter, decoded.text, rest);
    decoded.read = bytes.size() - rest.size();
    return decoded;
}

std::string Encode(std::string_view text, const std::string& name) {
    const Converter converter = OpenConverter(name, "UTF-8");
    std::string encoded;
    while (converter && !text.empty()) {
        Convert(converter, encoded, text);
        if (!text.empty()) {
            const text::Utf8Character character = text::ReadUtf8(text, 0);
            encoded.append(character.valid ? std::string_view("?") : text.substr(0, 1));
            text.remove_prefix(character.length);
        }
    }
    return encoded.append(text);
}

} // namespace os
