#include "refhost/sql/functions/FunctionGroups.h"
#include "refhost/sql/types/Errors.h"

#include <fmt/format.h>

namespace refhost::sql {
namespace {

void RowVersionFunction(Call& call) {
    call.ReturnBlob(call.GetRuntime().NextRowVersion(static_cast<Schema>(call.Integer(0))));
}

void IdentityFunction(Call& call) {
    const std::optional<std::int64_t> identity = call.GetRuntime().identity;
    if (!identity) {
        return call.ReturnNull();
    }
    call.Return(std::to_string(*identity));
}

/// k_newid(): a random identifier of version 4.
void NewIdFunction(Call& call) {
    std::array<unsigned char, 16> bytes{};
    sqlite3_randomness(static_cast<int>(bytes.size()), bytes.data());
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0FU) | 0x40U);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3FU) | 0x80U);
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        text += i == 4 || i == 6 || i == 8 || i == 10 ? "-" : "";
        text += fmt::format("{:02X}", bytes[i]);
    }
    call.Return(std::string_view(text));
}

template <std::int64_t Runtime::*Member> void SessionFunction(Call& call) { call.Return(call.GetRuntime().*Member); }

/// k_errormessage(): that of the CATCH block at hand.
void ErrorMessageFunction(Call& call) {
    const std::optional<host::Error>& caught = call.GetRuntime().caught;
    caught ? call.Return(std::string_view(caught->description())) : call.ReturnNull();
}

/// k_errornumber(): likewise.
void ErrorNumberFunction(Call& call) {
    const std::optional<host::Error>& caught = call.GetRuntime().caught;
    caught ? call.Return(std::int64_t{caught->native()}) : call.ReturnNull();
}

/// k_variable(place): the value as it is at this row.
void VariableFunction(Call& call) {
    call.Return((*call.GetRuntime().variables)[static_cast<std::size_t>(call.Integer(0))].value);
}

/// k_row(place)
void RowFunction(Call& call) { call.Return(call.GetRuntime().toldRow->at(static_cast<std::size_t>(call.Integer(0)))); }

/// k_nextidentity(schema, table, seed, step)
void NextIdentityFunction(Call& call) {
    call.Return(call.GetRuntime().NextIdentity(static_cast<Schema>(call.Integer(0)), call.Text(1), call.Integer(2),
                                               call.Integer(3)));
}

} // namespace

std::span<const FunctionRow> SessionFunctions() {
    static constexpr std::array rows{
        FunctionRow{"k_rowversion", 1, Entry<RowVersionFunction>},
        FunctionRow{"k_identity", 0, Entry<IdentityFunction>},
        FunctionRow{"k_rowcount", 0, Entry<SessionFunction<&Runtime::rowCount>>},
        FunctionRow{"k_lasterror", 0, Entry<SessionFunction<&Runtime::lastError>>},
        FunctionRow{"k_trancount", 0, Entry<SessionFunction<&Runtime::tranCount>>},
        FunctionRow{"k_errormessage", 0, Entry<ErrorMessageFunction>},
        FunctionRow{"k_errornumber", 0, Entry<ErrorNumberFunction>},
        FunctionRow{"k_newid", 0, Entry<NewIdFunction>},
        FunctionRow{"k_variable", 1, Entry<VariableFunction>},
        FunctionRow{"k_row", 1, Entry<RowFunction>},
        FunctionRow{"k_nextidentity", 4, Entry<NextIdentityFunction>},
    };
    return rows;
}

} // namespace refhost::sql
