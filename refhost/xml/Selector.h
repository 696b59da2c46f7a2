#pragma once

#include "refhost/xml/Path.h"
#include "refhost/xml/XPath.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>
#include <vector>

namespace refhost::xml {

/// Follows paths in one tree; each path is compiled once.
/// Every member throws `host::Error` -2147467259 for a path that is empty or invalid.
class Selector {
public:
    explicit Selector(Tree& tree) : tree_(tree) {}

    Tree& tree() const noexcept { return tree_; }

    /// The first thing selected under `context`; no node when there is none.
    Selected First(const Node& context, std::string_view path);
    /// Everything selected under `context`, in document order.
    std::vector<Selected> All(const Node& context, std::string_view path);

private:
    using Compiled = std::variant<Path, XPath>;

    const Compiled& Compile(std::string_view path);
    std::vector<Selected> Evaluate(const XPath& path, const Node& context);

    struct TextHash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    Tree& tree_;
    std::unordered_map<std::string, Compiled, TextHash, std::equal_to<>> compiled_;
    /// The copy that the last XPath was evaluated on, kept until the tree changes.
    std::unique_ptr<Mirror> mirror_;
};

} // namespace refhost::xml
