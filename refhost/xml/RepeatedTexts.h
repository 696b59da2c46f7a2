#pragma once

#include "refhost/xml/Selector.h"
#include "refhost/xml/Tree.h"

#include <array>
#include <memory>
#include <string>
#include <string_view>

namespace refhost::xml {

/// Texts that one thread's documents load again and again, as the empty records are that every provision is filled
/// into: read once, their tree is copied. A text is kept from the second time on, and only a short one.
class RepeatedTexts {
public:
    /// A tree of a document's own, and the paths that it shares with the other copies.
    struct Copy {
        std::unique_ptr<Tree> tree;
        std::shared_ptr<CompiledPaths> paths;
    };

    /// A copy of what the text gave; no tree where it is not known.
    Copy Find(std::string_view text) const;
    /// Takes note of a text that was read.
    /// @return `tree`, or a copy of it where it is kept
    Copy Note(std::string_view text, std::unique_ptr<Tree> tree);

private:
    struct Known {
        std::string text;
        std::shared_ptr<const Tree> tree;
        std::shared_ptr<CompiledPaths> paths;

        Copy Copied() const { return {std::make_unique<Tree>(tree), paths}; }
    };

    /// Bounds what is kept; a table of some hundred columns is shorter.
    static constexpr std::size_t longest = 65536;
    static constexpr std::size_t most = 4;

    /// Each a ring, the next place counted on.
    std::array<std::string, most> seen_;
    std::size_t nextSeen_ = 0;
    std::array<Known, most> known_;
    std::size_t nextKnown_ = 0;
};

} // namespace refhost::xml
