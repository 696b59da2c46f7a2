#include "ModPub/SaveSetting.h"

#include "ModPub/Conversions.h"
#include "ModPub/Lookup.h"
#include "ModPub/Trap.h"

namespace ModPub {
namespace {

/// Id of the first setting that `sql` finds, or 0.
std::int32_t FindSetting(ImportState& state, std::string_view sql) {
    const std::unique_ptr<host::Recordset> recordset = OpenLookup(state.environment, *state.connection, sql);
    const std::int32_t id = recordset->RecordCount() != 0 ? ToInt32(recordset->FieldValue(0)) : 0;
    recordset->Close();
    return id;
}

} // namespace

std::string BeginStatement(std::string_view beginning) {
    constexpr std::size_t usualRest = 384;
    std::string sql;
    sql.reserve(beginning.size() + usualRest);
    sql.append(beginning);
    return sql;
}

void AppendSqlText(std::string& sql, std::string_view value, std::string_view null, std::string_view close) {
    if (value.empty()) {
        sql.append(null);
    } else {
        sql.append("'").append(value).append(close);
    }
}

void AppendAssignment(std::string& sql, std::string_view piece, std::string_view value, std::string_view null) {
    sql.append(piece);
    AppendSqlText(sql, value, null, "', ");
    sql.append("\r\n");
}

void SaveSetting(ImportState& state, std::string_view key, const SettingStatements& statements) {
    std::string message;
    try {
        const std::int32_t id = FindSetting(state, statements.match(state.login->LoginYear()));
        if (id == 0) {
            state.connection->Execute(statements.insert(state.login->LoginYear()));
            return;
        }
        if (state.operation == "EDIT") {
            state.connection->Execute(statements.update(state.login->LoginYear(), id));
            return;
        }
        message = "对照关系已经存在，无法插入新记录。";
    } catch (...) {
        message = PendingError().description();
    }
    if (message.empty()) {
        state.AddAccepted(key);
    } else {
        state.AddRefused(key, message);
    }
}

} // namespace ModPub
