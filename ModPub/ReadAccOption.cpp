#include "ModPub/ReadAccOption.h"

#include "ModPub/Conversions.h"
#include "ModPub/Joined.h"
#include "ModPub/Lookup.h"

namespace ModPub {

std::string ReadAccOption(host::Environment& environment, host::Connection& connection, std::string_view cSysID,
                          std::string_view cName) {
    const std::string sql =
        Joined({"SELECT * FROM AccInformation WHERE cSysID='", cSysID, "' AND cName='", cName, "'"});
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
