#include "refhost/xml/PlainReader.h"

#include "refhost/xml/WhiteSpace.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <memory_resource>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace refhost::xml {
namespace {

// What a program's document keeps to by far; beyond, libxml2 and its bounds have their say.
constexpr std::size_t mostNames = 1024;
constexpr std::size_t mostAttributes = 32;
constexpr std::size_t longestName = 256;
constexpr std::size_t longestValue = 65536;

/// The bytes at which reading a run of characters stops.
using Stops = std::array<bool, 256>;

/// Control characters, and the byte that begins the two characters that XML does not know, are looked at closer.
constexpr Stops CommonStops() {
    Stops stops{};
    std::fill_n(stops.begin(), 0x20, true);
    stops['<'] = stops['&'] = stops[0xEF] = true;
    return stops;
}
constexpr Stops textStops = [] {
    Stops stops = CommonStops();
    stops['\t'] = stops['\n'] = false;
    stops[']'] = true;
    return stops;
}();
constexpr Stops valueStops = [] {
    Stops stops = CommonStops();
    stops['"'] = true;
    return stops;
}();
constexpr Stops nameStops = [] {
    Stops stops{};
    for (std::size_t byte = 0; byte < stops.size(); ++byte) {
        const bool isLetter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
        stops[byte] = !isLetter && byte != '_' && !(byte >= '0' && byte <= '9');
    }
    return stops;
}();

constexpr std::array<std::pair<std::string_view, char>, 5> entities = {
    {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}}};

/// Whether `text` begins with `begin`: the library's own takes longer over short texts.
bool BeginsWith(std::string_view text, std::string_view begin) {
    return text.size() >= begin.size() && std::memcmp(text.data(), begin.data(), begin.size()) == 0;
}

class Reader {
public:
    explicit Reader(std::string_view xml) : rest_(xml) {}

    std::unique_ptr<Tree> Run() { return ReadContent() ? std::move(tree_) : nullptr; }

private:
    /// A name of the text. Names follow one another as they did before: the rows of a request are alike.
    struct Name {
        std::string_view text;
        /// In the tree's name table.
        const char* kept;
        Name* next = nullptr;
    };

    /// Each returns false where the text is not plain.
    bool ReadContent();
    bool ReadStartTag();
    bool ReadAttributes(Element& element);
    bool ReadEndTag();
    bool ReadText();
    bool ReadStop(std::string& text);

    /// The name that stands next, nullptr where none does that is plain.
    Name* ReadName();
    Name* NewName();
    /// The run of characters up to the next of `stops`, or nothing where the text ends before.
    std::optional<std::string_view> TakeRun(const Stops& stops);
    bool Take(char expected);
    bool Take(std::string_view expected);

    std::string_view rest_;
    std::unique_ptr<Tree> tree_ = std::make_unique<Tree>();
    Element* current_ = &tree_->document();
    /// What the names of a short text take.
    std::array<std::byte, 4096> firstRoom_;
    std::pmr::monotonic_buffer_resource room_{firstRoom_.data(), firstRoom_.size()};
    std::pmr::unordered_map<std::string_view, Name> names_{&room_};
    Name* last_ = nullptr;
    /// The names of the open elements.
    std::vector<const Name*> open_;
    /// A text of several runs.
    std::string joined_;
};

bool Reader::Take(char expected) {
    if (!rest_.starts_with(expected))
        return false;
    rest_.remove_prefix(1);
    return true;
}

bool Reader::Take(std::string_view expected) {
    if (!BeginsWith(rest_, expected))
        return false;
    rest_.remove_prefix(expected.size());
    return true;
}

std::optional<std::string_view> Reader::TakeRun(const Stops& stops) {
    std::size_t size = 0;
    while (size < rest_.size() && !stops[static_cast<unsigned char>(rest_[size])])
        ++size;
    if (size == rest_.size())
        return std::nullopt;
    const std::string_view run = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return run;
}

