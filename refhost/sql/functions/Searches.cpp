#include "refhost/sql/functions/FunctionGroups.h"
#include "refhost/sql/types/CharacterOrder.h"
#include "refhost/sql/types/Collation.h"
#include "text/Utf8.h"

#include <algorithm>

namespace refhost::sql {
namespace {

/// What a text is to searches: folded, letters that stand for two as the two.
template <class Text> std::u32string Expanded(const Text& text) {
    std::u32string points;
    points.reserve(text.size());
    for (const char32_t point : text) {
        const char32_t folded = FoldCharacter(point);
        const std::u32string_view letters = Expansion(folded);
        points += letters.empty() ? std::u32string_view(&folded, 1) : letters;
    }
    return points;
}

/// A piece of a text in UTF-16 units; nowhere where `begin` is npos.
struct Piece {
    std::size_t begin = std::u16string::npos;
    std::size_t end = 0;
};

/// The end of the piece of `text` from `from` on that is `needle` (see `Expanded`); npos when it is not.
std::size_t EndOfMatch(const std::u16string& text, const std::u32string& needle, std::size_t from) {
    for (std::u32string_view rest = needle; !rest.empty(); ++from) {
        if (from >= text.size()) {
            return std::u16string::npos;
        }
        const char32_t folded = FoldCharacter(text[from]);
        const std::u32string_view letters = Expansion(folded);
        const std::u32string_view own = letters.empty() ? std::u32string_view(&folded, 1) : letters;
        if (!rest.starts_with(own)) {
            return std::u16string::npos;
        }
        rest.remove_prefix(own.size());
    }
    return from;
}

/// Where `needle` stands in `text` at or behind `from` to the collation.
Piece FindFolded(const std::u16string& text, const std::u32string& needle, std::size_t from) {
    for (std::size_t begin = from; begin < text.size() && !needle.empty(); ++begin) {
        if (const std::size_t end = EndOfMatch(text, needle, begin); end != std::u16string::npos) {
            return {begin, end};
        }
    }
    return {};
}

/// k_charindex(needle, text, start)
void CharIndexFunction(Call& call) {
    if (call.AnyNull(call.Count())) {
        return call.ReturnNull();
    }
    const std::int64_t start = call.Count() > 2 ? std::max<std::int64_t>(1, call.Integer(2)) : 1;
    const Piece found =
        FindFolded(ToUtf16(call.Text(1)), Expanded(ToUtf16(call.Text(0))), static_cast<std::size_t>(start - 1));
    call.Return(found.begin == std::u16string::npos ? std::int64_t{0} : static_cast<std::int64_t>(found.begin + 1));
}

void ReplaceFunction(Call& call) {
    if (call.AnyNull(3)) {
        return call.ReturnNull();
    }
    const std::u16string text = ToUtf16(call.Text(0));
    const std::u32string needle = Expanded(ToUtf16(call.Text(1)));
    const std::u16string replacement = ToUtf16(call.Text(2));
    if (needle.empty()) {
        return call.Return(call.Text(0));
    }
    std::u16string result;
    std::size_t position = 0;
    for (Piece found = FindFolded(text, needle, 0); found.begin != std::u16string::npos;
         found = FindFolded(text, needle, position)) {
        result.append(text, position, found.begin - position);
        result += replacement;
        position = found.end;
    }
    result.append(text, position);
    call.Return(FromUtf16(result));
}

/// Matches T-SQL's LIKE patterns: % _ [a-z] [^a-z].
class LikeMatcher {
public:
    LikeMatcher(std::u32string text, std::u32string pattern, char32_t escape)
        : text_(std::move(text)), pattern_(std::move(pattern)), escape_(escape) {}

    bool Matches() const {
        std::size_t text = 0;
        std::size_t pattern = 0;
        std::size_t retryPattern = npos;
        std::size_t retryText = 0;
        while (true) {
            if (pattern < pattern_.size() && pattern_[pattern] == U'%') {
                retryPattern = ++pattern;
                retryText = text;
                continue;
            }
            std::size_t next = pattern;
            if (text < text_.size() && pattern < pattern_.size() && MatchesOne(text_[text], next)) {
                ++text;
                pattern = next;
                continue;
            }
            if (text == text_.size() && pattern == pattern_.size()) {
                return true;
            }
            if (retryPattern == npos || retryText >= text_.size()) {
                return false;
            }
            pattern = retryPattern;
            text = ++retryText;
        }
    }

private:
    static constexpr std::size_t npos = std::u32string::npos;

