#include "server/com/Changes.h"

#include <atomic>

namespace server {

namespace {

std::atomic<std::uint64_t> changes;

} // namespace

void NoteChange() noexcept { changes.fetch_add(1, std::memory_order_relaxed); }
std::uint64_t Changes() noexcept { return changes.load(std::memory_order_relaxed); }

} // namespace server
