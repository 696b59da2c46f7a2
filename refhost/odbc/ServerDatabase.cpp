#include "refhost/odbc/ServerDatabase.h"

#include "host/Error.h"
#include "text/SqlText.h"

namespace refhost::odbc {

bool EnsureDatabase(Connection& connection, std::string_view name) {
    const ResultSet id = connection.database().Query("SELECT DB_ID(" + SqlText(name) + ") AS id");
    if (id.rowCount == 1 && !id.cells[0].IsNull()) {
        return false;
    }
    try {
        connection.Execute("CREATE DATABASE " + SqlName(name), host::command_option::unspecified);
    } catch (const host::Error& error) {
        throw host::Error(error.number(),
                          "The database " + std::string(name) +
                              " is missing, and this login could not create it: " + error.description(),
                          error.native());
    }
    return true;
}

} // namespace refhost::odbc
