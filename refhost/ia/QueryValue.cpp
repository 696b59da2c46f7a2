#include "refhost/ia/QueryValue.h"

namespace refhost {

host::Value QueryValue(host::Environment& environment, host::Connection& connection, std::string_view sql) {
    const std::unique_ptr<host::Recordset> recordset = environment.CreateRecordset();
    recordset->Open(sql, connection, host::CursorType::forwardOnly, host::LockType::readOnly,
                    host::command_option::text);
    host::Value value;
    if (!recordset->AtEOF()) {
        value = recordset->FieldValue(0);
    }
    recordset->Close();
    return value;
}

} // namespace refhost
