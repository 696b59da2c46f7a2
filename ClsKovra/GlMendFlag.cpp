#include "ClsKovra/GlMendFlag.h"

#include "ModPub/Conversions.h"
#include "ModPub/FirstRow.h"

#include <string>

namespace kovra {

bool GlMendFlag(ModPub::ImportState& state, std::string_view system, int period) {
    std::string sql = "Select bFlag";
    if (system != "GL") {
        sql.append("_").append(system);
    }
    sql.append(" from gl_mend where iPeriod=").append(std::to_string(period));
    sql.append(" AND iYEar =").append(state.login->LoginYear());
    const auto row = ModPub::FirstRow<1>(state, sql);
    return row && ModPub::ToBoolean(row->front());
}

} // namespace kovra
