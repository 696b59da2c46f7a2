#pragma once

#include "refhost/ado/Database.h"

#include <cstddef>
#include <vector>

namespace test {

/// The values of all rows of an answer, row after row.
inline std::vector<host::Value> ValuesOf(const refhost::ResultSet& answer) {
    std::vector<host::Value> values;
    for (std::size_t index = 0; index < answer.cells.size(); ++index) {
        values.push_back(answer.cells[index]);
    }
    return values;
}

} // namespace test
