#include "ModPub/IsYearEndOpen.h"

#include <string>

namespace ModPub {

bool IsYearEndOpen(host::Environment& environment, std::int16_t year, host::Connection& connection) {
    const std::unique_ptr<host::Recordset> recordset = environment.CreateRecordset();
    recordset->SetCursorLocation(host::CursorLocation::client);
    recordset->Open("SELECT bflag_IA FROM GL_mend WHERE iyear = " + std::to_string(year) +
                        " AND iperiod=12 AND bflag_IA=1",
                    connection, host::CursorType::openStatic, host::LockType::readOnly, host::command_option::text);
    const bool open = recordset->AtEOF();
    recordset->Close();
    return open;
}

} // namespace ModPub
