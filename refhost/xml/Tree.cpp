#include "refhost/xml/Tree.h"

#include "host/Error.h"
#include "refhost/xml/Declarations.h"
#include "text/Digit.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace refhost::xml {
namespace {

/// What a node or attribute has room for at the least: the pointer to a text that stands aside.
constexpr std::size_t leastRoom = sizeof(const char*);

/// The bytes of plain names.
constexpr std::array<bool, 256> plainBytes = [] {
    std::array<bool, 256> plain{};
    for (const auto& [first, last] :
         {std::pair('A', 'Z'), std::pair('a', 'z'), std::pair('0', '9'), std::pair('_', '_')})
        std::fill(plain.begin() + first, plain.begin() + last + 1, true);
    return plain;
}();

/// What trees without any share; never written, as it is never one tree's alone.
const auto noPrefixes = std::make_shared<Tree::PrefixMap>();

Element EmptyDocument() noexcept {
    Element document{};
    document.kind = NodeKind::document;
    return document;
}

const Element* FirstElement(const Node* from) noexcept {
    while (from != nullptr && from->kind != NodeKind::element)
        from = from->next;
    return from == nullptr ? nullptr : &from->AsElement();
}

/// The first element below `parent` that has content, or nullptr.
const Element* FirstWithContent(const Element* parent) noexcept {
    const Element* at = parent == nullptr ? nullptr : FirstElement(parent->first);
    while (at != nullptr && at->first == nullptr)
        at = FirstElement(at->next);
    return at;
}

std::uint32_t CheckedSize(std::string_view text) {
    if (text.size() > std::numeric_limits<std::uint32_t>::max())
        throw host::Error(host::error_number::outOfMemory, "A text of more than 4 GB.");
    return static_cast<std::uint32_t>(text.size());
}

} // namespace

bool IsPlainName(std::string_view text) noexcept {
    for (const char c : text) {
        if (!plainBytes[static_cast<unsigned char>(c)])
            return false;
    }
    return !text.empty() && !text::IsDigit(text.front());
}

bool IsPlainQualifiedName(std::string_view text) noexcept {
    const std::size_t colon = text.find(':');
    return colon == std::string_view::npos ? IsPlainName(text)
                                           : IsPlainName(text.substr(0, colon)) && IsPlainName(text.substr(colon + 1));
}

const Node* NextInOrder(const Node& node, const Node& top) noexcept {
    if (node.IsParent() && node.AsElement().first != nullptr)
        return node.AsElement().first;
    for (const Node* at = &node; at != &top; at = at->parent) {
        if (at->next != nullptr)
            return at->next;
    }
    return nullptr;
}

Tree::Tree() : Tree(std::shared_ptr<NameTable>()) {}

Tree::Tree(std::shared_ptr<NameTable> names)
    : names_(std::move(names)), prefixes_(noPrefixes), document_(EmptyDocument()) {}

Tree::Tree(std::shared_ptr<const Tree> origin)
    : declaration(origin->declaration), origin_(std::move(origin)), names_(origin_->names_),
      prefixes_(origin_->prefixes_), document_(EmptyDocument()) {
    foldedOrigin_ = FirstWithContent(FirstElement(origin_->document_.first));
    CopyBelow(origin_->document_, document_);
}

void Tree::CopyBelow(const Element& top, Element& to) {
    const Node* from = &top;
    Element* parent = &to;
    while (true) {
        if (from->IsParent() && from->AsElement().first != nullptr && from != foldedOrigin_) {
            from = from->AsElement().first;
        } else {
            while (from != &top && from->next == nullptr) {
                from = from->parent;
                parent = parent->parent;
            }
            if (from == &top)
                return;
            from = from->next;
        }
        Node& copy = CopyOf(*from);
        AppendNew(*parent, copy);
        if (from == foldedOrigin_)
            folded_ = &copy.AsElement();
        else if (copy.IsParent() && from->AsElement().first != nullptr)
            parent = &copy.AsElement();
    }
}

