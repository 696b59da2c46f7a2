#include "tests/server/CountedFunctions.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <initializer_list>

namespace test {

namespace {

/// AddRef, Release and QueryInterface.
constexpr std::size_t ofUnknown = 3;

std::atomic<int> count;
/// The library whose calls count, from its first byte to behind its last.
std::atomic<std::uintptr_t> callerBegin;
std::atomic<std::uintptr_t> callerEnd;

/// @param returnAddress of a call to one of the functions
void __stdcall Note(std::uintptr_t returnAddress) {
    if (returnAddress >= callerBegin && returnAddress < callerEnd)
        ++count;
}

std::uintptr_t EndOf(HMODULE library) {
    const auto begin = reinterpret_cast<std::uintptr_t>(library);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(begin);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(begin + static_cast<std::uintptr_t>(dos->e_lfanew));
    return begin + headers->OptionalHeader.SizeOfImage;
}

/// Writes machine code.
class Code {
public:
    explicit Code(unsigned char* at) : at_(at) {}

    void Bytes(std::initializer_list<unsigned char> bytes) { at_ = std::ranges::copy(bytes, at_).out; }
    void Address(const void* address) {
        std::memcpy(at_, &address, sizeof address);
        at_ += sizeof address;
    }

private:
    unsigned char* at_;
};

constexpr std::size_t codeSize = 64;

/// A function that notes its return address and goes on to `function`.
void Write(unsigned char* place, const void* function) {
    Code code(place);
    const auto* const note = reinterpret_cast<const void*>(&Note);
#ifdef _WIN64
    code.Bytes({0x51, 0x52, 0x41, 0x50, 0x41, 0x51}); // push rcx, rdx, r8, r9
    code.Bytes({0x48, 0x83, 0xEC, 0x28});             // sub rsp, 40
    code.Bytes({0x48, 0x8B, 0x4C, 0x24, 0x48});       // mov rcx, [rsp + 72]: the return address
    code.Bytes({0x48, 0xB8});                         // mov rax, Note
    code.Address(note);
    code.Bytes({0xFF, 0xD0});                         // call rax
    code.Bytes({0x48, 0x83, 0xC4, 0x28});             // add rsp, 40
    code.Bytes({0x41, 0x59, 0x41, 0x58, 0x5A, 0x59}); // pop r9, r8, rdx, rcx
    code.Bytes({0x48, 0xB8});                         // mov rax, function
    code.Address(function);
#else
    code.Bytes({0xFF, 0x34, 0x24}); // push [esp]: the return address
    code.Bytes({0xB8});             // mov eax, Note
    code.Address(note);
    code.Bytes({0xFF, 0xD0}); // call eax
    code.Bytes({0xB8});       // mov eax, function
    code.Address(function);
#endif
    code.Bytes({0xFF, 0xE0}); // jmp rax, eax
}

void Put(void** table, const std::vector<void*>& functions) {
    DWORD before = 0;
    VirtualProtect(table, functions.size() * sizeof(void*), PAGE_READWRITE, &before);
    std::ranges::copy(functions, table);
    VirtualProtect(table, functions.size() * sizeof(void*), before, &before);
}

} // namespace

CountedFunctions::CountedFunctions(IUnknown& object, std::size_t functions, HMODULE caller)
    : table_(*reinterpret_cast<void***>(&object)), original_(table_, table_ + functions),
      code_(VirtualAlloc(nullptr, functions * codeSize, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE)) {
    callerBegin = reinterpret_cast<std::uintptr_t>(caller);
    callerEnd = EndOf(caller);
    std::vector<void*> counted = original_;
    auto* place = static_cast<unsigned char*>(code_);
    for (std::size_t i = ofUnknown; i < functions; ++i, place += codeSize) {
        Write(place, original_[i]);
        counted[i] = place;
    }
    Put(table_, counted);
}

CountedFunctions::~CountedFunctions() {
    Put(table_, original_);
    VirtualFree(code_, 0, MEM_RELEASE);
}

int CountedFunctions::Count() noexcept { return count; }

} // namespace test
