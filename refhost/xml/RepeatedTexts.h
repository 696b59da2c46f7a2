#pragma once

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
    /// A copy of what the text gave; nullptr where it is not known.
    std::unique_ptr<Tree> Find(std::string_view text) const;
    /// Takes note of a text that was read.
    /// @return `tree`, or a copy of it where it is kept
    std::unique_ptr<Tree> Note(std::string_view text, std::unique_ptr<Tree> tree);

private:
    struct Known {
        std::string text;
        std::shared_ptr<const Tree> tree;
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
