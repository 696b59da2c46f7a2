#include "ModPub/CodeCheck.h"

namespace ModPub {

bool CodeExists(ImportState& state, RowLookups& lookups, const CodeQuery& query, std::string_view code) {
    const std::string year = query.byYear ? state.login->LoginYear() : std::string();
    return lookups.Find({query.before, code, query.after, year});
}

} // namespace ModPub
