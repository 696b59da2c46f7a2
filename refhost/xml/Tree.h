#pragma once

#include "refhost/xml/NameTable.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>

namespace refhost::xml {

enum class NodeKind : std::uint8_t { document, element, text, cdata, comment, instruction };

struct Element;

/// Where the text of a node or an attribute stands.
enum class Place : std::uint8_t {
    inside,   ///< right behind the node or attribute
    aside,    ///< elsewhere in the arena, having outgrown its room; a pointer stands behind the node or attribute
    borrowed, ///< likewise, in the arena of the tree's origin, where it is not to be written over
};

/// The text of `holder`, up to its size.
template <class Holder> const char* TextBehind(const Holder& holder) noexcept {
    const char* text = reinterpret_cast<const char*>(&holder + 1);
    if (holder.place != Place::inside)
        std::memcpy(&text, text, sizeof(text));
    return text;
}

/// Whether it is a name of ASCII letters, digits and '_' alone, as nearly all are.
bool IsPlainName(std::string_view text) noexcept;
/// Whether it is one, or two with a colon between.
bool IsPlainQualifiedName(std::string_view text) noexcept;

/// Whether a name is `text`.
inline bool IsName(const char* name, std::string_view text) noexcept {
    std::size_t same = 0;
    while (same < text.size() && name[same] == text[same] && name[same] != '\0')
        ++same;
    return same == text.size() && name[same] == '\0';
}

/// What every node starts with. Nodes live in the arena of their tree and are never freed one by one.
struct Node {
    Element* parent = nullptr;
    Node* next = nullptr;
    NodeKind kind;
    /// Of a `CharacterData` its text's place and bytes; of an element whether its attributes are still its origin's.
    Place place = Place::inside;
    std::uint32_t size = 0;

    bool IsParent() const noexcept { return kind == NodeKind::document || kind == NodeKind::element; }
    Element& AsElement() noexcept;
    const Element& AsElement() const noexcept;
    std::string_view Data() const noexcept;
};

/// An attribute; declarations of namespaces are attributes like all others.
struct Attribute {
    Attribute* next = nullptr;
    /// The name with its prefix, from the tree's name table: equal names are equal pointers.
    const char* name = nullptr;
    std::uint32_t size = 0;
    Place place = Place::inside;

    std::string_view Value() const noexcept { return {TextBehind(*this), size}; }
};

/// An element, or the document itself (without a name).
struct Element : Node {
    /// As `Attribute::name`.
    const char* name = nullptr;
    Node* first = nullptr;
    Node* last = nullptr;
    Attribute* attributes = nullptr;
};

/// Text, a CDATA section, a comment or a processing instruction.
struct CharacterData : Node {};

struct Instruction : CharacterData {
    const char* target = nullptr;
};

inline Element& Node::AsElement() noexcept { return static_cast<Element&>(*this); }
inline const Element& Node::AsElement() const noexcept { return static_cast<const Element&>(*this); }
inline std::string_view Node::Data() const noexcept {
    return {kind == NodeKind::instruction ? TextBehind(static_cast<const Instruction&>(*this))
                                          : TextBehind(static_cast<const CharacterData&>(*this)),
            size};
}

/// The node that follows `node` in document order within `top`, or nullptr behind the last one.
const Node* NextInOrder(const Node& node, const Node& top) noexcept;

/// The content of a document. A request has millions of nodes, and libxml2's own tree would take more of everything:
/// of a request of 100,000 rows with eight fields each this one takes 780 bytes a row, libxml2's 2,180. It is made in
/// 66 ms by our own reader of plain texts, in 133 ms by libxml2's parser, and libxml2's tree in 355 ms
/// (bench/parts/XmlBench.cpp, ReadRequest, ReadCommentedRequest and ReadRequestByLibxml).
class Tree {
public:
    Tree();
    /// An empty tree that shares its names with others.
    explicit Tree(std::shared_ptr<NameTable> names);
    /// A copy of `origin`'s content, whose names and texts it shares, and an element's attributes until one is written.
    /// What stands below the first element under the root that has content, as the schema of a saved recordset does, is
    /// left folded: that element looks empty until `Unfold`.
    /// `origin` does not change any more, but for the names that its copies add.
    explicit Tree(std::shared_ptr<const Tree> origin);
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    ~Tree() = default;

    Element& document() noexcept { return document_; }
    const Element& document() const noexcept { return document_; }

