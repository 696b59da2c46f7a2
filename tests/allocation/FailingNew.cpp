#include "tests/allocation/FailingNew.h"

#include <cstdlib>
#include <new>
#include <utility>

namespace test {
namespace {

thread_local bool watching = false;
thread_local std::size_t asked = 0;
thread_local std::size_t failAt = 0;
thread_local FailingNew::Mode failMode = FailingNew::Mode::once;

/// Whether the allocation at hand fails.
bool Fails() noexcept {
    if (!watching) {
        return false;
    }
    ++asked;
    return failAt != 0 && (asked == failAt || (asked > failAt && failMode == FailingNew::Mode::forever));
}

void* Allocate(std::size_t size) noexcept { return Fails() ? nullptr : std::malloc(size == 0 ? 1 : size); }

void* Allocate(std::size_t size, std::size_t alignment) noexcept {
    return Fails() ? nullptr : std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
}

void* Required(void* block) {
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

} // namespace

void FailingNew::Watch(std::size_t at, Mode mode) {
    asked = 0;
    failAt = at;
    failMode = mode;
    watching = true;
}

bool FailingNew::Failed() { return failAt != 0 && asked >= failAt; }

std::size_t FailingNew::Stop() {
    watching = false;
    failAt = 0;
    return asked;
}

FailingNew::Pause::Pause() noexcept : wasWatching_(std::exchange(watching, false)) {}

FailingNew::Pause::~Pause() { watching = wasWatching_; }

} // namespace test

using test::Allocate;
using test::Required;

void* operator new(std::size_t size) { return Required(Allocate(size)); }
void* operator new[](std::size_t size) { return Required(Allocate(size)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new(std::size_t size, std::align_val_t alignment) {
    return Required(Allocate(size, static_cast<std::size_t>(alignment)));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return Required(Allocate(size, static_cast<std::size_t>(alignment)));
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { std::free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { std::free(block); }
void operator delete(void* block, std::align_val_t) noexcept { std::free(block); }
void operator delete[](void* block, std::align_val_t) noexcept { std::free(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept { std::free(block); }
