#include "refhost/xml/RepeatedTexts.h"

#include <algorithm>
#include <utility>

namespace refhost::xml {

std::unique_ptr<Tree> RepeatedTexts::Find(std::string_view text) const {
    const auto* const known =
        std::ranges::find_if(known_, [&](const Known& each) { return each.tree && each.text == text; });
    return known == known_.end() ? nullptr : std::make_unique<Tree>(known->tree);
}

std::unique_ptr<Tree> RepeatedTexts::Note(std::string_view text, std::unique_ptr<Tree> tree) {
    if (text.empty() || text.size() > longest) {
        return tree;
    }
    if (std::ranges::find(seen_, text) == seen_.end()) {
        seen_.at(nextSeen_++ % most) = text;
        return tree;
    }
    Known& known = known_.at(nextKnown_++ % most);
    known = {std::string(text), std::move(tree)};
    return std::make_unique<Tree>(known.tree);
}

} // namespace refhost::xml
