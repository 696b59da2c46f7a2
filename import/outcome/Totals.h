#pragma once

#include "import/outcome/Outcome.h"

#include <cstddef>
#include <string>
#include <vector>

namespace importing {

/// What rows add up to.
struct Sums {
    std::size_t rows = 0;
    double quantity = 0;
    double amount = 0;
};

/// What the rows of one warehouse or one ledger account add up to.
struct Group {
    /// Empty for rows without one.
    std::string code;
    std::string name;
    Sums sums;
};

/// The figures that people tick off.
struct Totals {
    /// Rows that are in, or would be.
    Sums taken;
    /// Of those, the ones with a corrected cell.
    std::size_t corrected = 0;
    /// Rows that the checks or the class refuse; figures of cells that could be read.
    Sums refused;
    /// Rows that the class was not asked about, or that are in doubt.
    Sums open;
    /// The rows taken, by code. Empty where the file has no such column.
    std::vector<Group> byWarehouse;
    std::vector<Group> byAccount;
};

/// Adds up quantities (`iQuantity`) and amounts (`iPrice`), exact to the cent for sums below a hundred million million.
Totals TotalsOf(const Outcome& outcome);

} // namespace importing
