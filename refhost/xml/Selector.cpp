#include "refhost/xml/Selector.h"

namespace refhost::xml {
namespace {

/// Paths may carry values of a request; the cache starts anew when it holds as many as this.
constexpr std::size_t maxCompiled = 256;

} // namespace

const CompiledPaths::Compiled& CompiledPaths::Get(std::string_view path, Tree& tree) {
    if (const auto known = compiled_.find(path); known != compiled_.end())
        return known->second;
    if (compiled_.size() >= maxCompiled)
        compiled_.clear();
    if (auto direct = Path::Compile(path, tree))
        return compiled_.emplace(std::string(path), std::move(*direct)).first->second;
    return compiled_.emplace(std::string(path), XPath(path)).first->second;
}

Selected Selector::First(const Node& context, std::string_view path) {
    const auto& compiled = Compile(path);
    Selected first;
    if (const auto* direct = std::get_if<Path>(&compiled)) {
        direct->Select(context, [&](const Selected& selected) {
            first = selected;
            return false;
        });
    } else if (const auto all = Evaluate(std::get<XPath>(compiled), context); !all.empty()) {
        first = all.front();
    }
    return first;
}

std::vector<Selected> Selector::All(const Node& context, std::string_view path) {
    std::vector<Selected> all;
    ForEach(context, path, [&](const Selected& selected) { all.push_back(selected); });
    return all;
}

const CompiledPaths::Compiled& Selector::Compile(std::string_view path) {
    const auto& compiled = paths_->Get(path, tree_);
    if (const auto* direct = std::get_if<Path>(&compiled))
        direct->CheckPrefixes(tree_);
    return compiled;
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
