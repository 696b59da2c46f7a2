#pragma once

#include "refhost/xml/Tree.h"

#include <memory>
#include <string>
#include <string_view>

namespace refhost::xml {

/// What reading a text gave.
struct ParseResult {
    /// The document, or nullptr for a text that is not well-formed.
    std::unique_ptr<Tree> tree;
    /// Why there is no document: "line 3: Opening and ending tag mismatch: …". The lines are those of the text with
    /// its parameter entities written out.
    std::string reason;
};

/// Reads a document strictly: what is not well-formed is refused, never mended.
///
/// Texts of white space alone are dropped outside `xml:space="preserve"`. Nothing outside the text is ever read: an
/// external subset is left out, and a reference to an external entity is refused. Parameter entities may multiply the
/// text tenfold beyond a first megabyte, and so may internal entities and the defaults of attributes together. The
/// document type itself is not kept. An element has at most 2,048 attributes.
ParseResult Parse(std::string_view xml);
/// The same by libxml2 alone, which reads every text; `Parse` has it read those that are not plain (PlainText.h).
ParseResult ParseByLibxml(std::string_view xml);

} // namespace refhost::xml
