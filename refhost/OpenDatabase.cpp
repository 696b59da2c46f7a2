#include "refhost/OpenDatabase.h"

#include "refhost/AdoErrors.h"
#include "refhost/ConnectionString.h"
#include "refhost/SameName.h"
#include "refhost/odbc/OdbcDatabase.h"
#include "refhost/sql/EmbeddedDatabase.h"

namespace refhost {

bool IsOdbc(std::string_view connectionString) {
    return ConnectionStringValue(connectionString, "Driver") || ConnectionStringValue(connectionString, "DSN");
}

std::unique_ptr<Database> OpenDatabase(const std::string& connectionString, OpenMode mode) {
    if (IsOdbc(connectionString)) {
        return odbc::OpenOdbc(connectionString);
    }
    const auto provider = ConnectionStringValue(connectionString, "Provider");
    if (provider && SameName(*provider, "KovraAccount")) {
        return sql::OpenEmbedded(connectionString, mode == OpenMode::create ? sql::Mode::create : sql::Mode::open);
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
