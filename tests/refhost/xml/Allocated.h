#pragma once

#include <cstddef>

namespace test {

/// Counts the bytes that this thread's program asks for, by `operator new` and in libxml2: work that grows faster than
/// its text copies parts of it over and over. Unlike time, the count is the same on every machine. This program
/// replaces the operators for that.
class Allocated {
public:
    Allocated();

    /// Bytes asked for since the object was made, those given back since included.
    std::size_t Bytes() const;

private:
    std::size_t before_;
};

} // namespace test
