#include "tests/refhost/xml/Allocated.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include <libxml/xmlmemory.h>

namespace test {
namespace {

thread_local std::size_t asked = 0;

void* Allocate(std::size_t size) {
    asked += size;
    return std::malloc(size == 0 ? 1 : size);
}

void* Reallocate(void* block, std::size_t size) {
    asked += size;
    return std::realloc(block, size);
}

char* Duplicate(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    void* const copy = Allocate(size);
    return copy == nullptr ? nullptr : static_cast<char*>(std::memcpy(copy, text, size));
}

/// libxml2 must be told before it allocates anything.
[[maybe_unused]] const int told = xmlMemSetup(&std::free, &Allocate, &Reallocate, &Duplicate);

} // namespace

Allocated::Allocated() : before_(asked) {}

std::size_t Allocated::Bytes() const { return asked - before_; }

} // namespace test

void* operator new(std::size_t size) {
    void* const block = test::Allocate(size);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return test::Allocate(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
