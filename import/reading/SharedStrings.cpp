#include "import/reading/SharedStrings.h"

#include "text/Utf8.h"

#include <charconv>

namespace importing {

void DecodeEscapes(std::string& text) {
    constexpr std::size_t length = 7;
    for (std::size_t at = text.find("_x"); at != std::string::npos; at = text.find("_x", at + 1)) {
        if (at + length > text.size() || text[at + length - 1] != '_') {
            continue;
        }
        unsigned code = 0;
        const char* const digits = text.data() + at + 2;
        const auto [end, error] = std::from_chars(digits, digits + 4, code, 16);
        if (error != std::errc() || end != digits + 4) {
            continue;
        }
        std::string character;
        text::AppendUtf8(character, code);
        text.replace(at, length, character);
    }
}

void ReadStringItem(PartReader& reader, std::string& text) {
    text.clear();
    bool inText = false;
    for (int depth = 1; depth > 0;) {
        switch (reader.Next()) {
        case PartReader::Event::start:
            if (reader.Name() == "rPh") {
                reader.Skip();
                break;
            }
            inText = reader.Name() == "t";
            ++depth;
            break;
        case PartReader::Event::end:
            inText = false;
            --depth;
            break;
        case PartReader::Event::text:
            if (inText) {
                text.append(reader.Text());
            }
            break;
        case PartReader::Event::none:
            return;
        }
    }
    DecodeEscapes(text);
}

std::vector<std::string> ReadSharedStrings(Archive& archive, const std::string& part) {
    std::vector<std::string> strings;
    PartReader reader(archive, part);
    for (auto event = reader.Next(); event != PartReader::Event::none; event = reader.Next()) {
        if (event == PartReader::Event::start && reader.Name() == "si") {
            ReadStringItem(reader, strings.emplace_back());
        }
    }
    return strings;
}

} // namespace importing
