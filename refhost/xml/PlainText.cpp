#include "refhost/xml/PlainText.h"

#include "refhost/xml/WhiteSpace.h"
#include "text/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>

namespace refhost::xml {
namespace {

/// What goes beyond these is rare enough for libxml2, which has bounds of its own.
constexpr std::size_t mostDepth = 200;
constexpr std::size_t mostAttributes = 64;
constexpr std::size_t mostNames = 1000;
constexpr std::size_t longestName = 200;

/// A text that is not read here.
struct NotPlain {};

// Classes of characters.
constexpr std::uint8_t nameStart = 1; ///< letters and '_'
constexpr std::uint8_t namePart = 2;  ///< those, digits, '-' and '.'
constexpr std::uint8_t blank = 4;
constexpr std::uint8_t endsText = 8; ///< in text: markup, and what is written otherwise than it reads
constexpr std::uint8_t endsValue = 16;

constexpr std::array<std::uint8_t, 256> ClassTable() {
    std::array<std::uint8_t, 256> table{};
    for (unsigned c = 0; c < 256; ++c) {
        const bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
        const bool part = letter || (c >= '0' && c <= '9') || c == '-' || c == '.';
        const bool isBlank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
        // U+FFFE and U+FFFF, which are no characters, begin with 0xEF.
        const bool special = c == '<' || c == '&' || c == '\r' || c == 0xEF || (c < ' ' && !isBlank);
        unsigned value = 0;
        value |= letter ? unsigned{nameStart} : 0U;
        value |= part ? unsigned{namePart} : 0U;
        value |= isBlank ? unsigned{blank} : 0U;
        value |= special || c == ']' ? unsigned{endsText} : 0U;
        value |= special || c == '\t' || c == '\n' || c == '"' || c == '\'' ? unsigned{endsValue} : 0U;
        table.at(c) = static_cast<std::uint8_t>(value);
    }
    return table;
}

constexpr std::array<std::uint8_t, 256> classes = ClassTable();

bool Is(char c, std::uint8_t kind) { return (classes[static_cast<unsigned char>(c)] & kind) != 0; }

class Reader {
public:
    explicit Reader(std::string_view xml) : at_(xml.data()), end_(xml.data() + xml.size()) {}

    std::unique_ptr<Tree> Read() {
        ReadDeclaration();
        SkipBlanks();
        Expect('<');
        StartElement();
        while (depth_ != 0) {
            ReadContent();
        }
        SkipBlanks();
        if (at_ != end_) {
            throw NotPlain();
        }
        return std::move(tree_);
    }

private:
    /// A name that was met, for the next time.
    struct Known {
        const char* name = nullptr;
        std::size_t size = 0;
    };

    char Peek() const { return at_ == end_ ? '\0' : *at_; }
    bool Skip(char c) {
        const bool there = Peek() == c;
        at_ += there ? 1 : 0;
        return there;
    }
    void Expect(char c) {
        if (!Skip(c)) {
            throw NotPlain();
        }
    }
    bool Skip(std::string_view text) {
        const bool there = Rest().starts_with(text);
        at_ += there ? text.size() : 0;
        return there;
    }
    bool SkipBlanks() {
        const char* const begin = at_;
        while (at_ != end_ && Is(*at_, blank)) {
            ++at_;
        }
        return at_ != begin;
    }
    std::string_view Rest() const { return {at_, static_cast<std::size_t>(end_ - at_)}; }

    void ReadDeclaration() {
        if (!Skip("<?xml version=\"1.0\"")) {
            return;
        }
        if (Skip(" encoding=\"")) {
            const char* const begin = at_;
            while (at_ != end_ && Is(*at_, namePart)) {
                ++at_;
            }
            if (at_ == begin || !Is(*begin, nameStart) || *begin == '_') {
                throw NotPlain();
            }
            Expect('"');
        }
        SkipBlanks();
        if (!Skip("?>")) {
            throw NotPlain();
        }
        tree_->declaration = Tree::Declaration::plain;
    }

    std::string_view ReadName() {
        const char* const begin = at_;
        if (!Is(Peek(), nameStart)) {
            throw NotPlain();
        }
        while (at_ != end_ && Is(*at_, namePart)) {
            ++at_;
        }
        return {begin, static_cast<std::size_t>(at_ - begin)};
    }

    const char* Kept(std::string_view name) {
        std::size_t place = name.size();
        for (const std::size_t index : {std::size_t{0}, name.size() / 4, name.size() / 2, name.size() - 1}) {
            place = place * 31 + static_cast<unsigned char>(name[index]);
        }
        Known& known = names_[place % names_.size()];
        if (known.size != name.size() || !std::equal(name.begin(), name.end(), known.name)) {
            known = {tree_->PlainName(name), name.size()};
            if (tree_->NameCount() > mostNames || name.size() > longestName) {
                throw NotPlain();
            }
        }
        return known.name;
    }

    /// Behind its '<'.
    void StartElement() {
        Element& element = tree_->NewElement(Kept(ReadName()));
        tree_->AppendNew(*current_, element);
        ReadAttributes(element);
        if (Skip('/')) {
            Expect('>');
            return;
        }
        Expect('>');
        current_ = &element;
        if (++depth_ > mostDepth) {
            throw NotPlain();
        }
    }

