#include "refhost/xml/Selector.h"

#include <algorithm>
#include <utility>

namespace refhost::xml {
namespace {

/// Paths may carry values of a request; the cache starts anew when it holds as many as this.
constexpr std::size_t maxCompiled = 256;

std::vector<Selected> AllOf(const Path& path, const Node& context) {
    std::vector<Selected> all;
    path.Select(context, [&](const Selected& selected) {
        all.push_back(selected);
        return true;
    });
    return all;
}

std::vector<std::string> ValuesOf(const std::vector<Selected>& all, std::string_view name) {
    std::vector<std::string> values;
    values.reserve(all.size());
    for (const Selected& selected : all) {
        const bool isElement = selected.attribute == nullptr && selected.node->kind == NodeKind::element;
        const Attribute* const found = isElement ? Tree::FindAttribute(selected.node->AsElement(), name) : nullptr;
        values.emplace_back(found == nullptr ? std::string_view() : found->Value());
    }
    return values;
}

bool IsBelow(const Node& node, const Node& top) {
    const Node* at = node.parent;
    while (at != nullptr && at != &top)
        at = at->parent;
    return at != nullptr;
}

} // namespace

CompiledPath& CompiledPaths::Get(std::string_view path, Tree& tree) {
    if (const auto known = compiled_.find(path); known != compiled_.end())
        return known->second;
    if (compiled_.size() >= maxCompiled)
        compiled_.clear();
    if (auto direct = Path::Compile(path, tree))
        return compiled_.try_emplace(std::string(path), CompiledPath{std::move(*direct), {}, {}}).first->second;
    return compiled_.try_emplace(std::string(path), CompiledPath{XPath(path), {}, {}}).first->second;
}

Selected Selector::First(const Node& context, std::string_view path) {
    CompiledPath& compiled = Compile(path);
    UnfoldFor(compiled, context);
    Selected first;
    if (const auto* direct = std::get_if<Path>(&compiled.path)) {
        direct->Select(context, [&](const Selected& selected) {
            first = selected;
            return false;
        });
    } else if (const auto all = Evaluate(std::get<XPath>(compiled.path), context); !all.empty()) {
        first = all.front();
    }
    return first;
}

std::vector<Selected> Selector::All(const Node& context, std::string_view path) {
    CompiledPath& compiled = Compile(path);
    UnfoldFor(compiled, context);
    if (const auto* direct = std::get_if<Path>(&compiled.path))
        return AllOf(*direct, context);
    return Evaluate(std::get<XPath>(compiled.path), context);
}

std::vector<std::string> Selector::Values(std::string_view path, std::string_view name) {
    CompiledPath& compiled = Compile(path);
    if (SelectsFolded(compiled)) {
        // What is folded is the same in every copy.
        if (AllOf(std::get<Path>(compiled.path), tree_.document()).empty()) {
            auto known = compiled.foldedValues.find(name);
            if (known == compiled.foldedValues.end()) {
                const auto values = ValuesOf(AllOf(std::get<Path>(compiled.path), tree_.Origin()->document()), name);
                known = compiled.foldedValues.emplace(name, values).first;
            }
            return known->second;
        }
    }
    return ValuesOf(All(tree_.document(), path), name);
}

CompiledPath& Selector::Compile(std::string_view path) {
    CompiledPath& compiled = paths_->Get(path, tree_);
    if (const auto* direct = std::get_if<Path>(&compiled.path))
        direct->CheckPrefixes(tree_);
    return compiled;
}

bool Selector::SelectsFolded(CompiledPath& compiled) const {
    const Element* const folded = tree_.FoldedOrigin();
    const auto* direct = std::get_if<Path>(&compiled.path);
    if (folded == nullptr || direct == nullptr)
        return false;
    if (!compiled.selectsFolded) {
        compiled.selectsFolded =
            std::ranges::any_of(AllOf(*direct, tree_.Origin()->document()),
                                [&](const Selected& selected) { return IsBelow(*selected.node, *folded); });
    }
    return *compiled.selectsFolded;
}

void Selector::UnfoldFor(CompiledPath& compiled, const Node& context) {
    const auto* direct = std::get_if<Path>(&compiled.path);
    const bool isFromDocument = &context == &tree_.document() || (direct != nullptr && direct->IsFromRoot());
    if (direct == nullptr || (isFromDocument && SelectsFolded(compiled)))
        tree_.Unfold();
}

std::vector<Selected> Selector::Evaluate(const XPath& path, const Node& context) {
    const Node* top = &context;
    while (top->parent != nullptr)
        top = top->parent;
    if (!mirror_ || !mirror_->IsCurrent(tree_, *top)) {
        mirror_.reset();
        mirror_ = std::make_unique<Mirror>(tree_, *top);
    }
    return mirror_->Select(path, context);
}

} // namespace refhost::xml
