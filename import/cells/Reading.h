#pragma once

#include "import/messages/Note.h"

#include <optional>
#include <string>
#include <utility>

namespace importing {

/// What was made of a cell: the value that goes into the request, as it stood or corrected, or the reason why there is
/// none.
struct Reading {
    /// The value; empty for an empty cell.
    std::string value;
    /// What is wrong; nothing when the cell is taken.
    std::optional<Note> refusal;
    /// The value that was probably meant, where the refusal can name one.
    std::string proposal;

    static Reading Take(std::string value) { return {.value = std::move(value), .refusal = {}, .proposal = {}}; }
    static Reading Refuse(Note note, std::string proposal = {}) {
        return {.value = {}, .refusal = std::move(note), .proposal = std::move(proposal)};
    }

    bool operator==(const Reading&) const = default;
};

} // namespace importing
