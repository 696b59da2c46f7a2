#pragma once

#include "refhost/xml/Path.h"
#include "refhost/xml/XPath.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

namespace refhost::xml {

/// A path as it was compiled.
struct CompiledPath {
    std::variant<Path, XPath> path;
    /// Whether it selects anything below an origin's folded element; asked for once.
    std::optional<bool> selectsFolded;
    /// What that has of the attributes asked for, by their names.
    std::map<std::string, std::vector<std::string>, std::less<>> foldedValues;
};

/// Paths as they were compiled, each for the one who compiled it and for every tree that shares its names and, if it is
/// a copy, its origin.
class CompiledPaths {
public:
    /// What `path` means in `tree`. Throws `host::Error` -2147467259 for a path that is empty or invalid.
    CompiledPath& Get(std::string_view path, Tree& tree);

private:
    struct TextHash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    std::unordered_map<std::string, CompiledPath, TextHash, std::equal_to<>> compiled_;
};

/// Follows paths in one tree; each path is compiled once.
/// Every member throws `host::Error` -2147467259 for a path that is empty or invalid.
class Selector {
public:
    /// @param paths of the trees that share the names of `tree` and its origin
    Selector(Tree& tree, std::shared_ptr<CompiledPaths> paths) : tree_(tree), paths_(std::move(paths)) {}

    Tree& tree() const noexcept { return tree_; }

    /// The first thing selected under `context`; no node when there is none.
    Selected First(const Node& context, std::string_view path);
    /// Everything selected under `context`, in document order.
    std::vector<Selected> All(const Node& context, std::string_view path);
    /// The values of the attribute `name` of all elements that `path` selects in the document; the empty text of one
    /// that has no such attribute.
    std::vector<std::string> Values(std::string_view path, std::string_view name);

private:
    CompiledPath& Compile(std::string_view path);
    /// Whether an origin's folded element has anything below that the path selects.
    bool SelectsFolded(CompiledPath& compiled) const;
    /// Unfolds the tree where the path may select anything that is folded.
    void UnfoldFor(CompiledPath& compiled, const Node& context);
    std::vector<Selected> Evaluate(const XPath& path, const Node& context);

    Tree& tree_;
    std::shared_ptr<CompiledPaths> paths_;
    /// The copy that the last XPath was evaluated on, kept until the tree changes.
    std::unique_ptr<Mirror> mirror_;
};

} // namespace refhost::xml
