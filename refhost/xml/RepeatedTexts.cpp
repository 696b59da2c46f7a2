#include "refhost/xml/RepeatedTexts.h"

#include <algorithm>
#include <utility>

namespace refhost::xml {

RepeatedTexts::Copy RepeatedTexts::Find(std::string_view text) const {
    const auto* const known =
        std::ranges::find_if(known_, [&](const Known& each) { return each.tree && each.text == text; });
    return known == known_.end() || known->tree->HasManyNames() ? Copy() : known->Copied();
}

RepeatedTexts::Copy RepeatedTexts::Note(std::string_view text, std::unique_ptr<Tree> tree) {
    auto paths = std::make_shared<CompiledPaths>();
    if (text.empty() || text.size() > longest) {
        return {std::move(tree), std::move(paths)};
    }
    if (std::ranges::find(seen_, text) == seen_.end()) {
        seen_.at(nextSeen_++ % most) = text;
        return {std::move(tree), std::move(paths)};
    }
    auto* known = std::ranges::find(known_, text, &Known::text);
    if (known == known_.end()) {
        known = &known_.at(nextKnown_++ % most);
    }
    *known = {std::string(text), std::move(tree), std::move(paths)};
    return known->Copied();
}

} // namespace refhost::xml
