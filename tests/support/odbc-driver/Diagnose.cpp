#include "tests/support/odbc-driver/Diagnose.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace odbc_driver {
namespace {

/// SQLSTATEs that SQL Server's drivers give for the server's numbers; every other error of the server is 42000.
struct ServerState {
    int native;
    std::string_view state;
};

constexpr std::array serverStates = std::to_array<ServerState>({
    {109, "21S01"},  {110, "21S01"},  {120, "21S01"},  {121, "21S01"},   {207, "42S22"},  {208, "42S02"},
    {213, "21S01"},  {220, "22003"},  {232, "22003"},  {235, "22018"},   {236, "22003"},  {241, "22007"},
    {242, "22007"},  {244, "22003"},  {245, "22018"},  {248, "22003"},   {293, "22018"},  {294, "22003"},
    {295, "22007"},  {512, "21000"},  {515, "23000"},  {517, "22008"},   {535, "22003"},  {544, "23000"},
    {547, "23000"},  {628, "25000"},  {1205, "40001"}, {1222, "HYT00"},  {1505, "23000"}, {1913, "42S11"},
    {2601, "23000"}, {2627, "23000"}, {2628, "22001"}, {2705, "42S21"},  {2714, "42S01"}, {3701, "42S02"},
    {3902, "25000"}, {3903, "25000"}, {3930, "25000"}, {4902, "42S02"},  {8114, "22018"}, {8115, "22003"},
    {8134, "22012"}, {8152, "22001"}, {8169, "22018"}, {18456, "28000"},
});

constexpr std::string_view prefix = "[Kovra][T-SQL driver]";

std::string_view StateOf(int native) {
    if (native == 0) {
        return "HY000";
    }
    const auto* const found = std::ranges::find(serverStates, native, &ServerState::native);
    return found == serverStates.end() ? std::string_view("42000") : found->state;
}

} // namespace

Diagnostic Diagnose(const host::Error& error) {
    return {std::string(StateOf(error.native())), error.native(), std::string(prefix) + error.description()};
}

Diagnostic Diagnose(const refhost::ServerMessage& message) { return {"01000", 0, std::string(prefix) + message.text}; }

} // namespace odbc_driver
