#include "refhost/odbc/SystemDatabase.h"

#include "host/Error.h"

namespace refhost::odbc {

void EnsureSystemDatabase(host::Connection& connection) {
    try {
        // A server names a table of a missing database as it names a missing table.
        connection.Execute("SELECT name FROM QxSystem..sysobjects WHERE 1=2", host::command_option::unspecified);
        return;
    } catch (const host::Error& error) {
        if (error.number() != host::error_number::noTable) {
            throw;
        }
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
