#include "text/JsonObject.h"

#include "text/Utf8.h"

#include <utility>

namespace text {
namespace {

class Reader {
public:
    explicit Reader(std::string_view json) : rest_(json) {}

    /// Takes `character` off, blanks before it too. False when something else stands there.
    bool Take(char character) {
        SkipBlanks();
        if (!rest_.starts_with(character)) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }

    std::optional<std::string> Text() {
        if (!Take('"')) {
            return std::nullopt;
        }
        std::string text;
        while (!rest_.empty() && rest_.front() != '"') {
            if (rest_.front() != '\\') {
                text.push_back(Next());
            } else if (!Escape(text)) {
                return std::nullopt;
            }
        }
        return Take('"') ? std::optional(std::move(text)) : std::nullopt;
    }

    /// A number, true, false or null.
    std::optional<std::string> Word() {
        SkipBlanks();
        const std::size_t end = rest_.find_first_of(",} \t\r\n");
        std::string word(rest_.substr(0, end));
        rest_.remove_prefix(word.size());
        const bool nested = word.starts_with('{') || word.starts_with('[');
        return word.empty() || nested ? std::nullopt : std::optional(std::move(word));
    }

    std::optional<std::string> Value() {
        SkipBlanks();
        return rest_.starts_with('"') ? Text() : Word();
    }

    bool AtEnd() {
        SkipBlanks();
        return rest_.empty();
    }

private:
    void SkipBlanks() {
        while (!rest_.empty() && std::string_view(" \t\r\n").find(rest_.front()) != std::string_view::npos) {
            rest_.remove_prefix(1);
        }
    }

    char Next() {
        const char next = rest_.front();
        rest_.remove_prefix(1);
        return next;
    }

    /// The four hexadecimal digits of a \u.
    std::optional<char32_t> Unit() {
        char32_t unit = 0;
        for (int digit = 0; digit < 4; ++digit) {
            const std::size_t value = rest_.empty() ? std::string_view::npos
                                                    : std::string_view("0123456789abcdef").find(Lower(rest_.front()));
            if (value == std::string_view::npos) {
                return std::nullopt;
            }
            unit = unit * 16 + static_cast<char32_t>(value);
            rest_.remove_prefix(1);
        }
        return unit;
    }

    static char Lower(char c) { return c >= 'A' && c <= 'F' ? static_cast<char>(c + ('a' - 'A')) : c; }

    bool Escape(std::string& text) {
        rest_.remove_prefix(1);
        if (rest_.empty()) {
            return false;
        }
        constexpr std::string_view letters = "\"\\/bfnrt";
        constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
        const char letter = Next();
        if (letter == 'u') {
            return Character(text);
        }
        const std::size_t index = letters.find(letter);
        if (index == std::string_view::npos) {
            return false;
        }
        text.push_back(meanings[index]);
        return true;
    }

    /// A character by its number, or by the two of a surrogate pair.
    bool Character(std::string& text) {
        std::optional<char32_t> unit = Unit();
        if (!unit) {
            return false;
        }
        if ((*unit & 0xFC00) == 0xD800 && rest_.starts_with("\\u")) {
            const std::string_view before = rest_;
            rest_.remove_prefix(2);
            const std::optional<char32_t> second = Unit();
            if (second && (*second & 0xFC00) == 0xDC00) {
                unit = 0x10000 + ((*unit & 0x3FF) << 10) + (*second & 0x3FF);
            } else {
                rest_ = before;
            }
        }
        AppendUtf8(text, *unit);
        return true;
    }

    std::string_view rest_;
};

} // namespace

std::optional<std::map<std::string, std::string, std::less<>>> ReadJsonObject(std::string_view json) {
    Reader reader(json);
    std::map<std::string, std::string, std::less<>> members;
    if (!reader.Take('{')) {
        return std::nullopt;
    }
    if (!reader.Take('}')) {
        do {
            std::optional<std::string> name = reader.Text();
            if (!name || !reader.Take(':')) {
                return std::nullopt;
            }
            std::optional<std::string> value = reader.Value();
            if (!value) {
                return std::nullopt;
            }
            members.insert_or_assign(*std::move(name), *std::move(value));
        } while (reader.Take(','));
        if (!reader.Take('}')) {
            return std::nullopt;
        }
    }
    return reader.AtEnd() ? std::optional(std::move(members)) : std::nullopt;
}

} // namespace text
