#pragma once

#include "host/Value.h"

#include <cstddef>
#include <string>
#include <vector>

namespace refhost {

/// Values one behind the other, packed: large answers are mostly Null and short texts, of which a `host::Value` would
/// take 40 bytes each.
class Cells {
public:
    std::size_t size() const noexcept { return size_; }
    bool empty() const noexcept { return size_ == 0; }

    /// Makes room for so many short values.
    void Expect(std::size_t count) { packed_.reserve(count * usualBytes); }
    void Add(const host::Value& value);

    /// The value at `index`, counted from 0; there has to be one.
    host::Value operator[](std::size_t index) const;

private:
    static constexpr std::size_t usualBytes = 7;
    /// From one cell whose place is known to the next.
    static constexpr std::size_t stride = 16;

    /// Of each value the kind, and what a value of that kind holds.
    std::string packed_;
    /// Where each cell after the first begins whose index is a multiple of `stride`.
    std::vector<std::size_t> places_;
    std::size_t size_ = 0;
    /// What stands behind the value that was read last: most are read in order.
    struct Next {
        std::size_t index = 0;
        std::size_t place = 0;
    };
    mutable Next next_;
};

} // namespace refhost