    /// The origin's element whose content is folded here, or nullptr.
    const Element* FoldedOrigin() const noexcept { return foldedOrigin_; }
    /// Whether the node is the folded element or above it.
    bool Folds(const Node& node) const noexcept;
    /// Copies what is folded. Nodes that are there already stay where they are.
    void Unfold();
    /// What this is a copy of, or nullptr.
    const Tree* Origin() const noexcept { return origin_.get(); }

    /// Whether the text had an XML declaration, and what it said of `standalone`.
    enum class Declaration : std::uint8_t { none, plain, standaloneYes, standaloneNo };
    Declaration declaration = Declaration::none;

    /// The name of an element or attribute as it stands in the name table. Throws `host::Error` for a text that is
    /// no (qualified) name.
    const char* Name(std::string_view name);
    /// The same for any text; nullptr where it is no plain name.
    const char* PlainName(std::string_view text) { return Names().GetPlain(text); }
    /// Takes the names from a parser's table; to be called on an empty tree.
    void AdoptNames(xmlDict* names) { names_ = std::make_shared<NameTable>(names); }

    bool SharesNames(const std::shared_ptr<NameTable>& names) const noexcept { return names_ == names; }
    /// Whether the name table, with what all copies added to it, is larger than documents need.
    bool HasManyNames() const noexcept { return names_ && names_->HasMany(); }

    Element& NewElement(const char* name);
    CharacterData& NewText(NodeKind kind, std::string_view data);
    Instruction& NewInstruction(const char* target, std::string_view data);

    /// Puts `child` behind the last child, taking it away from where it stood.
    void Append(Element& parent, Node& child);
    /// Puts a node that stands nowhere behind the last child.
    void AppendNew(Element& parent, Node& child) noexcept;
    /// Replaces all children by one text.
    void SetText(Node& node, std::string_view text);

    /// The attribute of that name, or nullptr.
    static const Attribute* FindAttribute(const Element& element, std::string_view name) noexcept;
    /// Adds an attribute that the element is known not to have.
    /// @param last the element's last attribute, or nullptr
    /// @return the attribute added
    Attribute& AddAttribute(Element& element, Attribute* last, const char* name, std::string_view value);
    void SetAttribute(Element& element, std::string_view name, std::string_view value);

    /// Whether `prefix` is declared anywhere in the tree.
    bool HasPrefix(std::string_view prefix) const;
    /// The prefixes that are declared anywhere, each with the latest URI that it was declared for.
    using PrefixMap = std::unordered_map<std::string, std::string>;
    const PrefixMap& Prefixes() const noexcept { return *prefixes_; }

    /// Counts the changes made by all members above.
    std::uint64_t Revision() const noexcept { return revision_; }
    /// Bytes handed out for nodes and their content.
    std::size_t BytesUsed() const noexcept { return bytesUsed_; }

private:
    NameTable& Names() {
        if (!names_)
            MakeNames();
        return *names_;
    }
    void MakeNames();
    /// A `CharacterData` or an `Attribute` with its text.
    template <class Holder> Holder& MakeHolder(std::string_view text);
    /// One that borrows the text of the origin's `from`.
    template <class Holder> Holder& Borrow(const Holder& from);
    const char* Copy(std::string_view text);
    /// A copy of the origin's node without what stands below it.
    Node& CopyOf(const Node& node);
    /// Copies what stands below the origin's `from`, but for what is folded.
    void CopyBelow(const Element& from, Element& to);
    /// Gives the element attributes of its own where it has its origin's.
    void OwnAttributes(Element& element);
    void Unlink(Node& child) noexcept;
    /// Declares the prefix of the element's name at the element where it is not declared there or above.
    void Declare(Element& element);
    /// Gives a `CharacterData` or an `Attribute` another text.
    template <class Holder> void Overwrite(Holder& holder, std::string_view text);

    std::shared_ptr<const Tree> origin_;
    std::pmr::monotonic_buffer_resource arena_;
    std::size_t bytesUsed_ = 0;
    Element* folded_ = nullptr;
    const Element* foldedOrigin_ = nullptr;
    std::uint64_t revision_ = 0;
    /// None before the first name.
    std::shared_ptr<NameTable> names_;
    /// Shared with the origin until one is added.
    std::shared_ptr<PrefixMap> prefixes_;
    Element document_;
};

} // namespace refhost::xml
