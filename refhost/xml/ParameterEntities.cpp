#include "refhost/xml/ParameterEntities.h"

#include "refhost/xml/WhiteSpace.h"
#include "text/Utf8.h"

#include <charconv>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

namespace refhost::xml {
namespace {

constexpr std::size_t none = std::string_view::npos;

/// What an entity's reference stands for: its literal with the character references in it read.
std::string ReplacementText(std::string_view literal) {
    std::string text;
    text.reserve(literal.size());
    while (!literal.empty()) {
        const std::size_t reference = literal.find("&#");
        text.append(literal.substr(0, reference));
        if (reference == none)
            break;
        literal.remove_prefix(reference);
        const bool isHexadecimal = literal.substr(2).starts_with('x');
        const char* const digits = literal.data() + (isHexadecimal ? 3 : 2);
        const char* const end = literal.data() + literal.size();
        std::uint32_t codePoint = 0;
        const auto [last, error] = std::from_chars(digits, end, codePoint, isHexadecimal ? 16 : 10);
        const bool isCharacter = error == std::errc() && last != end && *last == ';' && codePoint != 0 &&
                                 codePoint <= 0x10FFFF && !text::IsSurrogate(codePoint);
        // The parser refuses the declaration of anything else.
        if (!isCharacter)
            break;
        text::AppendUtf8(text, codePoint);
        literal.remove_prefix(static_cast<std::size_t>(last + 1 - literal.data()));
    }
    return text;
}

/// The position behind a declaration, comment or instruction that begins at `at`, or `none` when it has no end.
std::size_t EndOfMarkup(std::string_view text, std::size_t at) {
    const auto behind = [&](std::string_view end, std::size_t from) {
        const std::size_t found = text.find(end, from);
        return found == none ? none : found + end.size();
    };
    if (text.substr(at).starts_with("<!--"))
        return behind("-->", at + 4);
    if (text.substr(at).starts_with("<?"))
        return behind("?>", at + 2);
    while (true) {
        at = text.find_first_of("\"'>", at);
        if (at == none || text[at] == '>')
            return at == none ? none : at + 1;
        at = behind(text.substr(at, 1), at + 1);
        if (at == none)
            return none;
    }
}

/// The position behind the '[' of a document type, or `none` for a text without an internal subset.
std::size_t StartOfSubset(std::string_view xml) {
    std::size_t at = xml.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    while (true) {
        at = xml.find_first_not_of(blanks, at);
        if (at == none)
            return none;
        const std::string_view rest = xml.substr(at);
        if (rest.starts_with("<!DOCTYPE"))
            break;
        if (!rest.starts_with("<?") && !rest.starts_with("<!--"))
            return none;
        at = EndOfMarkup(xml, at);
    }
    while (true) {
        at = xml.find_first_of("\"'[>", at);
        if (at == none || xml[at] == '>')
            return none;
        if (xml[at] == '[')
            return at + 1;
        at = xml.find(xml[at], at + 1);
        if (at == none)
            return none;
        ++at;
    }
}

class Subset {
public:
    Subset(std::string_view xml, std::size_t budget) : xml_(xml), budget_(budget) {}

    WrittenOut WriteOut();

private:
    struct Entity {
        /// Nothing for one that lies outside.
        std::optional<std::string> text;
        bool isOpen = false;
    };

    /// A text being read: the document's own, without an entity, or an entity's.
    struct Source {
        std::string_view text;
        std::size_t at;
        Entity* entity;
    };

    void Read();
    /// Takes what stands at the source's position.
    /// @return false at the end of the subset, and where it is ill-formed
    bool Take(Source& source);
    void Leave();
    void Follow(Source& source);
    void Declare(std::string_view declaration);

