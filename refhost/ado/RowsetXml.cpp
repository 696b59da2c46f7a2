#include "refhost/ado/RowsetXml.h"

#include "ModPub/Dates.h"
#include "ModPub/XmlText.h"
#include "host/Error.h"
#include "refhost/ado/AdoTypes.h"
#include "text/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace refhost {
namespace {

using host::FieldType;

constexpr std::string_view head = "<xml xmlns:s=\"uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882\""
                                  " xmlns:dt=\"uuid:C2F41010-65B3-11d1-A29F-00AA00C14882\""
                                  " xmlns:rs=\"urn:schemas-microsoft-com:rowset\" xmlns:z=\"#RowsetSchema\">"
                                  "<s:Schema id=\"RowsetSchema\">"
                                  "<s:ElementType name=\"row\" content=\"eltOnly\" rs:CommandTimeout=\"30\">";
constexpr std::string_view tail = "<s:extends type=\"rs:rowbase\"/></s:ElementType></s:Schema><rs:data/></xml>";

/// What the prefix `z` stands for.
constexpr std::string_view rowNamespace = "#RowsetSchema";

struct Range {
    char32_t first;
    char32_t last;
};

/// The letters of XML 1.0 in the scripts that name columns, in order: Latin, Greek, Cyrillic, kana, Bopomofo,
/// ideographs, Hangul.
constexpr Range letters[] = {
    {'A', 'Z'},       {'_', '_'},       {'a', 'z'},       {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x131},
    {0x134, 0x13E},   {0x141, 0x148},   {0x14A, 0x17E},   {0x388, 0x38A},   {0x38E, 0x3A1},   {0x3A3, 0x3CE},
    {0x401, 0x40C},   {0x40E, 0x44F},   {0x451, 0x45C},   {0x3007, 0x3007}, {0x3021, 0x3029}, {0x3041, 0x3094},
    {0x30A1, 0x30FA}, {0x3105, 0x312C}, {0x4E00, 0x9FA5}, {0xAC00, 0xD7A3},
};

bool IsLetter(char32_t c) {
    return std::ranges::any_of(letters, [c](Range range) { return c >= range.first && c <= range.last; });
}

bool IsNameCharacter(char32_t c) { return IsLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.' || c == 0xB7; }

/// Whether an attribute may be called `name`. A prefix would need a declaration, so a colon makes it no name here;
/// "xmlns" would be a declaration itself.
bool IsAttributeName(std::string_view name) {
    if (name.empty() || name == "xmlns")
        return false;
    for (std::size_t at = 0; at < name.size();) {
        const auto [codePoint, length, valid] = text::ReadUtf8(name, at);
        if (!valid || !(at == 0 ? IsLetter(codePoint) : IsNameCharacter(codePoint)))
            return false;
        at += length;
    }
    return true;
}

/// The attribute of each column.
std::vector<std::string> AttributeNames(const Fields& fields) {
    std::vector<std::string> names;
    const auto taken = [&](const std::string& name) {
        return std::any_of(names.begin(), names.end(), [&](const std::string& other) { return other == name; });
    };
    for (const host::Field& field : fields) {
        std::string name = field.name;
        if (!IsAttributeName(name) || taken(name))
            name = "c" + std::to_string(names.size());
        while (taken(name))
            name += '_';
        names.push_back(std::move(name));
    }
    return names;
}

void AppendNumber(std::string& out, std::string_view name, int value) {
    ModPub::AppendXmlAttribute(out, name, std::to_string(value));
}

void AppendColumn(std::string& out, const host::Field& field, const std::string& name, std::size_t index) {
    out.append("<s:AttributeType");
    ModPub::AppendXmlAttribute(out, "name", name);
    if (name != field.name)
        ModPub::AppendXmlAttribute(out, "rs:name", field.name);
    AppendNumber(out, "rs:number", static_cast<int>(index) + 1);
    if (field.nullable)
        ModPub::AppendXmlAttribute(out, "rs:nullable", "true");
    ModPub::AppendXmlAttribute(out, "rs:writeunknown", "true");

    const AdoType& datatype = DescribeType(field.type);
    out.append("><s:datatype");
    ModPub::AppendXmlAttribute(out, "dt:type", datatype.name);
    if (datatype.dbtype != nullptr)
        ModPub::AppendXmlAttribute(out, "rs:dbtype", datatype.dbtype);
    AppendNumber(out, "dt:maxLength", datatype.size != 0 ? datatype.size : field.definedSize);
    if (field.type == FieldType::numeric)
        AppendNumber(out, "rs:scale", field.scale);
    if (field.type == FieldType::dbTimeStamp)
        AppendNumber(out, "rs:scale", 3);
    if (const int precision = field.type == FieldType::numeric ? field.precision : datatype.precision; precision != 0)
        AppendNumber(out, "rs:precision", precision);
    if (datatype.isLong)
        ModPub::AppendXmlAttribute(out, "rs:long", "true");
    if (datatype.fixedLength)
        ModPub::AppendXmlAttribute(out, "rs:fixedlength", "true");
    if (!field.nullable)
        ModPub::AppendXmlAttribute(out, "rs:maybenull", "false");
    out.append("/></s:AttributeType>");
}

/// "yyyy-mm-ddThh:mm:ss", the part of it that the column's type has.
std::string DateText(host::Date date, FieldType type) {
    constexpr double msPerDay = 86'400'000;
    const double timeOfDay = std::abs(date.days - std::trunc(date.days));
    const std::int64_t fraction = std::llround(timeOfDay * msPerDay) % 1000;
    // Without its milliseconds, so that taking it apart rounds nothing. Before day 0 the time counts away from it.
    const double fractionDays = std::copysign(static_cast<double>(fraction) / msPerDay, date.days);
    const auto parts = ModPub::SplitDate(host::Date{date.days - fractionDays});
    if (!parts)
        throw host::Error(host::error_number::unspecified, "A date outside the years 100 to 9999.");

    std::array<char, 64> text;
    const auto format = [&](const char* pattern, auto... values) {
        const int length = std::snprintf(text.data(), text.size(), pattern, values...);
        return std::string(text.data(), static_cast<std::size_t>(length));
    };
    std::string calendar = format("%04d-%02d-%02d", parts->year, parts->month, parts->day);
    if (type == FieldType::dbDate)
        return calendar;
    std::string clock = format("%02d:%02d:%02d", parts->hour, parts->minute, parts->second);
    if (fraction != 0)
        clock += format(".%03d000000", static_cast<int>(fraction));
    return type == FieldType::dbTime ? clock : calendar + "T" + clock;
}

std::string HexText(const std::vector<std::uint8_t>& bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text.push_back(digits[byte >> 4U]);
        text.push_back(digits[byte & 15U]);
    }
    return text;
}

/// The shortest decimal number that reads back as the same one, without an exponent.
template <class Number> std::string NumberText(Number number) {
    std::array<char, 512> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed).ptr;
    return {text.data(), end};
}

