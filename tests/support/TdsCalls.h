#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

// What a client asks of a SQL Server in Microsoft's TDS 7.4 (MS-TDS, section 2.2.6).
namespace test::tds {

/// Reads what a client sent, from its beginning. Every member throws std::out_of_range behind the end.
class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    bool AtEnd() const { return bytes_.empty(); }
    /// The byte that comes next.
    char Next() const { return bytes_.at(0); }
    /// A number of so many bytes, lowest first.
    std::uint64_t Little(std::size_t count);
    std::string_view Bytes(std::size_t count);
    /// A text of so many UTF-16 units.
    std::string Text(std::size_t units);

private:
    std::string_view bytes_;
};

/// The numbers of the server's own procedures, as which clients send what they prepare.
enum class Procedure { prepare = 11, execute = 12, prepareAndExecute = 13, unprepare = 15 };

/// A call of one of them.
struct ProcedureCall {
    Procedure procedure;
    /// Its arguments in order: Null, a number or a text.
    std::vector<std::variant<std::monostate, std::int64_t, std::string>> arguments;

    std::int64_t Number(std::size_t argument) const { return std::get<std::int64_t>(arguments.at(argument)); }
    const std::string& Text(std::size_t argument) const { return std::get<std::string>(arguments.at(argument)); }
};

/// The calls of a message behind its headers. Throws std::exception for one of another procedure, or with an argument
/// that is neither a whole number nor a Unicode text.
std::vector<ProcedureCall> ProcedureCalls(std::string_view body);

} // namespace test::tds
