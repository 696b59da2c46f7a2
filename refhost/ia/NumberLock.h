#pragma once

#include <string_view>

namespace refhost {

/// Behind a table's name in the query for its highest number: nobody else reads that number to write the next one, nor
/// writes one, until the transaction ends (SQL Server's update lock, held, on the range up to the end of the keys).
/// Outside a transaction it holds nothing. The embedded database lets one transaction write at a time anyway.
inline constexpr std::string_view numberLock = " WITH (UPDLOCK, HOLDLOCK)";

} // namespace refhost