/// A value as it stands in the attribute of a column of `type`; Null and the value that was never set have none.
struct ToAttributeText {
    FieldType type;

    using Text = std::optional<std::string>;
    Text operator()(host::Empty) const { return std::nullopt; }
    Text operator()(host::Null) const { return std::nullopt; }
    Text operator()(bool value) const { return value ? "True" : "False"; }
    Text operator()(std::int64_t value) const {
        return type == FieldType::boolean ? (*this)(value != 0) : std::to_string(value);
    }
    Text operator()(float value) const { return NumberText(value); }
    Text operator()(double value) const { return NumberText(value); }
    Text operator()(const host::Decimal& value) const { return value.text; }
    Text operator()(const std::string& value) const { return value; }
    Text operator()(host::Date value) const { return DateText(value, type); }
    Text operator()(const host::Bytes& value) const { return HexText(value.data); }
};

[[noreturn]] void FailToSave() {
    throw host::Error(host::error_number::unspecified, "The recordset cannot be saved as XML.");
}

/// A text as XML holds it: U+FFFD in the place of control characters. Throws where that is not all that XML lacks.
std::string HeldByXml(std::string text) {
    const auto isLacking = [](char c) { return c >= 0 && c < 0x20 && c != '\t' && c != '\n' && c != '\r'; };
    if (!text::IsAscii(text) &&
        (!text::IsUtf8(text) || text.find("\uFFFE") != std::string::npos || text.find("\uFFFF") != std::string::npos))
        FailToSave();
    if (std::ranges::none_of(text, isLacking))
        return text;
    std::string held;
    for (const char c : text)
        held.append(isLacking(c) ? "\uFFFD" : std::string(1, c));
    return held;
}

} // namespace

const RowsetShape& RowsetShapes::Of(const std::shared_ptr<const Fields>& fields) {
    if (const auto* const known = std::ranges::find(shapes_, fields, &RowsetShape::fields); known != shapes_.end())
        return *known;
    RowsetShape shape{fields, AttributeNames(*fields), std::string(head)};
    for (std::size_t column = 0; column < fields->size(); ++column)
        AppendColumn(shape.empty, (*fields)[column], shape.names[column], column);
    shape.empty.append(tail);
    return shapes_.at(next_++ % shapes_.size()) = std::move(shape);
}

void WriteRowset(const ResultSet& result, RowsetShapes& shapes, host::DOMDocument& document) {
    const Fields& fields = *result.fields;
    const RowsetShape& shape = shapes.Of(result.fields);
    if (!document.LoadXML(shape.empty))
        FailToSave();
    if (result.rowCount == 0)
        return;
    // Row by row: the text of all of them would stand beside the document that it becomes.
    const host::DOMNodePtr data = document.SelectSingleNode("/xml/rs:data");
    std::size_t cell = 0;
    for (std::size_t row = 0; row < result.rowCount; ++row) {
        const host::DOMNodePtr element = document.CreateElementNS("z:row", rowNamespace);
        for (std::size_t column = 0; column < fields.size(); ++column, ++cell) {
            const host::Value value = result.cells[cell];
            if (auto text = std::visit(ToAttributeText{fields[column].type}, value.storage()))
                element->SetAttribute(shape.names[column], HeldByXml(std::move(*text)));
        }
        data->AppendChild(*element);
    }
}

} // namespace refhost
