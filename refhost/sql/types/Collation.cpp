#include "refhost/sql/types/Collation.h"

#include "refhost/sql/types/CharacterOrder.h"
#include "text/Utf8.h"

#include <algorithm>

namespace refhost::sql {
namespace {

constexpr char32_t strangeByte = 0x110000;

unsigned char ByteAt(std::string_view text, std::size_t index) { return static_cast<unsigned char>(text[index]); }

/// Without blanks at the end, full-width ones included.
std::string_view WithoutTrailingBlanks(std::string_view text) {
    constexpr std::string_view wideBlank = "\u3000";
    while (true) {
        if (!text.empty() && text.back() == ' ') {
            text.remove_suffix(1);
        } else if (text.ends_with(wideBlank)) {
            text.remove_suffix(wideBlank.size());
        } else {
            return text;
        }
    }
}

/// A plain decimal number taken apart.
struct Number {
    bool negative = false;
    std::string_view whole;
    std::string_view fraction;
};

Number TakeApart(std::string_view text) {
    Number number;
    if (!text.empty() && text.front() == '-') {
        number.negative = true;
        text.remove_prefix(1);
    }
    const std::size_t point = text.find('.');
    number.whole = text.substr(0, point);
    if (point != std::string_view::npos) {
        number.fraction = text.substr(point + 1);
    }
    number.whole.remove_prefix(std::min(number.whole.find_first_not_of('0'), number.whole.size()));
    const std::size_t last = number.fraction.find_last_not_of('0');
    number.fraction = number.fraction.substr(0, last == std::string_view::npos ? 0 : last + 1);
    if (number.whole.empty() && number.fraction.empty()) {
        number.negative = false;
    }
    return number;
}

/// What hyphens and apostrophes tell of two texts that are alike without them: the text that has one at an earlier
/// place comes first, and one that has none before all.
class MinimalOrder {
public:
    /// Both texts have one at the same place.
    void Both(char32_t left, char32_t right) {
        if (extra_ != 0) {
            Decide(-extra_);
        } else if (left != right) {
            Decide(left < right ? -1 : 1);
        }
    }
    /// The left text (`side` 1) or the right one (-1) alone has one at this place.
    void One(int side) {
        if (extra_ == 0) {
            extra_ = side;
        } else if (extra_ != side) {
            Decide(-extra_);
        }
    }
    int Result() const { return decided_ != 0 ? decided_ : extra_; }

private:
    void Decide(int result) { decided_ = decided_ == 0 ? result : decided_; }

    int extra_ = 0;
    int decided_ = 0;
};

bool IsContinuation(std::string_view text, std::size_t index) {
    return index < text.size() && text::ContinuesUtf8(text[index]);
}

/// Length of what both texts begin with, cut to whole characters.
std::size_t CommonPrefix(std::string_view left, std::string_view right) {
    auto length = static_cast<std::size_t>(std::mismatch(left.begin(), left.end(), right.begin(), right.end()).first -
                                           left.begin());
    while (length > 0 && (IsContinuation(left, length) || IsContinuation(right, length))) {
        --length;
    }
    return length;
}

/// The order of texts where ASCII alone decides it at the place of the first difference; else 0.
int CompareAscii(std::string_view left, std::string_view right, std::size_t place) {
    if (place == left.size() || place == right.size() || ((ByteAt(left, place) | ByteAt(right, place)) & 0x80U) != 0) {
        return 0;
    }
    const int leftWeight = character_order::ascii[ByteAt(left, place)];
    const int rightWeight = character_order::ascii[ByteAt(right, place)];
    return leftWeight == 0 || rightWeight == 0 ? 0 : leftWeight - rightWeight;
}

/// A text read character by character, folded.
class Reader {
public:
    Reader(std::string_view text, std::size_t position) : text_(text), position_(position) { Read(); }

