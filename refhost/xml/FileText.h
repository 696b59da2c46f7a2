#pragma once

#include <string>
#include <string_view>

namespace refhost::xml {

/// The text of an XML file in UTF-8, decoded by its byte order mark, else by the encoding that its declaration names,
/// else as UTF-8. GB2312 and GBK are read as Windows does, as code page 936.
/// @param path the file; "-" for standard input
/// Throws std::runtime_error, with the file's name, when the file cannot be read, names an unknown encoding or holds
/// bytes that are not in its encoding.
std::string ReadXmlFile(const std::string& path);

/// The text of any other file, decoded by its byte order mark, else as UTF-8. Throws as the function above.
std::string ReadTextFile(const std::string& path);

/// The bytes of an XML file as `ReadXmlFile` decodes them. Throws std::runtime_error without a file's name.
std::string DecodeXmlBytes(std::string_view bytes);

} // namespace refhost::xml
