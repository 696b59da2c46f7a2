#include "refhost/xml/Parser.h"

#include "refhost/xml/MakeReady.h"
#include "refhost/xml/ParameterEntities.h"
#include "refhost/xml/PlainReader.h"
#include "refhost/xml/PrefixScope.h"
#include "refhost/xml/WhiteSpace.h"
#include "text/Utf8.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

namespace refhost::xml {
namespace {

/// libxml2 compares each attribute of an element with all others, so their number must be bounded.
constexpr std::size_t maxAttributes = 2048;
/// Bytes that the different names of a text may take together: libxml2's table of names grows slow beyond.
constexpr std::size_t maxNames = 1'000'000;
/// Entities may multiply a text by this much, beyond a first megabyte.
constexpr std::size_t maxGrowth = 10;
constexpr std::size_t freeGrowth = 1 << 20;
/// A text up to so many bytes is handed to libxml2 as a whole, with nobody to ask for more, which it does at every step
/// near the end of what it has read. No element of so short a text has too many attributes.
constexpr std::size_t readAtOnce = 8192;

std::string_view View(const xmlChar* text) {
    return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

/// Builds the tree from what the parser reports. The parser is C code: no exception may cross it.
class Builder {
public:
    explicit Builder(std::string_view xml) : source_(xml), budget_(xml.size() * maxGrowth + freeGrowth) {}

    ParseResult Run();

private:
    static Builder& Of(void* context) { return *static_cast<Builder*>(static_cast<xmlParserCtxt*>(context)->_private); }

    /// Runs one report; after a failure nothing more is taken.
    template <class Work> static void Report(void* context, Work work) {
        auto* parser = static_cast<xmlParserCtxt*>(context);
        Builder& builder = Of(context);
        if (!builder.failed_) {
            try {
                work(builder);
            } catch (...) {
                builder.thrown_ = std::current_exception();
                builder.failed_ = true;
            }
        }
        if (builder.failed_) {
            // The content of an entity has a parser of its own, and stopping that one would only end the entity.
            xmlStopParser(parser);
            xmlStopParser(builder.parser_);
        }
    }

    static xmlSAXHandler Handler();
    static void Stop(void* context, const char* message, ...);
    static int Read(void* context, char* buffer, int length);

    /// An attribute that the document type declares, with its default or fixed value.
    struct DeclaredAttribute {
        const char* name;
        std::optional<std::string> value;
    };

    void Declare(const char* element, const char* attribute, const xmlChar* value);
    std::vector<const char*> WithDefaults(const char* element, const char* const* attributes) const;
    void StartElement(const char* name, const char* const* written);
    void EndElement();
    void AddText(std::string_view text);
    void AddNode(Node& node) { tree_->AppendNew(*current_, node); }
    void FlushText();
    void Spend(std::size_t bytes);
    void Refuse(std::string reason);
    bool PreservesBlanks() const { return !spaces_.empty() && spaces_.back().second; }

    std::string_view source_;
    /// The source where parameter entities had to be written out.
    std::string writtenOut_;
    std::size_t read_ = 0;
    std::size_t budget_;
    xmlParserCtxt* parser_ = nullptr;
    std::unique_ptr<Tree> tree_ = std::make_unique<Tree>();
    Element* current_ = &tree_->document();
    std::string text_;
    PrefixScope prefixes_;
    /// What the document type declares: attributes by their element, and general entities that lie outside the text.
    std::unordered_map<std::string_view, std::vector<DeclaredAttribute>> declared_;
    std::unordered_set<std::string> outside_;
    /// Elements with `xml:space`, and whether they preserve.
    std::vector<std::pair<const Element*, bool>> spaces_;
    bool failed_ = false;
    /// Whether the parser found an error; it is at its end then, as if the text were.
    bool illFormed_ = false;
    std::string reason_;
    std::exception_ptr thrown_;
};

void Builder::Refuse(std::string reason) {
    failed_ = true;
    reason_ = std::move(reason);
}

void Builder::Spend(std::size_t bytes) {
    if (bytes > budget_)
        Refuse("The text's entities expand to too much.");
    else
        budget_ -= bytes;
}

void Builder::Declare(const char* element, const char* attribute, const xmlChar* value) {
    std::vector<DeclaredAttribute>& declared = declared_[element];
    const auto same = [&](const DeclaredAttribute& other) { return other.name == attribute; };
    // The first declaration counts.
    if (std::ranges::any_of(declared, same))
        return;
    declared.push_back({attribute, value == nullptr ? std::nullopt : std::optional<std::string>(View(value))});
    if (declared.size() > maxAttributes)
        Refuse("An element has too many attributes.");
}

/// Names and values, nullptr behind the last: what the start tag gives, and what the document type adds to it.
std::vector<const char*> Builder::WithDefaults(const char* element, const char* const* attributes) const {
    std::vector<const char*> all;
    for (const char* const* at = attributes; at != nullptr && *at != nullptr; ++at)
        all.push_back(*at);
    const std::size_t given = all.size();
    if (const auto declared = declared_.find(element); declared != declared_.end()) {
        for (const auto& [name, value] : declared->second) {
            bool isGiven = false;
            for (std::size_t at = 0; at < given && !isGiven; at += 2)
                isGiven = std::strcmp(all[at], name) == 0;
            if (value && !isGiven)
                all.insert(all.end(), {name, value->c_str()});
        }
    }
    all.push_back(nullptr);
    return all;
}

void Builder::StartElement(const char* name, const char* const* written) {
    FlushText();
    std::vector<const char*> withDefaults;
    const char* const* attributes = written;
    if (!declared_.empty()) {
        withDefaults = WithDefaults(name, written);
        attributes = withDefaults.data();
    }
    if (std::string reason = prefixes_.Enter(name, attributes); !reason.empty()) {
        Refuse(std::move(reason));
        return;
    }
    Element& element = tree_->NewElement(name);
    AddNode(element);
    current_ = &element;
    Spend(1);
    Attribute* last = nullptr;
    std::size_t count = 0;
    for (const char* const* at = attributes; at != nullptr && *at != nullptr; at += 2) {
        const std::string_view value = at[1];
        Spend(value.size() + 1);
        if (failed_)
            return;
        last = &tree_->AddAttribute(element, last, at[0], value);
        if (std::strcmp(at[0], "xml:space") == 0)
            spaces_.emplace_back(&element, value == "preserve");
        ++count;
    }
    if (count > maxAttributes)
        Refuse("An element has too many attributes.");
}

void Builder::EndElement() {
    FlushText();
    prefixes_.Leave();
    if (!spaces_.empty() && spaces_.back().first == current_)
        spaces_.pop_back();
    current_ = current_->parent;
}

void Builder::AddText(std::string_view text) {
    Spend(text.size());
    text_.append(text);
}

void Builder::FlushText() {
    if (text_.empty())
        return;
    if (!IsBlank(text_) || PreservesBlanks())
        AddNode(tree_->NewText(NodeKind::text, text_));
    text_.clear();
}

xmlSAXHandler Builder::Handler() {
    xmlSAXHandler handler = {};
    // The reports of the first version give qualified names and keep declarations of namespaces in their place among
    // the attributes.
    xmlSAXVersion(&handler, 1);
    handler.startElement = [](void* context, const xmlChar* name, const xmlChar** attributes) {
        Report(context, [&](Builder& builder) {
            builder.StartElement(reinterpret_cast<const char*>(name), reinterpret_cast<const char* const*>(attributes));
        });
    };
    handler.endElement = [](void* context, const xmlChar*) {
        Report(context, [](Builder& builder) { builder.EndElement(); });
    };
    handler.characters = [](void* context, const xmlChar* text, int length) {
        Report(context, [&](Builder& builder) {
            builder.AddText({reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
        });
    };
    handler.ignorableWhitespace = handler.characters;
    handler.cdataBlock = [](void* context, const xmlChar* text, int length) {
        Report(context, [&](Builder& builder) {
            const std::string_view data(reinterpret_cast<const char*>(text), static_cast<std::size_t>(length));
            builder.FlushText();
            builder.Spend(data.size() + 1);
            builder.AddNode(builder.tree_->NewText(NodeKind::cdata, data));
        });
    };
    handler.comment = [](void* context, const xmlChar* text) {
        Report(context, [&](Builder& builder) {
            if (builder.parser_->inSubset != 0)
                return;
            builder.FlushText();
            builder.Spend(View(text).size() + 1);
            builder.AddNode(builder.tree_->NewText(NodeKind::comment, View(text)));
        });
    };
    handler.processingInstruction = [](void* context, const xmlChar* target, const xmlChar* data) {
        Report(context, [&](Builder& builder) {
            if (builder.parser_->inSubset != 0)
                return;
            builder.FlushText();
            builder.Spend(View(data).size() + 1);
            // The parser's own judgement of names holds, as it does for elements.
            builder.AddNode(builder.tree_->NewInstruction(reinterpret_cast<const char*>(target), View(data)));
        });
    };
    // An external subset is left out; its address is kept nowhere, so that nothing can ask for it.
    handler.internalSubset = [](void* context, const xmlChar* name, const xmlChar*, const xmlChar*) {
        Report(context, [&](Builder& builder) {
            // Entities are at hand from here on: libxml2's own bounds shall hold again.
            builder.parser_->options &= ~XML_PARSE_HUGE;
            xmlSAX2InternalSubset(context, name, nullptr, nullptr);
        });
    };
    // What lies outside is not made known to libxml2: a reference to it is one to an entity that nobody declared.
    handler.entityDecl = [](void* context, const xmlChar* name, int type, const xmlChar* publicId,
                            const xmlChar* systemId, xmlChar* content) {
        Report(context, [&](Builder& builder) {
            // Parameter entities stand written out already.
            if (type == XML_INTERNAL_PARAMETER_ENTITY || type == XML_EXTERNAL_PARAMETER_ENTITY)
                return;
            // The first declaration of a name counts.
            if (type != XML_INTERNAL_GENERAL_ENTITY)
                builder.outside_.emplace(View(name));
            else if (!builder.outside_.contains(std::string(View(name))))
                xmlSAX2EntityDecl(context, name, type, publicId, systemId, content);
        });
    };
    handler.unparsedEntityDecl = [](void* context, const xmlChar* name, const xmlChar*, const xmlChar*,
                                    const xmlChar*) {
        Report(context, [&](Builder& builder) { builder.outside_.emplace(View(name)); });
    };
    handler.getParameterEntity = [](void*, const xmlChar*) -> xmlEntityPtr { return nullptr; };
    handler.attributeDecl = [](void* context, const xmlChar* element, const xmlChar* name, int, int,
                               const xmlChar* value, xmlEnumerationPtr choices) {
        xmlFreeEnumeration(choices);
        Report(context, [&](Builder& builder) {
            builder.Declare(reinterpret_cast<const char*>(element), reinterpret_cast<const char*>(name), value);
        });
    };
    handler.error = &Stop;
    handler.resolveEntity = [](void*, const xmlChar*, const xmlChar*) -> xmlParserInputPtr { return nullptr; };
    handler.externalSubset = nullptr;
    return handler;
}

/// The first error is the last: libxml2 itself would go on to the end of the text, though each further error in a
/// comment costs it a copy of the comment so far. What it has read ahead becomes NULs, which end every text for it.
void Builder::Stop(void* context, const char*, ...) {
    // An address that nothing will ask for may be written as it likes.
    if (static_cast<xmlParserCtxt*>(context)->lastError.code == XML_ERR_INVALID_URI)
        return;
    Of(context).illFormed_ = true;
    const xmlParserInput* const input = static_cast<xmlParserCtxt*>(context)->input;
    // Only the buffer that libxml2 copied the text to; the content of an entity is not ours to write.
    if (input != nullptr && input->buf != nullptr)
        std::fill(const_cast<xmlChar*>(input->cur), const_cast<xmlChar*>(input->end), xmlChar{0});
}

int Builder::Read(void* context, char* buffer, int length) {
    auto& builder = *static_cast<Builder*>(context);
    if (builder.parser_ != nullptr && builder.parser_->maxatts > static_cast<int>(4 * maxAttributes)) {
        // The start tag being read is far beyond the bound already; its attributes are not to be compared any more.
        builder.Refuse("An element has too many attributes.");
        return -1;
    }
    if (builder.illFormed_)
        return 0;
    const std::size_t count = std::min(static_cast<std::size_t>(length), builder.source_.size() - builder.read_);
    std::ranges::copy(builder.source_.substr(builder.read_, count), buffer);
    builder.read_ += count;
    return static_cast<int>(count);
}

ParseResult Builder::Run() {
    WrittenOut writtenOut = WriteOutParameterEntities(source_, budget_);
    if (!writtenOut.reason.empty())
        return {nullptr, std::move(writtenOut.reason)};
    if (writtenOut.text) {
        writtenOut_ = std::move(*writtenOut.text);
        source_ = writtenOut_;
    }

    MakeReady();
    xmlSAXHandler handler = Handler();
    const struct FreeContext {
        void operator()(xmlParserCtxt* context) const {
            xmlFreeDoc(context->myDoc);
            xmlFreeParserCtxt(context);
        }
    } freeContext;
    const bool isWhole = !source_.empty() && source_.size() <= readAtOnce;
    const std::unique_ptr<xmlParserCtxt, FreeContext> context(
        isWhole ? xmlCreateMemoryParserCtxt(source_.data(), static_cast<int>(source_.size()))
                : xmlCreateIOParserCtxt(&handler, nullptr, &Read, nullptr, this, XML_CHAR_ENCODING_NONE),
        freeContext);
    if (!context)
        throw std::bad_alloc();
    parser_ = context.get();
    if (isWhole)
        parser_->input->buf->readcallback = nullptr;
    *parser_->sax = handler;
    parser_->_private = this;
    xmlCtxtUseOptions(parser_,
                      XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_HUGE | XML_PARSE_IGNORE_ENC | XML_PARSE_NOWARNING);
    xmlDictSetLimit(parser_->dict, maxNames);
    tree_->AdoptNames(parser_->dict);
    xmlParseDocument(parser_);

    if (thrown_)
        std::rethrow_exception(thrown_);
    // Some errors, that of too many names among them, leave `wellFormed` as it was.
    failed_ = failed_ || illFormed_ || parser_->wellFormed == 0;
    // All that belong into the text stand written out.
    if (!failed_ && parser_->hasPErefs != 0)
        Refuse("A parameter entity is referred to where none may be.");
    if (!failed_ && View(parser_->version) != "1.0")
        Refuse("Only XML 1.0 is read.");
    if (failed_) {
        if (reason_.empty() && parser_->lastError.message != nullptr)
            reason_ = parser_->lastError.message;
        while (!reason_.empty() && reason_.back() == '\n')
            reason_.pop_back();
        const int line = parser_->input == nullptr ? 0 : parser_->input->line;
        return {nullptr, "line " + std::to_string(line) + ": " + reason_};
    }
    // libxml2 says -1 for a text without declaration, -2 for a declaration that says nothing of it.
    switch (parser_->standalone) {
    case -1:
        tree_->declaration = Tree::Declaration::none;
        break;
    case 0:
        tree_->declaration = Tree::Declaration::standaloneNo;
        break;
    case 1:
        tree_->declaration = Tree::Declaration::standaloneYes;
        break;
    default:
        tree_->declaration = Tree::Declaration::plain;
        break;
    }
    return {std::move(tree_), {}};
}

/// `ReadPlain` of a text that may begin with an XML declaration, which libxml2 judges.
std::unique_ptr<Tree> ReadDeclaredPlain(std::string_view xml) {
    constexpr std::string_view end = "?>";
    const std::size_t found = xml.starts_with("<?xml ") ? xml.find(end) : std::string_view::npos;
    if (found == std::string_view::npos)
        return ReadPlain(xml);
    const std::size_t size = found + end.size();
    std::unique_ptr<Tree> tree = ReadPlain(xml.substr(size));
    const std::unique_ptr<Tree> declared =
        tree ? Builder(std::string(xml.substr(0, size)) + "<a/>").Run().tree : nullptr;
    if (!declared)
        return nullptr;
    tree->declaration = declared->declaration;
    return tree;
}

} // namespace

ParseResult Parse(std::string_view xml) {
    if (xml.find('\0') != std::string_view::npos || !text::IsUtf8(xml))
        return {nullptr, "The text is not valid UTF-8."};
    if (std::unique_ptr<Tree> tree = ReadDeclaredPlain(xml))
        return {std::move(tree), {}};
    return Builder(xml).Run();
}

} // namespace refhost::xml
