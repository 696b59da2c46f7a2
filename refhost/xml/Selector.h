#pragma once

#include "refhost/xml/Path.h"
#include "refhost/xml/XPath.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

namespace refhost::xml {

/// Paths as they were compiled, each for the one who compiled it and for every tree that shares its names.
class CompiledPaths {
public:
    using Compiled = std::variant<Path, XPath>;

    /// What `path` means in `tree`. Throws `host::Error` -2147467259 for a path that is empty or invalid.
    const Compiled& Get(std::string_view path, Tree& tree);

private:
    struct TextHash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    std::unordered_map<std::string, Compiled, TextHash, std::equal_to<>> compiled_;
};

/// Follows paths in one tree; each path is compiled once.
/// Every member throws `host::Error` -2147467259 for a path that is empty or invalid.
class Selector {
public:
    /// @param paths of the trees that share the names of `tree`
    Selector(Tree& tree, std::shared_ptr<CompiledPaths> paths) : tree_(tree), paths_(std::move(paths)) {}

    Tree& tree() const noexcept { return tree_; }

    /// The first thing selected under `context`; no node when there is none.
    Selected First(const Node& context, std::string_view path);
    /// Everything selected under `context`, in document order.
    std::vector<Selected> All(const Node& context, std::string_view path);
    /// Calls `visit` with each of these; it changes nothing in the tree.
    template <class Visit> void ForEach(const Node& context, std::string_view path, const Visit& visit);

private:
    const CompiledPaths::Compiled& Compile(std::string_view path);
    std::vector<Selected> Evaluate(const XPath& path, const Node& context);

    Tree& tree_;
    std::shared_ptr<CompiledPaths> paths_;
    /// The copy that the last XPath was evaluated on, kept until the tree changes.
    std::unique_ptr<Mirror> mirror_;
};

template <class Visit> void Selector::ForEach(const Node& context, std::string_view path, const Visit& visit) {
    const auto& compiled = Compile(path);
    if (const auto* direct = std::get_if<Path>(&compiled)) {
        direct->Select(context, [&](const Selected& selected) {
            visit(selected);
            return true;
        });
    } else {
        std::ranges::for_each(Evaluate(std::get<XPath>(compiled), context), visit);
    }
}

} // namespace refhost::xml
