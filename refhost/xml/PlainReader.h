#pragma once

#include "refhost/xml/Tree.h"

#include <memory>
#include <string_view>

namespace refhost::xml {

/// Reads a text as programs write requests: elements, attributes and characters, names of ASCII letters, digits and
/// '_', no entity but the five that XML has itself. That takes half the time that it takes by libxml2's parser
/// (bench/parts/XmlBench.cpp, ReadRequest and ReadCommentedRequest).
/// @param xml valid UTF-8 without NUL and without XML declaration
/// @return nullptr for every other text, well-formed or not: it is for libxml2 to read or to say what is wrong with it
std::unique_ptr<Tree> ReadPlain(std::string_view xml);

} // namespace refhost::xml