    /// Whether `c` matches the element at `pattern`, which moves behind it.
    bool MatchesOne(char32_t c, std::size_t& pattern) const {
        const char32_t element = pattern_[pattern++];
        if (escape_ != 0 && element == escape_ && pattern < pattern_.size()) {
            return pattern_[pattern++] == c;
        }
        if (element == U'_') {
            return true;
        }
        const std::size_t close = element == U'[' ? pattern_.find(U']', pattern) : npos;
        if (close == npos) {
            return element == c;
        }
        const bool negated = pattern_[pattern] == U'^';
        std::size_t at = pattern + (negated ? 1 : 0);
        bool found = false;
        for (; at < close; ++at) {
            if (at + 2 < close && pattern_[at + 1] == U'-') {
                found = found || (WeightOf(pattern_[at]) <= WeightOf(c) && WeightOf(c) <= WeightOf(pattern_[at + 2]));
                at += 2;
            } else {
                found = found || pattern_[at] == c;
            }
        }
        pattern = close + 1;
        return found != negated;
    }

    std::u32string text_;
    std::u32string pattern_;
    char32_t escape_;
};

std::u32string FoldedPoints(std::string_view text) {
    std::u32string points;
    points.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        points += FoldCharacter(NextCodePoint(text, position));
    }
    return points;
}

bool HasExpansion(const std::u32string& text) {
    return std::ranges::any_of(text, [](char32_t folded) { return !Expansion(folded).empty(); });
}

/// k_like(text, pattern[, escape])
void LikeFunction(Call& call) {
    if (call.AnyNull(call.Count())) {
        return call.ReturnNull();
    }
    const std::u32string escape = call.Count() > 2 ? FoldedPoints(call.Text(2)) : std::u32string();
    std::u32string text = FoldedPoints(call.Text(0));
    const std::u32string pattern = FoldedPoints(call.Text(1));
    const char32_t escapePoint = escape.empty() ? U'\0' : escape.front();
    const auto matches = [&] {
        // A letter that stands for two is one to _ and two to the two.
        return LikeMatcher(text, pattern, escapePoint).Matches() ||
               ((HasExpansion(text) || HasExpansion(pattern)) &&
                LikeMatcher(Expanded(text), Expanded(pattern), escapePoint).Matches());
    };
    bool like = matches();
    if (!like && !text.empty() && text.back() == U' ') {
        // Trailing blanks of the value do not count.
        const std::size_t last = text.find_last_not_of(U' ');
        text.erase(last == std::u32string::npos ? 0 : last + 1);
        like = matches();
    }
    call.Return(std::int64_t{like ? 1 : 0});
}

/// k_patindex(pattern, text): where the pattern, which % in front lets begin anywhere, is met first.
void PatternIndexFunction(Call& call) {
    if (call.AnyNull(2)) {
        return call.ReturnNull();
    }
    std::u32string pattern = FoldedPoints(call.Text(0));
    const bool anywhere = pattern.starts_with(U'%');
    pattern.erase(0, std::min(pattern.find_first_not_of(U'%'), pattern.size()));
    const std::string_view text = call.Text(1);
    std::int64_t place = 1;
    for (std::size_t position = 0;;) {
        if (LikeMatcher(FoldedPoints(text.substr(position)), pattern, U'\0').Matches()) {
            return call.Return(place);
        }
        if (!anywhere || position >= text.size()) {
            return call.Return(std::int64_t{0});
        }
        place += NextCodePoint(text, position) > 0xffff ? 2 : 1;
    }
}

} // namespace

std::span<const FunctionRow> SearchFunctions() {
    static constexpr std::array rows{
        FunctionRow{"k_charindex", -1, Entry<CharIndexFunction>},
        FunctionRow{"k_replace", 3, Entry<ReplaceFunction>},
        FunctionRow{"k_like", -1, Entry<LikeFunction>},
        FunctionRow{"k_patindex", 2, Entry<PatternIndexFunction>},
    };
    return rows;
}

} // namespace refhost::sql
