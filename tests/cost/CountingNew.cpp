#include "tests/cost/CountingNew.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include <malloc.h>

namespace {

std::atomic<std::int64_t> allocations;
std::atomic<std::int64_t> live;
std::atomic<std::int64_t> peak;

void Add(void* memory) {
    ++allocations;
    const std::int64_t now = live += static_cast<std::int64_t>(malloc_usable_size(memory));
    std::int64_t before = peak;
    while (now > before && !peak.compare_exchange_weak(before, now)) {
    }
}

void Free(void* memory) {
    live -= static_cast<std::int64_t>(malloc_usable_size(memory));
    std::free(memory);
}

} // namespace

void* operator new(std::size_t size) {
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        Add(memory);
        return memory;
    }
    throw std::bad_alloc();
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    // A multiple of the alignment, as the system wants it.
    const auto unit = static_cast<std::size_t>(alignment);
    if (void* const memory = std::aligned_alloc(unit, (size + unit - 1) / unit * unit)) {
        Add(memory);
        return memory;
    }
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { Free(memory); }

std::int64_t test_cost::Allocations() { return allocations; }

void test_cost::BeginPeak() { peak = live.load(); }

std::int64_t test_cost::LiveBytes() { return live; }

std::int64_t test_cost::PeakBytes() { return peak; }
