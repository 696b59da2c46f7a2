#include "import/reading/OpenTable.h"

#include "import/file/ReadBytes.h"
#include "import/reading/Csv.h"
#include "import/reading/UnreadableFile.h"
#include "os/Encoding.h"
#include "text/Utf8.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace importing {
namespace {

using namespace std::string_view_literals;

/// How the two formats of workbooks begin: a zip archive, and the compound file of the old binary format.
constexpr std::string_view archiveStart = "PK\x03\x04"sv;
constexpr std::string_view compoundFileStart = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv;

struct Mark {
    std::string_view bytes;
    const char* encoding;
};
constexpr std::array<Mark, 3> byteOrderMarks = {
    {{"\xEF\xBB\xBF"sv, "UTF-8"}, {"\xFF\xFE"sv, "UTF-16LE"}, {"\xFE\xFF"sv, "UTF-16BE"}}};

os::Decoded Decode(std::string_view bytes, const std::string& encoding) {
    std::optional<os::Decoded> decoded = os::Decode(bytes, encoding);
    if (!decoded) {
        throw UnreadableFile({message::encodingUnknown, {encoding}});
    }
    return *std::move(decoded);
}

/// The first line of `bytes`, each byte that is not in the encoding shown as "?".
std::string FirstLine(std::string_view bytes, const std::string& encoding) {
    constexpr std::size_t longest = 80;
    bytes = bytes.substr(0, bytes.find_first_of("\r\n")).substr(0, longest);
    std::string line;
    while (!bytes.empty()) {
        const os::Decoded decoded = Decode(bytes, encoding);
        line.append(decoded.text);
        bytes.remove_prefix(decoded.read);
        if (!bytes.empty()) {
            line.push_back('?');
            bytes.remove_prefix(1);
        }
    }
    return line;
}

std::string DecodeAs(std::string_view bytes, const std::string& encoding) {
    os::Decoded decoded = Decode(bytes, encoding);
    if (decoded.read != bytes.size()) {
        throw UnreadableFile({message::notInEncoding, {encoding}});
    }
    return std::move(decoded.text);
}

} // namespace

std::string DecodeText(std::string_view bytes, const std::string& encoding) {
    for (const Mark& mark : byteOrderMarks) {
        if (bytes.starts_with(mark.bytes)) {
            return DecodeAs(bytes.substr(mark.bytes.size()), mark.encoding);
        }
    }
    if (!encoding.empty()) {
        return DecodeAs(bytes, encoding);
    }
    if (text::IsUtf8(bytes)) {
        return std::string(bytes);
    }
    if (os::Decoded chinese = Decode(bytes, "GB18030"); chinese.read == bytes.size()) {
        return std::move(chinese.text);
    }
    throw UnreadableFile({message::encodingUnclear, {FirstLine(bytes, "UTF-8"), FirstLine(bytes, "GB18030")}});
}

OpenFile::OpenFile(const std::string& path, const OpenOptions& options, const std::function<bool(Table&)>& fits) {
    std::string bytes = ReadBytes(path);
    if (bytes.starts_with(compoundFileStart)) {
        throw UnreadableFile({message::oldSpreadsheet, {path}});
    }
    if (bytes.starts_with(archiveStart)) {
        OpenWorkbook(path, options, fits);
        return;
    }
    std::string decoded = DecodeText(bytes, options.encoding);
    const char separator = DetectSeparator(decoded);
    table_ = std::make_unique<CsvTable>(std::move(decoded), separator);
}

void OpenFile::OpenWorkbook(const std::string& path, const OpenOptions& options,
                            const std::function<bool(Table&)>& fits) {
    workbook_ = std::make_unique<Workbook>(path);
    const std::vector<Workbook::Sheet>& sheets = workbook_->sheets();
    std::string names;
    for (const Workbook::Sheet& sheet : sheets) {
        names.append(names.empty() ? "" : "、").append(sheet.name);
    }
    std::optional<std::size_t> chosen;
    if (!options.sheet.empty()) {
        const auto found = std::ranges::find(sheets, options.sheet, &Workbook::Sheet::name);
        if (found == sheets.end()) {
            throw UnreadableFile({message::sheetUnknown, {options.sheet, names}});
        }
        chosen = static_cast<std::size_t>(found - sheets.begin());
    } else if (sheets.size() == 1) {
        chosen = 0;
    } else {
        for (std::size_t index = 0; index < sheets.size(); ++index) {
            if (sheets[index].hidden || !fits(*workbook_->Open(index))) {
                continue;
            }
            if (chosen) {
                throw UnreadableFile({message::sheetUnclear, {names}});
            }
            chosen = index;
        }
        if (!chosen) {
            throw UnreadableFile({message::sheetUnclear, {names}});
        }
    }
    table_ = workbook_->Open(*chosen);
}

} // namespace importing