bool Tree::Folds(const Node& node) const noexcept {
    const Node* at = foldedOrigin_ == nullptr ? nullptr : folded_;
    while (at != nullptr && at != &node)
        at = at->parent;
    return at != nullptr;
}

void Tree::Unfold() {
    if (const Element* const from = std::exchange(foldedOrigin_, nullptr))
        CopyBelow(*from, *folded_);
}

Node& Tree::CopyOf(const Node& node) {
    // What the origin holds stands there as long as the copy does.
    if (node.kind == NodeKind::instruction)
        return Borrow(static_cast<const Instruction&>(node));
    if (!node.IsParent())
        return Borrow(static_cast<const CharacterData&>(node));
    Element& element = NewElement(node.AsElement().name);
    element.attributes = node.AsElement().attributes;
    element.place = Place::borrowed;
    return element;
}

void Tree::OwnAttributes(Element& element) {
    if (element.place != Place::borrowed)
        return;
    Attribute* own = nullptr;
    Attribute** place = &own;
    for (const Attribute* at = element.attributes; at != nullptr; at = at->next) {
        *place = &Borrow(*at);
        place = &(*place)->next;
    }
    element.attributes = own;
    element.place = Place::inside;
}

void Tree::MakeNames() { names_ = std::make_shared<NameTable>(); }

const char* Tree::Name(std::string_view name) { return Names().Get(name); }

template <class Holder> Holder& Tree::MakeHolder(std::string_view text) {
    const std::uint32_t size = CheckedSize(text);
    const std::size_t bytes = sizeof(Holder) + std::max(leastRoom, text.size());
    auto* memory = static_cast<char*>(arena_.allocate(bytes, alignof(Holder)));
    bytesUsed_ += bytes;
    if (!text.empty())
        std::memcpy(memory + sizeof(Holder), text.data(), text.size());
    auto* holder = new (memory) Holder{};
    holder->size = size;
    return *holder;
}

template <class Holder> Holder& Tree::Borrow(const Holder& from) {
    const char* const text = TextBehind(from);
    Holder& copy = MakeHolder<Holder>({reinterpret_cast<const char*>(&text), sizeof(text)});
    copy = from;
    copy.next = nullptr;
    copy.place = Place::borrowed;
    return copy;
}

const char* Tree::Copy(std::string_view text) {
    if (text.empty())
        return "";
    bytesUsed_ += text.size();
    auto* copy = static_cast<char*>(arena_.allocate(text.size(), 1));
    std::memcpy(copy, text.data(), text.size());
    return copy;
}

Element& Tree::NewElement(const char* name) {
    bytesUsed_ += sizeof(Element);
    auto* element = new (arena_.allocate(sizeof(Element), alignof(Element))) Element{};
    element->kind = NodeKind::element;
    element->name = name;
    return *element;
}

CharacterData& Tree::NewText(NodeKind kind, std::string_view data) {
    CharacterData& node = MakeHolder<CharacterData>(data);
    node.kind = kind;
    return node;
}

Instruction& Tree::NewInstruction(const char* target, std::string_view data) {
    Instruction& node = MakeHolder<Instruction>(data);
    node.kind = NodeKind::instruction;
    node.target = target;
    return node;
}

void Tree::AppendNew(Element& parent, Node& child) noexcept {
    child.parent = &parent;
    if (parent.last == nullptr)
        parent.first = &child;
    else
        parent.last->next = &child;
    parent.last = &child;
    ++revision_;
}

void Tree::Append(Element& parent, Node& child) {
    if (!parent.IsParent())
        throw host::Error(host::error_number::unspecified, "This node cannot have child nodes.");
    const bool hasContent = child.IsParent() && child.AsElement().first != nullptr;
    for (const Element* at = &parent; at != nullptr; at = hasContent ? at->parent : nullptr) {
        if (at == &child)
            throw host::Error(host::error_number::unspecified, "A node cannot be inserted below itself.");
    }
    if (child.parent != nullptr)
        Unlink(child);
    AppendNew(parent, child);
    if (child.kind == NodeKind::element)
        Declare(child.AsElement());
}

