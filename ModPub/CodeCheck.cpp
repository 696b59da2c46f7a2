#include "ModPub/CodeCheck.h"

#include "ModPub/Lookup.h"

namespace ModPub {

bool CodeExists(ImportState& state, const CodeQuery& query, std::string_view code) {
    const std::string year = query.byYear ? state.login->LoginYear() : std::string();
    std::string sql;
    sql.reserve(query.before.size() + code.size() + query.after.size() + year.size());
    sql.append(query.before).append(code).append(query.after).append(year);
    return LookupFinds(state.environment, *state.connection, sql);
}

} // namespace ModPub
