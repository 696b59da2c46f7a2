#include "ModPub/Lookup.h"

namespace ModPub {

void OpenLookup(host::Recordset& recordset, host::Connection& connection, std::string_view sql) {
    recordset.Open(sql, connection, host::CursorType::openStatic, host::LockType::readOnly, host::command_option::text);
}

std::unique_ptr<host::Recordset> OpenLookup(host::Environment& environment, host::Connection& connection,
                                            std::string_view sql) {
    std::unique_ptr<host::Recordset> recordset = environment.CreateRecordset();
    OpenLookup(*recordset, connection, sql);
    return recordset;
}

bool LookupFinds(host::Environment& environment, host::Connection& connection, std::string_view sql) {
    const std::unique_ptr<host::Recordset> recordset = OpenLookup(environment, connection, sql);
    const bool found = recordset->RecordCount() != 0;
    recordset->Close();
    return found;
}

} // namespace ModPub
