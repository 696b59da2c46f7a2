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

Converter OpenConverter(const char* to, const char* from) {
    const iconv_t opened = iconv_open(to, from);
    // iconv's own value for failure.
    const auto none = reinterpret_cast<iconv_t>(-1); // NOLINT(performance-no-int-to-ptr)
    return {opened == none ? nullptr : opened, &iconv_close};
}

} // namespace

std::optional<Decoded> Decode(std::string_view bytes, const std::string& name) {
    // A "/" would ask iconv to guess what it cannot convert; no name is the locale's encoding.
    const bool isName = !name.empty() && name.find('/') == std::string::npos;
    const Converter converter = OpenConverter("UTF-8", isName ? name.c_str() : "no encoding");
    if (!converter) {
        return std::nullopt;
    }
    Decoded decoded;
    std::array<char, 1 << 16> block;
    // iconv only reads through this pointer; its signature is older than const.
    char* from = const_cast<char*>(bytes.data());
    std::size_t left = bytes.size();
    bool goesOn = true;
    while (goesOn && left != 0) {
        char* to = block.data();
        std::size_t room = block.size();
        const std::size_t done = iconv(converter.get(), &from, &left, &to, &room);
        goesOn = done != static_cast<std::size_t>(-1) || errno == E2BIG;
        decoded.text.append(block.data(), to);
    }
    decoded.read = bytes.size() - left;
    return decoded;
}

bool InCodePage936(char32_t character) {
    thread_local const Converter converter = OpenConverter("CP936", "UTF-8");
    std::string utf8;
    text::AppendUtf8(utf8, character);
    std::array<char, 4> room;
    char* from = utf8.data();
    std::size_t left = utf8.size();
    char* to = room.data();
    std::size_t space = room.size();
    return iconv(converter.get(), &from, &left, &to, &space) != static_cast<std::size_t>(-1);
}

} // namespace os
