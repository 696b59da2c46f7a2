#pragma once

#include <cstdint>

namespace server {

// What is remembered of a document holds until something may have changed it: a change of one's own, or a call to an
// object that may have got hold of it. Everything of either kind is counted, in all documents and threads together.

/// Notes a change, or a call that may bring one.
void NoteChange() noexcept;
/// How many there have been.
std::uint64_t Changes() noexcept;

} // namespace server
