#pragma once

#include "refhost/xml/Tree.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace refhost::xml {

/// Prefixes that paths may use in every document: those of recordsets saved as XML.
inline constexpr std::array<const char*, 4> recordsetPrefixes = {"s", "dt", "rs", "z"};

/// What a path selects: a node, or an attribute of an element.
struct Selected {
    const Node* node = nullptr;
    const Attribute* attribute = nullptr;
};

/// A path that needs no XPath engine: names (or `*`) joined by `/`, behind an optional `/`, `//` or `.//`, and an
/// attribute as the last step. Names are compared as they stand, prefix included.
class Path {
public:
    /// The path in `text`, or nothing when only an XPath engine can tell what it means. It is good for every tree that
    /// shares the names of `tree`.
    static std::optional<Path> Compile(std::string_view text, Tree& tree);

    /// Throws `host::Error` for a prefix that the tree does not declare.
    void CheckPrefixes(const Tree& tree) const;

    /// Whether it starts at the top, whatever its context.
    bool IsFromRoot() const noexcept { return fromRoot_; }
    /// Calls `visit` with each node selected under `context`, in document order, until it returns false.
    template <class Visit> void Select(const Node& context, Visit&& visit) const;

private:
    /// A name of the tree's name table, or nullptr for any name.
    using Step = const char*;

    void NotePrefix(std::string_view name);
    template <class Visit> bool Descend(const Element& parent, std::size_t step, Visit& visit) const;
    template <class Visit> void SelectAnywhere(const Node& start, Visit& visit) const;
    template <class Visit> bool Deliver(const Node& node, Visit& visit) const;
    bool EndsChain(const Node& node, const Node& start) const;

    static bool Matches(const Node& node, Step step) {
        return node.kind == NodeKind::element && (step == nullptr || node.AsElement().name == step);
    }

    bool fromRoot_ = false;
    bool anywhere_ = false;
    std::vector<Step> steps_;
    /// The attribute that the last step names.
    std::optional<Step> attribute_;
    /// Prefixes that a document has to declare.
    std::vector<std::string> prefixes_;
};

template <class Visit> void Path::Select(const Node& context, Visit&& visit) const {
    const Node* start = &context;
    while (fromRoot_ && start->parent != nullptr)
        start = start->parent;
    if (anywhere_)
        SelectAnywhere(*start, visit);
    else if (steps_.empty())
        Deliver(*start, visit);
    else if (start->IsParent())
        Descend(start->AsElement(), 0, visit);
}

template <class Visit> bool Path::Descend(const Element& parent, std::size_t step, Visit& visit) const {
    for (const Node* child = parent.first; child != nullptr; child = child->next) {
        if (!Matches(*child, steps_[step]))
            continue;
        const bool goOn =
            step + 1 == steps_.size() ? Deliver(*child, visit) : Descend(child->AsElement(), step + 1, visit);
        if (!goOn)
            return false;
    }
    return true;
}

template <class Visit> void Path::SelectAnywhere(const Node& start, Visit& visit) const {
    for (const Node* at = NextInOrder(start, start); at != nullptr; at = NextInOrder(*at, start)) {
        if (Matches(*at, steps_.back()) && EndsChain(*at, start) && !Deliver(*at, visit))
            return;
    }
}

template <class Visit> bool Path::Deliver(const Node& node, Visit& visit) const {
    if (!attribute_)
        return visit(Selected{&node, nullptr});
    if (node.kind != NodeKind::element)
        return true;
    for (const Attribute* at = node.AsElement().attributes; at != nullptr; at = at->next) {
        if (at->name == *attribute_)
            return visit(Selected{&node, at});
    }
    return true;
}

} // namespace refhost::xml
