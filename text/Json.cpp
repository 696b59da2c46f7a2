#include "text/Json.h"

#include "text/Utf8.h"

#include <cstddef>

namespace text {
namespace {

/// What stands for a byte or surrogate that JSON text cannot hold.
constexpr char32_t replacement = 0xFFFD;

void AppendControl(std::string& json, unsigned char c) {
    constexpr std::string_view digits = "0123456789abcdef";
    json.append("\\u00");
    json.push_back(digits[c >> 4]);
    json.push_back(digits[c & 0xF]);
}

} // namespace

void AppendJsonString(std::string& json, std::string_view text) {
    json.push_back('"');
    for (std::size_t position = 0; position < text.size();) {
        const auto [codePoint, length, valid] = ReadUtf8(text, position);
        if (!valid || IsSurrogate(codePoint)) {
            AppendUtf8(json, replacement);
            position += length;
            continue;
        }
        const char c = text[position];
        if (length > 1) {
            json.append(text.substr(position, length));
        } else if (c == '"' || c == '\\') {
            json.push_back('\\');
            json.push_back(c);
        } else if (c == '\n') {
            json.append("\\n");
        } else if (c == '\r') {
            json.append("\\r");
        } else if (c == '\t') {
            json.append("\\t");
        } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
            AppendControl(json, static_cast<unsigned char>(c));
        } else {
            json.push_back(c);
        }
        position += length;
    }
    json.push_back('"');
}

/// A value ends with a letter, a digit, a quote or a bracket that closes; behind everything else stands the first one.
void JsonWriter::Separate() {
    if (!json_.empty() && std::string_view("{[:,\n").find(json_.back()) == std::string_view::npos) {
        json_.push_back(',');
    }
}

JsonWriter& JsonWriter::NextLine() {
    Separate();
    if (json_.ends_with(',')) {
        json_.push_back('\n');
    }
    return *this;
}

JsonWriter& JsonWriter::Open(char bracket) {
    Separate();
    json_.push_back(bracket);
    return *this;
}

JsonWriter& JsonWriter::Close(char bracket) {
    json_.push_back(bracket);
    return *this;
}

JsonWriter& JsonWriter::Name(std::string_view name) {
    Text(name);
    json_.push_back(':');
    return *this;
}

JsonWriter& JsonWriter::Text(std::string_view text) {
    Separate();
    AppendJsonString(json_, text);
    return *this;
}

JsonWriter& JsonWriter::Word(std::string_view word) {
    Separate();
    json_.append(word);
    return *this;
}

} // namespace text
