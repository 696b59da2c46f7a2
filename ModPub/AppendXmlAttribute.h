#pragma once

#include <string>
#include <string_view>

namespace ModPub {

/// Appends ` name="value"` to an XML text. Line breaks and tabs are written as character references, so that reading
/// gives them back.
/// @param name an XML name
/// @param value UTF-8
void AppendXmlAttribute(std::string& xml, std::string_view name, std::string_view value);

} // namespace ModPub
