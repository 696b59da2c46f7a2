#pragma once

#include "host/Error.h"
#include "refhost/ado/Database.h"

#include <cstdint>
#include <string>
#include <string_view>

// What a SQL Server answers, in Microsoft's TDS 7.4 (MS-TDS, section 2.2.7): each function gives a token's bytes.
namespace test::tds {

/// The `count` lowest bytes of a number, lowest first.
void AppendLittle(std::string& bytes, std::uint64_t number, int count);

/// A transaction as the server names it to its client; none is all zeros.
using Transaction = std::uint64_t;

std::string LoginAccepted();
/// A message of class 16, an error; with class 0 information ("print").
std::string Message(int number, std::string_view text, int severity = 16);

enum class TransactionChange { begun = 8, committed = 9, rolledBack = 10 };
/// The change of environment that begins or ends a transaction.
std::string Changed(TransactionChange change, Transaction transaction);

/// The columns and every row of an answer.
std::string Rows(const refhost::ResultSet& result);

/// End of an answer.
namespace done {
inline constexpr int last = 0;
inline constexpr int more = 1;
inline constexpr int error = 2;
inline constexpr int counted = 0x10;
inline constexpr int attention = 0x20;
} // namespace done
std::string Done(int status, std::uint64_t rows = 0);
/// The end of a statement's answer within a procedure, which goes on; and the procedure's own end, with its status.
std::string DoneInProcedure(int status, std::uint64_t rows);
std::string ProcedureDone(int status);
/// A number that a procedure gives back, as its first argument.
std::string ReturnedNumber(std::int32_t number);

} // namespace test::tds
