#include "import/cells/KnownCodes.h"

#include "ModPub/Text.h"
#include "text/Utf8.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace importing {
namespace {

std::u32string Characters(std::string_view text) {
    std::u32string characters;
    for (std::size_t at = 0; at < text.size();) {
        const text::Utf8Character character = text::ReadUtf8(text, at);
        characters.push_back(character.codePoint);
        at += character.length;
    }
    return characters;
}

std::string WithoutZeros(std::string_view digits) {
    const std::size_t first = digits.find_first_not_of('0');
    return std::string(first == std::string_view::npos ? "" : digits.substr(first));
}

std::string DigitsForLetters(std::string_view code) {
    std::string digits = ModPub::UpperCase(code);
    std::ranges::replace(digits, 'O', '0');
    return digits;
}

bool IsDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// The one value under `key`; nothing when there is none or several.
std::optional<std::string> OnlyOne(const std::multimap<std::string, std::string, std::less<>>& values,
                                   std::string_view key) {
    const auto [first, last] = values.equal_range(key);
    return first != last && std::next(first) == last ? std::optional(first->second) : std::nullopt;
}

} // namespace

std::size_t EditDistance(std::string_view a, std::string_view b, std::size_t limit) {
    const std::u32string from = Characters(a);
    const std::u32string to = Characters(b);
    if (std::max(from.size(), to.size()) - std::min(from.size(), to.size()) > limit) {
        return limit + 1;
    }
    std::vector<std::size_t> row(to.size() + 1);
    for (std::size_t column = 0; column < row.size(); ++column) {
        row[column] = column;
    }
    for (std::size_t line = 1; line <= from.size(); ++line) {
        std::size_t diagonal = std::exchange(row[0], line);
        std::size_t least = row[0];
        for (std::size_t column = 1; column < row.size(); ++column) {
            const std::size_t replaced = diagonal + (from[line - 1] == to[column - 1] ? 0 : 1);
            diagonal = std::exchange(row[column], std::min({replaced, row[column] + 1, row[column - 1] + 1}));
            least = std::min(least, row[column]);
        }
        if (least > limit) {
            return limit + 1;
        }
    }
    return row.back();
}

void KnownCodes::Add(std::string code, std::string name) {
    if (IsDigits(code)) {
        withoutZeros_.emplace(WithoutZeros(code), code);
    }
    digitsForLetters_.emplace(DigitsForLetters(code), code);
    std::string key = ModPub::UpperCase(code);
    codes_.insert_or_assign(std::move(key), Known{std::move(code), std::move(name)});
}

std::optional<std::string> KnownCodes::Find(std::string_view code) const {
    const auto found = codes_.find(ModPub::UpperCase(code));
    return found == codes_.end() ? std::nullopt : std::optional(found->second.code);
}

std::optional<std::string> KnownCodes::WithLeadingZeros(std::string_view code) const {
    return IsDigits(code) ? OnlyOne(withoutZeros_, WithoutZeros(code)) : std::nullopt;
}

std::optional<std::string> KnownCodes::AlsoWithLeadingZeros(std::string_view code) const {
    if (!IsDigits(code)) {
        return std::nullopt;
    }
    const auto [first, last] = withoutZeros_.equal_range(WithoutZeros(code));
    const auto other = std::find_if(first, last, [&](const auto& entry) { return entry.second != code; });
    return other == last ? std::nullopt : std::optional(other->second);
}

std::optional<std::string> KnownCodes::WithDigitForLetter(std::string_view code) const {
    return OnlyOne(digitsForLetters_, DigitsForLetters(code));
}

std::optional<KnownCodes::Known> KnownCodes::Nearest(std::string_view code) const {
    const std::string wanted = ModPub::UpperCase(code);
    std::size_t limit = std::max<std::size_t>(1, Characters(wanted).size() / 3);
    const Known* nearest = nullptr;
    for (const auto& [key, known] : codes_) {
        const std::size_t distance = EditDistance(wanted, key, limit);
        if (distance <= limit) {
            nearest = &known;
            // Only a nearer one takes its place.
            if (distance == 1) {
                break;
            }
            limit = distance - 1;
        }
    }
    return nearest == nullptr ? std::nullopt : std::optional(*nearest);
}

} // namespace importing
