#include "refhost/xml/FileText.h"

#include "os/Encoding.h"
#include "os/Files.h"
#include "refhost/xml/WhiteSpace.h"
#include "text/SameName.h"
#include "text/SystemWords.h"
#include "text/Utf8.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace refhost::xml {
namespace {

constexpr std::string_view standardInput = "-";

struct Mark {
    std::string_view bytes;
    const char* encoding;
};

/// Byte order marks, and how the first '<' of a file without one looks in 16 bits.
constexpr std::array<Mark, 3> byteOrderMarks = {{
    {std::string_view("\xEF\xBB\xBF", 3), "UTF-8"},
    {std::string_view("\xFF\xFE", 2), "UTF-16LE"},
    {std::string_view("\xFE\xFF", 2), "UTF-16BE"},
}};
constexpr std::array<Mark, 2> wideStarts = {{
    {std::string_view("<\0", 2), "UTF-16LE"},
    {std::string_view("\0<", 2), "UTF-16BE"},
}};

std::string Convert(std::string_view bytes, const std::string& encoding) {
    std::optional<os::Decoded> decoded = os::Decode(bytes, encoding);
    if (!decoded)
        throw text::Fault({"unknown encoding '" + encoding + "'", "未知的编码 '" + encoding + "'"});
    if (decoded->read != bytes.size()) {
        const std::string at = std::to_string(decoded->read);
        throw text::Fault({"byte " + at + " is not in the encoding '" + encoding + "'",
                           "第 " + at + " 字节不属于编码 '" + encoding + "'"});
    }
    return std::move(decoded->text);
}

std::string Decode(std::string_view bytes, const std::string& encoding) {
    if (text::SameName(encoding, "UTF-8") || text::SameName(encoding, "UTF8")) {
        if (!text::IsUtf8(bytes))
            throw text::Fault({"the file is not valid UTF-8", "文件不是有效的 UTF-8"});
        return std::string(bytes);
    }
    if (text::SameName(encoding, "GB2312") || text::SameName(encoding, "GBK"))
        return Convert(bytes, "CP936");
    return Convert(bytes, encoding);
}

/// The encoding of the byte order mark, which is taken off, or nullptr.
const char* TakeMark(std::string_view& bytes) {
    for (const Mark& mark : byteOrderMarks) {
        if (bytes.starts_with(mark.bytes)) {
            bytes.remove_prefix(mark.bytes.size());
            return mark.encoding;
        }
    }
    return nullptr;
}

/// The encoding that the XML declaration names, or nothing.
std::string DeclaredEncoding(std::string_view bytes) {
    constexpr std::string_view start = "<?xml";
    if (!bytes.starts_with(start))
        return {};
    std::string_view declaration = bytes.substr(start.size(), bytes.find("?>") - start.size());
    constexpr std::string_view name = "encoding";
    // Steps over the pseudo-attributes, so that a value holding the word is not taken for it.
    while (true) {
        const std::size_t at = declaration.find_first_not_of(blanks);
        const std::size_t equals = declaration.find('=');
        if (at == std::string_view::npos || equals == std::string_view::npos)
            return {};
        const std::size_t quote = declaration.find_first_not_of(blanks, equals + 1);
        if (quote == std::string_view::npos)
            return {};
        const std::size_t end = declaration.find(declaration[quote], quote + 1);
        if (end == std::string_view::npos)
            return {};
        if (declaration.substr(at).starts_with(name))
            return std::string(declaration.substr(quote + 1, end - quote - 1));
        declaration.remove_prefix(end + 1);
    }
}

[[noreturn]] void Fail(const std::string& path, const text::Words& reason) {
    const bool isInput = path == standardInput;
    throw text::Fault({"cannot read " + (isInput ? "standard input" : "'" + path + "'") + ": " + reason.english,
                       "无法读取" + (isInput ? "标准输入" : " '" + path + "'") + "：" + reason.chinese});
}

text::Words SystemWords(int error) { return text::SystemWords({error, std::generic_category()}); }

std::string ReadBytes(const std::string& path) {
    namespace fs = std::filesystem;
    const bool isInput = path == standardInput;
    std::error_code unknown;
    const fs::file_status status = isInput ? fs::file_status() : fs::status(os::PathOf(path), unknown);
    if (fs::is_directory(status))
        Fail(path, {"it is a folder", "这是一个文件夹"});
    std::FILE* const opened = isInput ? stdin : os::OpenFile(path, "rb");
    if (opened == nullptr)
        Fail(path, SystemWords(errno));
    const auto close = [](std::FILE* file) { return file == stdin ? 0 : std::fclose(file); };
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(opened, close);

    std::string bytes;
    if (fs::is_regular_file(status)) {
        const std::uintmax_t size = fs::file_size(os::PathOf(path), unknown);
        bytes.reserve(unknown ? 0 : static_cast<std::size_t>(size));
    }
    std::array<char, 1 << 16> block;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file.get()))
        bytes.append(block.data(), count);
    if (std::ferror(file.get()) != 0)
        Fail(path, SystemWords(errno));
    return bytes;
}

template <class Decoder> std::string ReadFile(const std::string& path, Decoder decode) {
    const std::string bytes = ReadBytes(path);
    try {
        return decode(bytes);
    } catch (const text::Fault& fault) {
        Fail(path, fault.words());
    }
}

} // namespace

std::string DecodeXmlBytes(std::string_view bytes) {
    if (const char* encoding = TakeMark(bytes))
        return Decode(bytes, encoding);
    for (const Mark& start : wideStarts) {
        if (bytes.starts_with(start.bytes))
            return Decode(bytes, start.encoding);
    }
    const std::string declared = DeclaredEncoding(bytes);
    // The declaration could be read byte by byte, so these are no 16-bit characters.
    if (text::SameName(declared.substr(0, 6), "UTF-16"))
        throw text::Fault({"the declaration names '" + declared + "', but the file is not in it",
                           "声明的编码是 '" + declared + "'，但文件并不是这种编码"});
    return Decode(bytes, declared.empty() ? "UTF-8" : declared);
}

std::string ReadXmlFile(const std::string& path) {
    return ReadFile(path, [](std::string_view bytes) { return DecodeXmlBytes(bytes); });
}

std::string ReadTextFile(const std::string& path) {
    return ReadFile(path, [](std::string_view bytes) {
        const char* const encoding = TakeMark(bytes);
        return Decode(bytes, encoding == nullptr ? "UTF-8" : encoding);
    });
}

} // namespace refhost::xml
