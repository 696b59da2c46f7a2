#pragma once

#include "host/Value.h"

#include <string>
#include <string_view>

namespace refhost {

/// The stock on the inventory ledger up to a day, as SQL over the rows of a table that has the columns `cInvCode`,
/// `cWhCode` and `cFree1` to `cFree10`. A row's empty free item stands for any.
class Stock {
public:
    /// @param rows name or alias of the table
    /// @param warehouse the column that names the warehouse; empty for the stock of all warehouses
    /// @param day last day that counts
    Stock(std::string_view rows, std::string_view warehouse, host::Date day);

    /// The quantity, received less issued.
    std::string Quantity() const;
    /// The amount, received less issued.
    std::string Amount() const;

private:
    std::string Sum(std::string_view received, std::string_view issued) const;

    std::string conditions_;
};

/// The amount by which the stock changes its value when its price changes, rounded to two places, as SQL.
inline constexpr std::string_view adjustedAmount = "ROUND(iQuantity * (iCJVACost - iCJVBCost), 2)";

} // namespace refhost
