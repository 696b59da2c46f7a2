#include "refhost/xml/Document.h"

#include "host/Error.h"
#include "refhost/xml/Declarations.h"
#include "refhost/xml/NodeHandle.h"
#include "refhost/xml/Parser.h"
#include "refhost/xml/Writer.h"

#include <utility>

namespace refhost::xml {

Document::Document(std::shared_ptr<RepeatedTexts> repeated) : repeated_(std::move(repeated)) {
    Reset(std::make_unique<Tree>(), std::make_shared<CompiledPaths>());
}

void Document::Reset(std::unique_ptr<Tree> tree, std::shared_ptr<CompiledPaths> paths) {
    selector_.reset();
    tree_ = std::move(tree);
    selector_ = std::make_unique<Selector>(*tree_, std::move(paths));
}

bool Document::LoadXML(std::string_view xml) {
    // The old content goes first: two documents at once would double the memory. `xml` never points into it, since
    // the document gives out copies only.
    if (tree_->document().first != nullptr)
        Reset(std::make_unique<Tree>(), std::make_shared<CompiledPaths>());
    loadError_.clear();
    if (RepeatedTexts::Copy known = repeated_ ? repeated_->Find(xml) : RepeatedTexts::Copy(); known.tree) {
        Reset(std::move(known.tree), std::move(known.paths));
        return true;
    }
    ParseResult result = Parse(xml);
    loadError_ = std::move(result.reason);
    if (!result.tree)
        return false;
    RepeatedTexts::Copy kept = repeated_
                                   ? repeated_->Note(xml, std::move(result.tree))
                                   : RepeatedTexts::Copy{std::move(result.tree), std::make_shared<CompiledPaths>()};
    Reset(std::move(kept.tree), std::move(kept.paths));
    return true;
}

host::DOMNodePtr Document::DocumentElement() const {
    for (Node* child = tree_->document().first; child != nullptr; child = child->next) {
        if (child->kind == NodeKind::element)
            return MakeHandle(*selector_, {child, nullptr});
    }
    return nullptr;
}

std::string Document::Xml() const {
    tree_->Unfold();
    return ToXml(*tree_, tree_->document());
}

host::DOMNodePtr Document::SelectSingleNode(std::string_view path) const {
    return MakeHandle(*selector_, selector_->First(tree_->document(), path));
}

host::DOMNodeList Document::SelectNodes(std::string_view path) const {
    return MakeHandles(*selector_, selector_->All(tree_->document(), path));
}

std::vector<std::string> Document::AttributesAt(std::string_view path, std::string_view name) const {
    return selector_->Values(path, name);
}

host::DOMNodePtr Document::CreateElement(std::string_view name) {
    const std::string_view prefix = PrefixOf(name);
    // What nobody declares would make a document that cannot be read again.
    if (!prefix.empty() && !tree_->HasPrefix(prefix))
        throw host::Error(host::error_number::unspecified,
                          "Reference to undeclared namespace prefix: '" + std::string(prefix) + "'.");
    return MakeHandle(*selector_, {&tree_->NewElement(tree_->Name(name)), nullptr});
}

std::unique_ptr<host::DOMDocument> CreateDocument(std::shared_ptr<RepeatedTexts> repeated) {
    return std::make_unique<Document>(std::move(repeated));
}

} // namespace refhost::xml
