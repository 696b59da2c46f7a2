#include "refhost/OpenDatabase.h"

#include "refhost/AdoErrors.h"
#include "refhost/ConnectionString.h"
#include "refhost/odbc/OdbcDatabase.h"

namespace refhost {

std::unique_ptr<Database> OpenDatabase(const std::string& connectionString, OpenMode) {
    if (ConnectionStringValue(connectionString, "Driver") || ConnectionStringValue(connectionString, "DSN")) {
        return odbc::OpenOdbc(connectionString);
    }
    RaiseProviderNotFound();
}

DatabaseOpener OpenExisting() {
    return [](const std::string& connectionString) { return OpenDatabase(connectionString, OpenMode::existing); };
}

DatabaseOpener OpenOrCreate() {
    return [](const std::string& connectionString) { return OpenDatabase(connectionString, OpenMode::create); };
}

} // namespace refhost