Reader::Name* Reader::ReadName() {
    Name* const guess = last_ == nullptr ? nullptr : last_->next;
    const bool isGuess = guess != nullptr && rest_.size() > guess->text.size() && BeginsWith(rest_, guess->text) &&
                         nameStops[static_cast<unsigned char>(rest_[guess->text.size()])];
    if (isGuess)
        rest_.remove_prefix(guess->text.size());
    Name* const name = isGuess ? guess : NewName();
    if (last_ != nullptr)
        last_->next = name;
    last_ = name;
    return name;
}

Reader::Name* Reader::NewName() {
    const std::optional<std::string_view> text = TakeRun(nameStops);
    if (!text || text->size() > longestName || !IsPlainName(*text))
        return nullptr;
    const auto [found, fresh] = names_.try_emplace(*text, Name{*text, nullptr});
    if (fresh)
        found->second.kept = tree_->Name(*text);
    return names_.size() > mostNames ? nullptr : &found->second;
}

bool Reader::ReadContent() {
    const auto skipBlanks = [&] { rest_.remove_prefix(std::min(rest_.find_first_not_of(blanks), rest_.size())); };
    skipBlanks();
    if (!ReadStartTag())
        return false;
    while (!open_.empty()) {
        if (!ReadText() || !(rest_.substr(1).starts_with('/') ? ReadEndTag() : ReadStartTag()))
            return false;
    }
    skipBlanks();
    return rest_.empty();
}

bool Reader::ReadStartTag() {
    if (!Take('<'))
        return false;
    const Name* const name = ReadName();
    if (name == nullptr)
        return false;
    Element& element = tree_->NewElement(name->kept);
    tree_->AppendNew(*current_, element);
    if (!rest_.starts_with('>') && !ReadAttributes(element))
        return false;
    if (Take('/'))
        return Take('>');
    current_ = &element;
    open_.push_back(name);
    return Take('>');
}

bool Reader::ReadAttributes(Element& element) {
    Attribute* last = nullptr;
    for (std::size_t count = 0; Take(' ') && !rest_.starts_with('/'); ++count) {
        const Name* const name = ReadName();
        if (name == nullptr || count == mostAttributes || !Take("=\""))
            return false;
        const std::optional<std::string_view> value = TakeRun(valueStops);
        if (!value || value->size() > longestValue || !Take('"') || Tree::FindAttribute(element, name->text) != nullptr)
            return false;
        last = &tree_->AddAttribute(element, last, name->kept, *value);
    }
    return true;
}

bool Reader::ReadEndTag() {
    rest_.remove_prefix(2);
    if (!Take(open_.back()->text))
        return false;
    open_.pop_back();
    current_ = current_->parent;
    return Take('>');
}

/// Reads up to the next tag.
bool Reader::ReadText() {
    joined_.clear();
    std::optional<std::string_view> run = TakeRun(textStops);
    // Nearly every text is one run.
    const bool isOne = run && rest_.starts_with('<');
    while (run && !rest_.starts_with('<')) {
        joined_.append(*run);
        if (!ReadStop(joined_))
            return false;
        run = TakeRun(textStops);
    }
    if (!run)
        return false;
    if (!isOne)
        joined_.append(*run);
    const std::string_view text = isOne ? *run : joined_;
    if (!IsBlank(text))
        tree_->AppendNew(*current_, tree_->NewText(NodeKind::text, text));
    return true;
}

/// Reads what a run stopped at and appends what it stands for.
bool Reader::ReadStop(std::string& text) {
    if (Take("\r\n") || Take('\r')) {
        text += '\n';
        return true;
    }
    for (const auto& [entity, character] : entities) {
        if (Take(entity)) {
            text += character;
            return true;
        }
    }
    const char stop = rest_.front();
    const bool isCharacter =
        (stop == ']' && !rest_.starts_with("]]>")) || (stop == '\xEF' && !rest_.starts_with("\xEF\xBF"));
    if (isCharacter) {
        text += stop;
        rest_.remove_prefix(1);
    }
    return isCharacter;
}

} // namespace

std::unique_ptr<Tree> ReadPlain(std::string_view xml) { return Reader(xml).Run(); }

} // namespace refhost::xml
