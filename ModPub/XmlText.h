#pragma once

#include <string>
#include <string_view>

namespace ModPub {

// XML text in MSXML's form. What reading would change is written as character reference: tabs and line feeds in
// attributes, carriage returns everywhere. A character that XML cannot hold is written as U+FFFD.

/// Appends ` name="value"`, with its leading blank.
/// @param name an XML name
/// @param value UTF-8
void AppendXmlAttribute(std::string& xml, std::string_view name, std::string_view value);

/// Appends `text`, UTF-8, as the content of an element.
void AppendXmlText(std::string& xml, std::string_view text);

} // namespace ModPub
