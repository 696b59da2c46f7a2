#include "ModPub/ReadAccOption.h"

#include "ModPub/Conversions.h"
#include "ModPub/Lookup.h"
#include "ModPub/SaveSetting.h"

namespace ModPub {

std::string ReadAccOption(host::Environment& environment, host::Connection& connection, std::string_view cSysID,
                          std::string_view cName) {
    std::string sql = BeginStatement("SELECT * FROM AccInformation WHERE cSysID='");
    sql.append(cSysID).append("' AND cName='").append(cName).append("'");
    const std::unique_ptr<host::Recordset> recordset = OpenLookup(environment, connection, sql);
    std::string option;
    if (!recordset->AtEOF() && !recordset->AtBOF()) {
        if (const host::Value value = recordset->FieldValue("cValue"); !value.IsNull()) {
            option = Trim(ToText(value));
        } else if (const host::Value fallback = recordset->FieldValue("cDefault"); !fallback.IsNull()) {
            option = ToText(fallback);
        }
    }
    recordset->Close();
    return option;
}

} // namespace ModPub
