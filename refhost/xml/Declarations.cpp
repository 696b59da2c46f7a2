#include "refhost/xml/Declarations.h"

#include <cstddef>
#include <unordered_map>
#include <utility>

namespace refhost::xml {
namespace {

/// The nearest declaration of each prefix.
using Nearest = std::unordered_map<std::string_view, std::string_view>;

Nearest DeclaredAbove(const Element& top) {
    Nearest declared;
    for (const Element* at = top.parent; at != nullptr; at = at->parent) {
        for (const Attribute* attribute = at->attributes; attribute != nullptr; attribute = attribute->next) {
            if (const auto prefix = DeclaredPrefix(attribute->name))
                declared.emplace(*prefix, attribute->Value());
        }
    }
    // What takes the namespace of names without prefix away leaves nothing to be declared.
    if (const auto none = declared.find(""); none != declared.end() && none->second.empty())
        declared.erase(none);
    return declared;
}

/// Walks through an element and gathers what its names need and nothing in it declares.
class Needs {
public:
    explicit Needs(Nearest above) : above_(std::move(above)) {}

    std::vector<Declaration> Of(const Element& top) {
        const Node* at = &top;
        Enter(top);
        while (!above_.empty()) {
            if (at->IsParent() && at->AsElement().first != nullptr) {
                at = at->AsElement().first;
            } else {
                Leave(*at);
                while (at != &top && at->next == nullptr) {
                    at = at->parent;
                    Leave(*at);
                }
                if (at == &top)
                    break;
                at = at->next;
            }
            if (at->kind == NodeKind::element)
                Enter(at->AsElement());
        }
        return std::move(needed_);
    }

private:
    void Enter(const Element& element) {
        for (const Attribute* at = element.attributes; at != nullptr; at = at->next) {
            if (const auto prefix = DeclaredPrefix(at->name)) {
                ++inside_[*prefix];
                order_.emplace_back(&element, *prefix);
            }
        }
        Need(PrefixOf(element.name));
        for (const Attribute* at = element.attributes; at != nullptr; at = at->next) {
            const std::string_view prefix = PrefixOf(at->name);
            if (!prefix.empty())
                Need(prefix);
        }
    }

    void Leave(const Node& node) {
        for (; !order_.empty() && order_.back().first == &node; order_.pop_back())
            --inside_[order_.back().second];
    }

    void Need(std::string_view prefix) {
        const auto found = above_.find(prefix);
        if (found == above_.end())
            return;
        if (const auto own = inside_.find(prefix); own != inside_.end() && own->second != 0)
            return;
        needed_.push_back({found->first, found->second});
        above_.erase(found);
    }

    Nearest above_;
    /// How many elements around the one at hand declare a prefix, and which in what order.
    std::unordered_map<std::string_view, std::size_t> inside_;
    std::vector<std::pair<const Node*, std::string_view>> order_;
    std::vector<Declaration> needed_;
};

} // namespace

std::optional<std::string_view> DeclaredPrefix(std::string_view attributeName) {
    constexpr std::string_view withPrefix = "xmlns:";
    if (attributeName == "xmlns")
        return std::string_view();
    if (attributeName.starts_with(withPrefix))
        return attributeName.substr(withPrefix.size());
    return std::nullopt;
}

std::string_view PrefixOf(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

std::vector<Declaration> NeededFromAbove(const Element& top) { return Needs(DeclaredAbove(top)).Of(top); }

bool IsDeclaredAt(const Element& element, std::string_view prefix) {
    for (const Element* at = &element; at != nullptr; at = at->parent) {
        for (const Attribute* attribute = at->attributes; attribute != nullptr; attribute = attribute->next) {
            if (DeclaredPrefix(attribute->name) == prefix)
                return true;
        }
    }
    return false;
}

} // namespace refhost::xml
