#include "import/messages/Note.h"

#include <cstddef>
#include <string_view>

namespace importing {

std::string Words(const Note& note, Language language) {
    std::string_view rest = Speech{language}(note.message.chinese, note.message.english);
    std::string text;
    for (std::size_t open = rest.find('{'); open != std::string_view::npos; open = rest.find('{')) {
        const auto index = static_cast<std::size_t>(rest[open + 1] - '0');
        text.append(rest.substr(0, open)).append(note.arguments.at(index));
        rest.remove_prefix(open + 3);
    }
    return text.append(rest);
}

} // namespace importing
