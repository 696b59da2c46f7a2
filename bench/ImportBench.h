#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

/// One kind of import to measure.
struct Import {
    std::string className;
    /// Statements that fill the empty account for a request of `rows` rows.
    std::vector<std::string> (*account)(std::size_t rows);
    /// A request of `rows` rows, all of which are accepted.
    std::string (*request)(std::size_t rows);
};

/// Registers measurements of `import`, named after `name`, at the given numbers of rows. Each tells the time of the
/// whole `Transact` on an account in memory and, as counters, its rows a second, its statements, and `ratio`: its time
/// over the time that the raw SQLite library takes for the very same statements, prepared once for each shape.
void RegisterImport(const std::string& name, const Import& import, const std::vector<std::size_t>& rows);

} // namespace bench
