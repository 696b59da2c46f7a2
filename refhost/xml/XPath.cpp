#include "refhost/xml/XPath.h"

#include "host/Error.h"
#include "refhost/xml/MakeReady.h"

#include <limits>
#include <new>

#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

namespace refhost::xml {
namespace {

/// Steps of the engine per path, a second's worth: paths come from requests and may multiply without end.
constexpr unsigned long maxOperations = 100'000'000;

constexpr std::string_view xmlPrefix = "xml";

const xmlChar* Bytes(const std::string& text) { return reinterpret_cast<const xmlChar*>(text.c_str()); }

void Ignore(void*, xmlError*) {}
void IgnoreText(void*, const char*, ...) {}

/// Keeps the engine from writing to standard error, as it does for an unknown function whatever its context says.
class Quiet {
public:
    Quiet() : function_(xmlGenericError), context_(xmlGenericErrorContext) {
        xmlSetGenericErrorFunc(nullptr, &IgnoreText);
    }
    ~Quiet() { xmlSetGenericErrorFunc(context_, function_); }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

private:
    xmlGenericErrorFunc function_;
    void* context_;
};

/// The engine reads "///" as "//"; it is no path.
bool HasTripleSlash(std::string_view path) {
    char quote = '\0';
    for (std::size_t at = 0; at < path.size(); ++at) {
        if (quote != '\0')
            quote = path[at] == quote ? '\0' : quote;
        else if (path[at] == '"' || path[at] == '\'')
            quote = path[at];
        else if (path.substr(at).starts_with("///"))
            return true;
    }
    return false;
}

struct FreeContext {
    void operator()(xmlXPathContext* context) const { xmlXPathFreeContext(context); }
};
using Context = std::unique_ptr<xmlXPathContext, FreeContext>;

struct FreeResult {
    void operator()(xmlXPathObject* result) const { xmlXPathFreeObject(result); }
};
using Result = std::unique_ptr<xmlXPathObject, FreeResult>;

template <class T> T* Checked(T* made) {
    if (made == nullptr)
        throw std::bad_alloc();
    return made;
}

xmlDoc* NewDocument() {
    MakeReady();
    return Checked(xmlNewDoc(nullptr));
}

Context NewContext(xmlDoc* document) {
    Context context(Checked(xmlXPathNewContext(document)));
    context->error = &Ignore;
    context->opLimit = maxOperations;
    return context;
}

[[noreturn]] void Fail(const std::string& message) { throw host::Error(host::error_number::unspecified, message); }

int Length(std::string_view data) {
    if (data.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw host::Error(host::error_number::outOfMemory, "A text of more than 2 GB.");
    return static_cast<int>(data.size());
}

/// The two parts of a qualified name; the prefix is empty where there is none.
std::pair<std::string_view, std::string> Split(std::string_view name) {
    const std::size_t colon = name.find(':');
    if (colon == std::string_view::npos)
        return {{}, std::string(name)};
    return {name.substr(0, colon), std::string(name.substr(colon + 1))};
}

bool IsDeclaration(std::string_view name) { return name == "xmlns" || name.starts_with("xmlns:"); }

} // namespace

void XPath::Deleter::operator()(xmlXPathCompExpr* expression) const noexcept { xmlXPathFreeCompExpr(expression); }

XPath::XPath(std::string_view text) : text_(text) {
    const Context context = NewContext(nullptr);
    if (text.find('\0') == std::string_view::npos && !HasTripleSlash(text))
        expression_.reset(xmlXPathCtxtCompile(context.get(), Bytes(text_)));
    if (!expression_)
        Fail("Invalid path '" + text_ + "'.");
}

void Mirror::Deleter::operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }

void Mirror::NamespaceDeleter::operator()(xmlNs* space) const noexcept { xmlFreeNs(space); }

Mirror::Mirror(const Tree& tree, const Node& top)
    : top_(&top), revision_(tree.Revision()), prefixes_(tree.Prefixes()), document_(NewDocument()) {
    for (const Node* at = &top; at != nullptr; at = NextInOrder(*at, top)) {
        if (at->kind == NodeKind::document) {
            copies_.emplace(at, reinterpret_cast<xmlNode*>(document_.get()));
            document_->_private = const_cast<Node*>(at);
            continue;
        }
        xmlNode* const copy = CopyNode(*at);
        xmlNode* const parent =
            at->parent == nullptr ? reinterpret_cast<xmlNode*>(document_.get()) : copies_.at(at->parent);
        copy->parent = parent;
        copy->prev = parent->last;
        (parent->last == nullptr ? parent->children : parent->last->next) = copy;
        parent->last = copy;
        copy->_private = const_cast<Node*>(at);
        copies_.emplace(at, copy);
    }
    xmlXPathOrderDocElems(document_.get());
}

xmlNs* Mirror::Namespace(std::string_view prefix) {
    if (prefix.empty())
        return nullptr;
    const std::string text(prefix);
    // Every document of libxml2 has this one itself and takes no other.
    if (prefix == xmlPrefix)
        return Checked(xmlSearchNs(document_.get(), reinterpret_cast<xmlNode*>(document_.get()), Bytes(text)));
    auto& space = namespaces_[text];
    if (!space)
        space.reset(Checked(xmlNewNs(nullptr, Bytes(text), Bytes(text))));
    return space.get();
}

xmlNode* Mirror::CopyElement(const Element& element) {
    const auto [prefix, local] = Split(element.name);
    xmlNode* const copy = Checked(xmlNewDocNode(document_.get(), Namespace(prefix), Bytes(local), nullptr));
    xmlAttr* last = nullptr;
    for (const Attribute* at = element.attributes; at != nullptr; at = at->next) {
        if (IsDeclaration(at->name))
            continue;
        const auto [attributePrefix, attributeLocal] = Split(at->name);
        // Made apart from the element and linked by hand: libxml2 would search the list for its end each time.
        xmlAttr* const attribute = Checked(xmlNewDocProp(document_.get(), Bytes(attributeLocal), nullptr));
        attribute->ns = Namespace(attributePrefix);
        attribute->_private = const_cast<Attribute*>(at);
        attribute->parent = copy;
        attribute->prev = last;
        (last == nullptr ? copy->properties : last->next) = attribute;
        last = attribute;
        const std::string_view value = at->Value();
        xmlNode* const text =
            Checked(xmlNewDocTextLen(document_.get(), reinterpret_cast<const xmlChar*>(value.data()), Length(value)));
        text->parent = reinterpret_cast<xmlNode*>(attribute);
        attribute->children = text;
        attribute->last = text;
    }
    return copy;
}

xmlNode* Mirror::CopyNode(const Node& node) {
    if (node.kind == NodeKind::element)
        return CopyElement(node.AsElement());
    const auto* const data = reinterpret_cast<const xmlChar*>(node.Data().data());
    const int length = Length(node.Data());
    if (node.kind == NodeKind::text)
        return Checked(xmlNewDocTextLen(document_.get(), data, length));
    if (node.kind == NodeKind::cdata)
        return Checked(xmlNewCDataBlock(document_.get(), data, length));
    const std::string text(node.Data());
    if (node.kind == NodeKind::comment)
        return Checked(xmlNewDocComment(document_.get(), Bytes(text)));
    return Checked(xmlNewDocPI(document_.get(), Bytes(static_cast<const Instruction&>(node).target), Bytes(text)));
}

std::vector<Selected> Mirror::Select(const XPath& path, const Node& context) const {
    const Context engine = NewContext(document_.get());
    const auto declare = [&](const std::string& prefix) {
        xmlXPathRegisterNs(engine.get(), Bytes(prefix), Bytes(prefix));
    };
    for (const auto& [prefix, uri] : prefixes_)
        declare(prefix);
    for (const char* prefix : recordsetPrefixes)
        declare(prefix);
    engine->node = copies_.at(&context);

    const Quiet quiet;
    const Result result(xmlXPathCompiledEval(path.get(), engine.get()));
    if (!result) {
        const bool undeclared = engine->lastError.code == XML_XPATH_UNDEF_PREFIX_ERROR;
        Fail((undeclared ? "Reference to an undeclared namespace prefix in the path '" : "Cannot follow the path '") +
             path.text() + "'.");
    }
    if (result->type != XPATH_NODESET)
        Fail("The path '" + path.text() + "' does not select nodes.");
    std::vector<Selected> selected;
    xmlNodeSet* const nodes = result->nodesetval;
    xmlXPathNodeSetSort(nodes);
    for (int at = 0; nodes != nullptr && at < nodes->nodeNr; ++at) {
        const xmlNode* const node = nodes->nodeTab[at];
        if (node->type == XML_NAMESPACE_DECL)
            continue;
        const xmlNode* const holder = node->type == XML_ATTRIBUTE_NODE ? node->parent : node;
        const auto* const attribute =
            node->type == XML_ATTRIBUTE_NODE ? static_cast<const Attribute*>(node->_private) : nullptr;
        if (holder->_private != nullptr)
            selected.push_back({static_cast<const Node*>(holder->_private), attribute});
    }
    return selected;
}

} // namespace refhost::xml
