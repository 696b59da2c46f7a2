#include "ModPub/Lookup.h"

namespace ModPub {

std::unique_ptr<host::Recordset> OpenLookup(host::Environment& environment, host::Connection& connection,
                                            std::string_view sql) {
    std::unique_ptr<host::Recordset> recordset = environment.CreateRecordset();
    recordset->Open(sql, connection, host::CursorType::openStatic, host::LockType::readOnly,
                    host::command_option::text);
    return recordset;
}

bool LookupFinds(host::Environment& environment, host::Connection& connection, std::string_view sql) {
    const std::unique_ptr<host::Recordset> recordset = OpenLookup(environment, connection, sql);
    const bool found = recordset->RecordCount() != 0;
    recordset->Close();
    return found;
}

} // namespace ModPub