    std::string_view xml_;
    std::size_t budget_;
    std::unordered_map<std::string_view, Entity> entities_;
    std::vector<Source> open_;
    std::string text_;
    /// How much of the document stands in `text_`.
    std::size_t written_ = 0;
    std::string reason_;
};

WrittenOut Subset::WriteOut() {
    const std::size_t start = StartOfSubset(xml_);
    if (start == none)
        return {};
    open_.push_back({xml_, start, nullptr});
    Read();
    if (!reason_.empty())
        return {std::nullopt, std::move(reason_)};
    if (written_ == 0)
        return {};
    text_.append(xml_.substr(written_));
    return {std::move(text_), {}};
}

void Subset::Read() {
    while (reason_.empty()) {
        Source& source = open_.back();
        const std::size_t next = source.text.find_first_not_of(blanks, source.at);
        if (next != none) {
            source.at = next;
            if (!Take(source))
                return;
        } else if (source.entity != nullptr) {
            Leave();
        } else {
            return;
        }
    }
}

bool Subset::Take(Source& source) {
    const std::string_view rest = source.text.substr(source.at);
    if (rest.starts_with('%')) {
        Follow(source);
        return true;
    }
    const bool isMarkup = rest.starts_with("<!") || rest.starts_with("<?");
    const std::size_t end = isMarkup ? EndOfMarkup(source.text, source.at) : none;
    if (end == none) {
        if (source.entity != nullptr)
            reason_ = "A parameter entity holds something else than whole declarations.";
        return false;
    }
    const std::string_view markup = source.text.substr(source.at, end - source.at);
    Declare(markup);
    if (source.entity != nullptr)
        text_.append(markup);
    source.at = end;
    return true;
}

void Subset::Leave() {
    open_.back().entity->isOpen = false;
    open_.pop_back();
    // An entity's text counts as one with a blank at either end.
    text_.push_back(' ');
}

void Subset::Follow(Source& source) {
    const std::size_t start = source.at + 1;
    const std::size_t end = source.text.find(';', start);
    const std::string_view name = end == none ? std::string_view() : source.text.substr(start, end - start);
    const auto known = entities_.find(name);
    if (known == entities_.end() || !known->second.text) {
        reason_ = "A parameter entity is referred to that the text does not declare.";
        return;
    }
    Entity& entity = known->second;
    if (entity.isOpen) {
        reason_ = "The parameter entity '" + std::string(name) + "' holds itself.";
        return;
    }
    const std::size_t cost = entity.text->size() + 2;
    if (cost > budget_) {
        reason_ = "The text's parameter entities expand to too much.";
        return;
    }
    budget_ -= cost;
    if (source.entity == nullptr) {
        text_.append(xml_.substr(written_, source.at - written_));
        written_ = end + 1;
    }
    source.at = end + 1;
    entity.isOpen = true;
    text_.push_back(' ');
    open_.push_back({*entity.text, 0, &entity});
}

void Subset::Declare(std::string_view declaration) {
    constexpr std::string_view start = "<!ENTITY";
    if (!declaration.starts_with(start))
        return;
    const auto next = [&](std::size_t from) { return declaration.find_first_not_of(blanks, from); };
    const std::size_t sign = next(start.size());
    if (declaration[sign] != '%')
        return;
    const std::size_t name = next(sign + 1);
    const std::size_t nameEnd = declaration.find_first_of(blanks, name);
    // The parser refuses what breaks off here.
    if (nameEnd == none)
        return;
    const std::size_t value = next(nameEnd);
    const char quote = declaration[value];
    Entity entity;
    if (quote == '"' || quote == '\'') {
        const std::size_t literal = value + 1;
        entity.text = ReplacementText(declaration.substr(literal, declaration.find(quote, literal) - literal));
    }
    // The first declaration of a name counts.
    entities_.try_emplace(declaration.substr(name, nameEnd - name), std::move(entity));
}

} // namespace

WrittenOut WriteOutParameterEntities(std::string_view xml, std::size_t budget) {
    return Subset(xml, budget).WriteOut();
}

} // namespace refhost::xml
