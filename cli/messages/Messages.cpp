#include "cli/messages/Messages.h"

#include "cli/messages/Tables.h"
#include "import/messages/Figures.h"

namespace cli {

const Messages& MessagesIn(Language language) noexcept {
    return language == Language::chinese ? chineseMessages : englishMessages;
}

std::string Grouped(std::size_t number) { return importing::Grouped(number); }

std::string Count(std::size_t number, const Noun& noun) {
    return Fill(number == 1 ? noun.one : noun.many, Grouped(number));
}

} // namespace cli
