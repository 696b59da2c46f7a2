#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace importing {

/// Edit distance between two texts (Levenshtein), in characters; at most `limit` + 1, where counting stops.
std::size_t EditDistance(std::string_view a, std::string_view b, std::size_t limit);

/// The valid codes of one kind (warehouses, items, accounts …) with their names, as the account has them.
class KnownCodes {
public:
    void Add(std::string code, std::string name);

    /// The code as the account spells it; it compares without regard to ASCII letter case. Nothing when there is none.
    std::optional<std::string> Find(std::string_view code) const;

    /// The code that differs from `code`, all digits, by zeros in front alone. Nothing when there is none or several.
    std::optional<std::string> WithLeadingZeros(std::string_view code) const;

    /// Another code that differs from `code`, one of the known ones, by zeros in front alone.
    std::optional<std::string> AlsoWithLeadingZeros(std::string_view code) const;

    /// The code that differs from `code` by the letter O for the digit 0, or the other way round, alone.
    std::optional<std::string> WithDigitForLetter(std::string_view code) const;

    struct Known {
        std::string code;
        std::string name;
    };

    /// The nearest code by edit distance, at most a third of `code`'s characters away, the first in order among equals.
    std::optional<Known> Nearest(std::string_view code) const;

    bool empty() const noexcept { return codes_.empty(); }
    /// All of them, in order of their upper-case spelling.
    const std::map<std::string, Known, std::less<>>& all() const noexcept { return codes_; }

private:
    std::map<std::string, Known, std::less<>> codes_;
    std::multimap<std::string, std::string, std::less<>> withoutZeros_;
    std::multimap<std::string, std::string, std::less<>> digitsForLetters_;
};

} // namespace importing
