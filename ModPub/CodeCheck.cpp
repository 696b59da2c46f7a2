#include "ModPub/CodeCheck.h"

#include "ModPub/Lookup.h"

namespace ModPub {

bool CodeExists(ImportState& state, const CodeQuery& query, std::string_view code) {
    std::string sql;
    sql.append(query.before).append(code).append(query.after);
    if (query.byYear) {
        sql.append(state.login->LoginYear());
    }
    return LookupFinds(state.environment, *state.connection, sql);
}

} // namespace ModPub