void Tree::Declare(Element& element) {
    if (prefixes_->empty())
        return;
    const std::string prefix(PrefixOf(element.name));
    const auto known = prefixes_->find(prefix);
    if (known != prefixes_->end() && !IsDeclaredAt(element, prefix))
        SetAttribute(element, "xmlns:" + prefix, std::string(known->second));
}

void Tree::Unlink(Node& child) noexcept {
    Element& parent = *child.parent;
    Node* before = nullptr;
    for (Node* at = parent.first; at != &child; at = at->next)
        before = at;
    (before == nullptr ? parent.first : before->next) = child.next;
    if (parent.last == &child)
        parent.last = before;
    child.parent = nullptr;
    child.next = nullptr;
}

template <class Holder> void Tree::Overwrite(Holder& holder, std::string_view text) {
    const std::uint32_t newSize = CheckedSize(text);
    const std::size_t room =
        holder.place == Place::inside ? std::max<std::size_t>(leastRoom, holder.size) : holder.size;
    // A text that fits is written over the old one: setting a value again and again must not eat memory.
    if (newSize <= room && holder.place != Place::borrowed) {
        if (newSize != 0)
            std::memmove(const_cast<char*>(TextBehind(holder)), text.data(), newSize);
    } else {
        const char* const copy = Copy(text);
        std::memcpy(static_cast<void*>(&holder + 1), &copy, sizeof(copy));
        holder.place = Place::aside;
    }
    holder.size = newSize;
    ++revision_;
}

void Tree::SetText(Node& node, std::string_view text) {
    if (!node.IsParent()) {
        Overwrite(static_cast<CharacterData&>(node), text);
        return;
    }
    Element& element = node.AsElement();
    const bool oneText = element.first != nullptr && element.first == element.last &&
                         element.first->kind == NodeKind::text && !text.empty();
    if (oneText) {
        SetText(*element.first, text);
        return;
    }
    for (Node* child = element.first; child != nullptr;) {
        Node* const next = child->next;
        child->parent = nullptr;
        child->next = nullptr;
        child = next;
    }
    element.first = nullptr;
    element.last = nullptr;
    ++revision_;
    if (!text.empty())
        AppendNew(element, NewText(NodeKind::text, text));
}

const Attribute* Tree::FindAttribute(const Element& element, std::string_view name) noexcept {
    const Attribute* at = element.attributes;
    while (at != nullptr && !IsName(at->name, name))
        at = at->next;
    return at;
}

Attribute& Tree::AddAttribute(Element& element, Attribute* last, const char* name, std::string_view value) {
    Attribute& added = MakeHolder<Attribute>(value);
    added.name = name;
    (last == nullptr ? element.attributes : last->next) = &added;
    ++revision_;
    if (const auto prefix = DeclaredPrefix(name); prefix && !prefix->empty()) {
        if (prefixes_.use_count() != 1)
            prefixes_ = std::make_shared<PrefixMap>(*prefixes_);
        prefixes_->insert_or_assign(std::string(*prefix), std::string(value));
    }
    return added;
}

void Tree::SetAttribute(Element& element, std::string_view name, std::string_view value) {
    OwnAttributes(element);
    const char* const kept = Name(name);
    Attribute* last = nullptr;
    for (Attribute* at = element.attributes; at != nullptr; at = at->next) {
        if (at->name == kept) {
            Overwrite(*at, value);
            return;
        }
        last = at;
    }
    AddAttribute(element, last, kept, value);
}

bool Tree::HasPrefix(std::string_view prefix) const { return prefixes_->contains(std::string(prefix)); }

} // namespace refhost::xml
