#include "cli/messages/Messages.h"

#include "cli/messages/Tables.h"

namespace cli {

const Messages& MessagesIn(Language language) noexcept {
    return language == Language::chinese ? chineseMessages : englishMessages;
}

std::string Grouped(std::size_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t at = digits.size(); at > 3;) {
        at -= 3;
        digits.insert(at, 1, ',');
    }
    return digits;
}

std::string Count(std::size_t number, const Noun& noun) {
    return Fill(number == 1 ? noun.one : noun.many, Grouped(number));
}

} // namespace cli
