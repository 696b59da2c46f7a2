#pragma once

#include "import/messages/Note.h"

#include <stdexcept>
#include <utility>

namespace importing {

/// A file that cannot be read as the table that it should be.
class UnreadableFile : public std::runtime_error {
public:
    explicit UnreadableFile(Note note) : std::runtime_error(Words(note, Language::english)), note_(std::move(note)) {}

    /// Why, for people.
    const Note& note() const noexcept { return note_; }

private:
    Note note_;
};

} // namespace importing
