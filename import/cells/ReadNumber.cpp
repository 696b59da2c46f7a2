#include "import/cells/ReadNumber.h"

#include "ModPub/Numbers.h"
#include "import/cells/Characters.h"
#include "import/cells/ReadCell.h"
#include "text/Digit.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace importing {
namespace {

void Erase(std::string& text, std::string_view part) {
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part)) {
        text.erase(at, part.size());
    }
}

/// Takes the blanks out of `text`; those between two digits become commas, since people group thousands with them too.
void CommasForBlanks(std::string& text) {
    std::string without;
    bool blank = false;
    for (const char c : text) {
        if (c == ' ' || c == '\t') {
            blank = true;
            continue;
        }
        if (blank && text::IsDigit(c) && !without.empty() && text::IsDigit(without.back())) {
            without.push_back(',');
        }
        blank = false;
        without.push_back(c);
    }
    text = std::move(without);
}

/// Takes off the marks of a negative number.
bool TakeSign(std::string& text) {
    if (text.size() > 2 && text.front() == '(' && text.back() == ')') {
        text = text.substr(1, text.size() - 2);
        return true;
    }
    if (text.size() > 1 && text.back() == '-' && text::IsDigit(text.front())) {
        text.pop_back();
        return true;
    }
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.erase(0, 1);
    }
    return negative;
}

/// Whether the commas of `whole` stand behind one to three digits and then before every three.
bool GroupsThousands(std::string_view whole) {
    std::size_t digits = 0;
    bool first = true;
    for (const char c : whole) {
        if (c != ',') {
            ++digits;
            continue;
        }
        if (first ? digits == 0 || digits > 3 : digits != 3) {
            return false;
        }
        first = false;
        digits = 0;
    }
    return first || digits == 3;
}

/// Whether `text` is digits with commas and at most one point, and has a digit.
bool IsPlain(std::string_view text) {
    const auto known = [](char c) { return text::IsDigit(c) || c == ',' || c == '.'; };
    return std::ranges::all_of(text, known) && std::ranges::any_of(text, text::IsDigit) &&
           std::ranges::count(text, '.') <= 1;
}

/// `text` without zeros that say nothing, as the ledger would show it: "007.50" is "7.5".
std::string Shortest(std::string text, bool negative) {
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.ends_with('.')) {
            text.pop_back();
        }
    }
    const std::size_t significant = text.find_first_not_of('0');
    text.erase(0, significant == std::string::npos ? text.size() : significant);
    if (text.empty() || text.front() == '.') {
        text.insert(0, "0");
    }
    return negative && text != "0" ? "-" + text : text;
}

} // namespace

Reading ReadNumber(const Cell& cell) {
    if (std::optional<Reading> refused = RefuseUnlessTextOrNumber(cell)) {
        return *std::move(refused);
    }
    if (cell.kind == Cell::Kind::number) {
        return Reading::Take(cell.text);
    }
    std::string text = ToHalfWidth(TrimBlanks(cell.text));
    if (text.empty()) {
        return Reading::Take({});
    }
    constexpr std::array<std::string_view, 4> currency = {"¥", "￥", "元", "圆"};
    for (const std::string_view sign : currency) {
        Erase(text, sign);
    }
    CommasForBlanks(text);
    const bool negative = TakeSign(text);
    if (text.ends_with('%')) {
        const std::string_view share(text.data(), text.size() - 1);
        const std::string number =
            IsPlain(share) ? ModPub::NumberText((negative ? -1 : 1) * ModPub::Val(share) / 100) : std::string("0.05");
        return Reading::Refuse({message::numberPercent, {cell.text, number}}, number);
    }
    if (!IsPlain(text)) {
        const std::optional<double> number = ModPub::ParseNumber(text);
        return Reading::Refuse({message::numberNone, {cell.text}},
                               number ? ModPub::NumberText(negative ? -*number : *number) : std::string());
    }
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string_view fraction(text.data() + point, text.size() - point);
    if (!GroupsThousands(std::string_view(text).substr(0, point)) || fraction.find(',') != std::string_view::npos) {
        std::string asPoint = text;
        std::ranges::replace(asPoint, ',', '.');
        std::string joined = text;
        Erase(joined, ",");
        const bool onePoint = std::ranges::count(asPoint, '.') == 1;
        const std::string asGroups = Shortest(joined, negative);
        if (!onePoint) {
            return Reading::Refuse({message::numberNone, {cell.text}}, asGroups);
        }
        return Reading::Refuse({message::numberGrouping, {cell.text, Shortest(asPoint, negative), asGroups}});
    }
    Erase(text, ",");
    return Reading::Take(Shortest(text, negative));
}

} // namespace importing
