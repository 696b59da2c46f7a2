#pragma once

#include <cstddef>
#include <string>

namespace bench {

/// Each prints a table in Markdown to standard output. `rows` are those of each request.

/// Imports into an account in memory, beside the raw library's time for their statements and, where a class has them,
/// for hand-written ones. Processor time, in pairs that alternate.
/// @param className the only class; all when empty
void PrintMemoryTable(std::size_t rows, int rounds, const std::string& className);
/// Price vouchers: how much of the time the statement takes that looks for repetitions.
void PrintVoucherTable(std::size_t rows);
/// Inventory settings into a file in `folder`: time, beside that of `script` (bench/settings.py), with which they
/// alternate, and what is asked of the system.
void PrintFileTable(std::size_t rows, int rounds, const std::string& folder, const std::string& script);
/// Imports into an account on a server. Each statement goes besides, right before or after, to two servers of the same
/// content by a client that does nothing but send it, directly or prepared, and fetch what comes: microseconds for a
/// statement, what the import adds to the direct one, and time of the processor by the client's side alone.
/// @param server an ODBC connection string without a database, where databases are made and dropped; empty for the
/// tests' own server
void PrintServerTable(std::size_t rows, int rounds, const std::string& server);
/// The time of `program` (kovra) for a request of one row on a file in `folder`.
void PrintStartTable(const std::string& folder, const std::string& program);
/// Peak memory of `program` (kovra) over the size of its request, for each class, with files in `folder`.
void PrintPeakTable(std::size_t rows, const std::string& folder, const std::string& program);

} // namespace bench