    bool AtEnd() const { return atEnd_; }
    char32_t Character() const { return character_; }
    bool AtMinimal() const { return !atEnd_ && IsMinimal(character_); }
    void Read() {
        if (!pending_.empty()) {
            return TakePending();
        }
        atEnd_ = position_ >= text_.size();
        if (atEnd_) {
            return;
        }
        if (const unsigned char byte = ByteAt(text_, position_); byte < 0x80) {
            character_ = FoldCharacter(byte);
            ++position_;
            return;
        }
        character_ = FoldCharacter(NextCodePoint(text_, position_));
        if (pending_ = Expansion(character_); !pending_.empty()) {
            TakePending();
        }
    }

private:
    void TakePending() {
        character_ = pending_.front();
        pending_.remove_prefix(1);
    }

    std::string_view text_;
    std::size_t position_;
    /// What is still to come of a letter that stands for two.
    std::u32string_view pending_;
    char32_t character_ = 0;
    bool atEnd_ = false;
};

/// The order of texts that are alike up to `prefix`, character by character. Apart from `CompareText`, whose answer
/// most often needs none of it.
[[gnu::noinline]] int CompareRest(std::string_view left, std::string_view right, std::size_t prefix) {
    Reader l(left, prefix);
    Reader r(right, prefix);
    int accents = 0;
    MinimalOrder minimal;
    while (true) {
        const bool leftMinimal = l.AtMinimal();
        const bool rightMinimal = r.AtMinimal();
        if (leftMinimal && rightMinimal) {
            minimal.Both(l.Character(), r.Character());
            l.Read();
            r.Read();
        } else if (leftMinimal) {
            minimal.One(1);
            l.Read();
        } else if (rightMinimal) {
            minimal.One(-1);
            r.Read();
        } else if (l.AtEnd() || r.AtEnd()) {
            break;
        } else {
            if (l.Character() != r.Character()) {
                const Weight leftWeight = WeightOf(l.Character());
                const Weight rightWeight = WeightOf(r.Character());
                if (leftWeight.primary != rightWeight.primary) {
                    return leftWeight.primary < rightWeight.primary ? -1 : 1;
                }
                if (accents == 0) {
                    accents = leftWeight.secondary < rightWeight.secondary ? -1 : 1;
                }
            }
            l.Read();
            r.Read();
        }
    }
    if (l.AtEnd() != r.AtEnd()) {
        return l.AtEnd() ? -1 : 1;
    }
    return accents != 0 ? accents : minimal.Result();
}

} // namespace

char32_t NextCodePoint(std::string_view text, std::size_t& position) {
    const text::Utf8Character character = text::ReadUtf8(text, position);
    const char32_t codePoint = character.valid ? character.codePoint : strangeByte + ByteAt(text, position);
    position += character.length;
    return codePoint;
}

void AppendCodePoint(std::string& text, char32_t codePoint) {
    if (codePoint < strangeByte) {
        text::AppendUtf8(text, codePoint);
    } else {
        text += static_cast<char>(codePoint - strangeByte);
    }
}

int CompareText(std::string_view left, std::string_view right) {
    left = WithoutTrailingBlanks(left);
    right = WithoutTrailingBlanks(right);
    const std::size_t prefix = CommonPrefix(left, right);
    if (prefix == left.size() && prefix == right.size()) {
        return 0;
    }
    if (const int order = CompareAscii(left, right, prefix); order != 0) {
        return order;
    }
    return CompareRest(left, right, prefix);
}

int CompareExact(std::string_view left, std::string_view right) {
    const Number l = TakeApart(left);
    const Number r = TakeApart(right);
    if (l.negative != r.negative) {
        return l.negative ? -1 : 1;
    }
    int order = 0;
    if (l.whole.size() != r.whole.size()) {
        order = l.whole.size() < r.whole.size() ? -1 : 1;
    } else {
        order = l.whole.compare(r.whole);
        if (order == 0) {
            order = l.fraction.compare(r.fraction);
        }
    }
    return l.negative ? -order : order;
}

std::string FoldText(std::string_view text) {
    text = WithoutTrailingBlanks(text);
    std::string folded;
    folded.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const char32_t character = FoldCharacter(NextCodePoint(text, position));
        const std::u32string_view letters = Expansion(character);
        for (const char32_t letter : letters.empty() ? std::u32string_view(&character, 1) : letters) {
            AppendCodePoint(folded, letter);
        }
    }
    return folded;
}

} // namespace refhost::sql
