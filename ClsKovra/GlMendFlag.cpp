#include "ClsKovra/GlMendFlag.h"

#include "ModPub/Conversions.h"
#include "ModPub/Lookup.h"

#include <string>

namespace kovra {

bool GlMendFlag(ModPub::ImportState& state, std::string_view system, int period) {
    std::string sql = "Select bFlag";
    if (system != "GL") {
        sql.append("_").append(system);
    }
    sql.append(" from gl_mend where iPeriod=").append(std::to_string(period));
    sql.append(" AND iYEar =").append(state.login->LoginYear());
    const std::unique_ptr<host::Recordset> recordset = ModPub::OpenLookup(state.environment, *state.connection, sql);
    const bool flag = !recordset->AtEOF() && ModPub::ToBoolean(recordset->FieldValue(0));
    recordset->Close();
    return flag;
}

} // namespace kovra
