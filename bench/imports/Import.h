#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

class RawStatements;

/// One kind of import to measure.
struct Import {
    std::string name;
    std::string className;
    /// Statements that fill the empty account for a request of `rows` rows.
    std::vector<std::string> (*account)(std::size_t rows);
    /// A request of `rows` rows, all of which are accepted.
    std::string (*request)(std::size_t rows);
    /// Appends the checks and the write of a row as one would write them by hand for `HandAccount`; nullptr for a class
    /// whose rows are more than that.
    void (*addHandWritten)(RawStatements& raw, std::size_t row) = nullptr;
    /// SQLite's SQL that gives them the indexes that they want; nullptr where the account's own will do.
    const char* handIndexes = nullptr;
};

// Those whose every row is a handful of look-ups and an insert.
Import InventorySettings();
Import OppositeSettings();
Import StandardCostSettings();
Import OpeningBalances();
/// One document of three entries a row.
Import Provisions();
/// One document, saved and posted, whose entries are the rows.
Import PriceVouchers();

/// All of them, in this order.
std::vector<Import> Imports();

} // namespace bench
