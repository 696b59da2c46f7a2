#include "refhost/odbc/SystemDatabase.h"

#include "host/Error.h"

namespace refhost::odbc {

void EnsureSystemDatabase(host::Connection& connection, host::Recordset& recordset) {
    recordset.Open("SELECT name FROM master.dbo.sysdatabases WHERE name = N'QxSystem'", connection,
                   host::CursorType::openStatic, host::LockType::readOnly, host::command_option::text);
    const bool exists = !recordset.AtEOF();
    recordset.Close();
    if (exists) {
        return;
    }
    try {
        connection.Execute("CREATE DATABASE QxSystem", host::command_option::unspecified);
    } catch (const host::Error& error) {
        throw host::Error(error.number(),
                          "The system database QxSystem is missing, and this login could not create it: " +
                              error.description());
    }
}

} // namespace refhost::odbc
