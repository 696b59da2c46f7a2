#pragma once

#include "import/messages/Note.h"
#include "text/Fault.h"

#include <utility>

namespace importing {

/// A file that cannot be read as the table that it should be.
class UnreadableFile : public text::Fault {
public:
    explicit UnreadableFile(Note note)
        : Fault({Words(note, Language::english), Words(note, Language::chinese)}), note_(std::move(note)) {}
    /// A file that the system does not let be read. @param reason why, in the system's words
    UnreadableFile(const std::string& path, const text::Words& reason)
        : Fault({Words({message::fileNotRead, {path, reason.english}}, Language::english),
                 Words({message::fileNotRead, {path, reason.chinese}}, Language::chinese)}),
          note_({message::fileNotRead, {path, reason.english}}) {}

    /// Why, as data; the reason of a file that is not read stands there in English.
    const Note& note() const noexcept { return note_; }

private:
    Note note_;
};

} // namespace importing
