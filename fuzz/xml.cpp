// Any text as an XML document; behind a NUL, a path to select by.
#include "fuzz/Require.h"
#include "host/Error.h"
#include "refhost/xml/Document.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

void CheckRoundTrip(const refhost::xml::Document& document) {
    const std::string xml = document.Xml();
    refhost::xml::Document again;
    fuzz::Require(again.LoadXML(xml), "what was written does not load", xml);
    fuzz::Require(again.Xml() == xml, "what was written is not stable", xml);
    fuzz::Require(again.DocumentElement()->Text() == document.DocumentElement()->Text(), "a text changed", xml);
}

void CheckPath(const refhost::xml::Document& document, std::string_view path) {
    try {
        const host::DOMNodeList nodes = document.SelectNodes(path);
        const host::DOMNodePtr first = document.SelectSingleNode(path);
        fuzz::Require((first == nullptr) == nodes.empty(), "one node and all nodes differ", path);
        fuzz::Require(first == nullptr || first->Xml() == nodes.front()->Xml(), "another node is first", path);
    } catch (const host::Error& error) {
        fuzz::Require(!error.description().empty(), "an error that says nothing", path);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t end = text.find('\0');
    refhost::xml::Document document;
    if (!document.LoadXML(text.substr(0, end))) {
        fuzz::Require(document.DocumentElement() == nullptr, "a refused text leaves a document", text);
        fuzz::Require(!document.LoadError().empty(), "a refused text leaves no reason", text);
        return 0;
    }
    CheckRoundTrip(document);
    if (end != std::string_view::npos) {
        CheckPath(document, text.substr(end + 1));
    }
    return 0;
}
