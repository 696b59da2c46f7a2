#pragma once

#include "import/messages/Language.h"
#include "import/messages/Messages.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace importing {

/// Something to say to people: what, and what about. It becomes words in one language only where it is shown.
struct Note {
    Message message{};
    /// What stands for {0}, {1} … in the message's words.
    std::vector<std::string> arguments;

    bool operator==(const Note&) const = default;
};

/// The note's words.
std::string Words(const Note& note, Language language);

} // namespace importing
