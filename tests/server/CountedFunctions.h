#pragma once

#include "server/com/Platform.h"

#include <cstddef>
#include <vector>

namespace test {

/// Counts, as long as it lives, the calls that one library makes to the functions of an interface, in every object
/// that is implemented by the same functions. Those of IUnknown are left out.
class CountedFunctions {
public:
    /// @param functions of the interface, IUnknown's three included
    /// @param caller whose calls count
    CountedFunctions(IUnknown& object, std::size_t functions, HMODULE caller);
    ~CountedFunctions();
    CountedFunctions(const CountedFunctions&) = delete;
    CountedFunctions& operator=(const CountedFunctions&) = delete;

    /// The calls to all that is being counted, since the program began.
    static int Count() noexcept;

private:
    void** table_;
    std::vector<void*> original_;
    void* code_;
};

} // namespace test