    void ReadAttributes(Element& element) {
        Attribute* last = nullptr;
        for (std::size_t count = 0; SkipBlanks() && Is(Peek(), nameStart); ++count) {
            const std::string_view name = ReadName();
            const char* const kept = Kept(name);
            // Declarations of namespaces among them.
            if (count == mostAttributes || name.starts_with("xml") || HasAttribute(element, kept)) {
                throw NotPlain();
            }
            SkipBlanks();
            Expect('=');
            SkipBlanks();
            last = &tree_->AddAttribute(element, last, kept, ReadValue());
        }
    }

    static bool HasAttribute(const Element& element, const char* name) {
        const Attribute* at = element.attributes;
        while (at != nullptr && at->name != name) {
            at = at->next;
        }
        return at != nullptr;
    }

    std::string_view ReadValue() {
        const char quote = Peek();
        if (quote != '"' && quote != '\'') {
            throw NotPlain();
        }
        ++at_;
        const std::string_view value = ReadRun(endsValue, [&](char c) {
            if (c == quote) {
                return false;
            }
            if (c != '"' && c != '\'') {
                throw NotPlain();
            }
            return true;
        });
        Expect(quote);
        return value;
    }

    void ReadContent() {
        const char* const begin = at_;
        if (SkipBlanks() && Peek() != '<') {
            at_ = begin;
        }
        if (Peek() != '<') {
            const std::string_view text = ReadRun(endsText, [&](char c) {
                if (c == '<') {
                    return false;
                }
                if (c != ']' || Rest().starts_with("]]>")) {
                    throw NotPlain();
                }
                return true;
            });
            if (text.find_first_not_of(blanks) != std::string_view::npos) {
                tree_->AppendNew(*current_, tree_->NewText(NodeKind::text, text));
            }
        }
        Expect('<');
        if (!Skip('/')) {
            return StartElement();
        }
        if (!Skip(std::string_view(current_->name))) {
            throw NotPlain();
        }
        SkipBlanks();
        Expect('>');
        current_ = current_->parent;
        --depth_;
    }

    /// Reads up to a character at which `goesOn` returns false, which is not read; `goesOn` is asked at characters of
    /// the class `stops` that mean themselves or end it. The result lives until the next run.
    template <class GoesOn> std::string_view ReadRun(std::uint8_t stops, const GoesOn& goesOn) {
        run_.clear();
        bool rewritten = false;
        const char* begin = at_;
        const auto rewrite = [&] {
            run_.append(begin, at_);
            rewritten = true;
        };
        while (true) {
            while (at_ != end_ && !Is(*at_, stops)) {
                ++at_;
            }
            if (at_ == end_) {
                throw NotPlain();
            }
            const char c = *at_;
            if (c == '&') {
                rewrite();
                ReadReference();
                begin = at_;
            } else if (c == '\r' && stops == endsText) {
                rewrite();
                at_ += Rest().starts_with("\r\n") ? 2 : 1;
                run_.push_back('\n');
                begin = at_;
            } else if (static_cast<unsigned char>(c) == 0xEF) {
                const bool noCharacter = Rest().starts_with("\xEF\xBF\xBE") || Rest().starts_with("\xEF\xBF\xBF");
                if (noCharacter) {
                    throw NotPlain();
                }
                at_ += 3;
            } else if (goesOn(c)) {
                ++at_;
            } else if (!rewritten) {
                return {begin, static_cast<std::size_t>(at_ - begin)};
            } else {
                run_.append(begin, at_);
                return run_;
            }
        }
    }

    void ReadReference() {
        constexpr std::array<std::pair<std::string_view, char>, 5> entities = {
            {{"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''}}};
        for (const auto& [text, character] : entities) {
            if (Skip(text)) {
                run_.push_back(character);
                return;
            }
        }
        if (!Skip("&#")) {
            throw NotPlain();
        }
        const int base = Skip('x') ? 16 : 10;
        std::uint32_t codePoint = 0;
        const auto [end, error] = std::from_chars(at_, end_, codePoint, base);
        const bool character = codePoint == '\t' || codePoint == '\n' || codePoint == '\r' ||
                               (codePoint >= ' ' && codePoint <= 0x10FFFF && !text::IsSurrogate(codePoint) &&
                                codePoint != 0xFFFE && codePoint != 0xFFFF);
        if (error != std::errc() || !character) {
            throw NotPlain();
        }
        at_ = end;
        Expect(';');
        text::AppendUtf8(run_, codePoint);
    }

    const char* at_;
    const char* end_;
    std::unique_ptr<Tree> tree_ = std::make_unique<Tree>();
    Element* current_ = &tree_->document();
    std::size_t depth_ = 0;
    std::array<Known, 256> names_;
    /// A run that reads otherwise than it is written.
    std::string run_;
};

} // namespace

std::unique_ptr<Tree> ReadPlainText(std::string_view xml) try { return Reader(xml).Read(); } catch (const NotPlain&) {
    return nullptr;
}

} // namespace refhost::xml
