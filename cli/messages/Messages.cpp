#include "cli/messages/Messages.h"

namespace cli {

const Messages& MessagesIn(Language language) noexcept {
    static constexpr Messages chinese = {{Language::chinese}};
    static constexpr Messages english = {{Language::english}};
    return language == Language::chinese ? chinese : english;
}

std::string Count(std::size_t number, const Noun& noun) {
    return Fill(number == 1 ? noun.one : noun.many, Grouped(number));
}

} // namespace cli
