#include "refhost/OpenDatabase.h"

#include "refhost/odbc/OdbcDatabase.h"
#include "text/ConnectionString.h"

namespace refhost {

bool IsOdbc(std::string_view connectionString) {
    return text::ConnectionStringValue(connectionString, "Driver") ||
           text::ConnectionStringValue(connectionString, "DSN");
}

std::unique_ptr<Database> OpenDatabase(const std::string& connectionString, OpenMode mode) {
    if (IsOdbc(connectionString)) {
        return odbc::OpenOdbc(connectionString);
    }
    return OpenEmbeddedDatabase(connectionString, mode);
}

DatabaseOpener OpenExisting() {
    return [](const std::string& connectionString) { return OpenDatabase(connectionString, OpenMode::existing); };
}

DatabaseOpener OpenDurably() {
    return [](const std::string& connectionString) {
        if (IsOdbc(connectionString)) {
            return odbc::OpenOdbc(connectionString);
        }
        // The first value of a key is the one that counts.
        return OpenEmbeddedDatabase("Synchronous=Full;Commit=Each;" + connectionString);
    };
}

DatabaseOpener OpenOrCreate() {
    return [](const std::string& connectionString) { return OpenDatabase(connectionString, OpenMode::create); };
}

} // namespace refhost
