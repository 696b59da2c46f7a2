#include "ModPub/CodeCheck.h"

#include "ModPub/Joined.h"
#include "ModPub/Lookup.h"

namespace ModPub {

bool CodeExists(ImportState& state, const CodeQuery& query, std::string_view code) {
    const std::string year = query.byYear ? state.login->LoginYear() : std::string();
    return LookupFinds(state.environment, *state.connection, Joined({query.before, code, query.after, year}));
}

} // namespace ModPub
