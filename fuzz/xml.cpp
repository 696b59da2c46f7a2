// Any text as an XML document; behind a NUL, a path to select by.
#include "fuzz/Require.h"
#include "host/Error.h"
#include "refhost/xml/Document.h"
#include "refhost/xml/Parser.h"
#include "refhost/xml/Path.h"
#include "refhost/xml/PlainReader.h"
#include "refhost/xml/Writer.h"
#include "refhost/xml/XPath.h"
#include "text/Utf8.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

/// The quick way through a tree finds what the XPath engine finds.
void CheckQuickPath(std::string_view xml, std::string_view text) {
    const refhost::xml::ParseResult parsed = refhost::xml::Parse(xml);
    const refhost::xml::Node& top = parsed.tree->document();
    try {
        const std::optional<refhost::xml::Path> path = refhost::xml::Path::Compile(text, *parsed.tree);
        if (!path) {
            return;
        }
        path->CheckPrefixes(*parsed.tree);
        std::vector<refhost::xml::Selected> quick;
        path->Select(top, [&](const refhost::xml::Selected& selected) {
            quick.push_back(selected);
            return true;
        });
        const auto slow = refhost::xml::Mirror(*parsed.tree, top).Select(refhost::xml::XPath(text), top);
        fuzz::Require(quick.size() == slow.size(), "the two ways find not as many nodes", text);
        for (std::size_t at = 0; at < quick.size(); ++at) {
            fuzz::Require(quick[at].node == slow[at].node && quick[at].attribute == slow[at].attribute,
                          "the two ways find other nodes", text);
        }
    } catch (const host::Error& error) {
        fuzz::Require(text.find(':') != std::string_view::npos, "one way knows no such path", error.description());
    }
}

/// What is read without libxml2 is what libxml2 reads: a comment at the end is not plain.
void CheckPlain(std::string_view text) {
    const std::unique_ptr<refhost::xml::Tree> plain = text::IsUtf8(text) ? refhost::xml::ReadPlain(text) : nullptr;
    if (plain) {
        const std::string comment = "<!--c-->";
        const refhost::xml::ParseResult full = refhost::xml::Parse(std::string(text) + comment);
        fuzz::Require(full.tree != nullptr, "only the plain reader reads it", text);
        fuzz::Require(ToXml(*full.tree, full.tree->document()) == ToXml(*plain, plain->document()) + comment,
                      "the plain reader reads something else", text);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t end = text.find('\0');
    CheckPlain(text.substr(0, end));
    refhost::xml::Document document;
    if (!document.LoadXML(text.substr(0, end))) {
        fuzz::Require(document.DocumentElement() == nullptr, "a refused text leaves a document", text);
        fuzz::Require(!document.LoadError().empty(), "a refused text leaves no reason", text);
        return 0;
    }
    CheckRoundTrip(document);
    if (end != std::string_view::npos) {
        CheckPath(document, text.substr(end + 1));
        CheckQuickPath(text.substr(0, end), text.substr(end + 1));
    }
    return 0;
}
