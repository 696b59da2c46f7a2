#include "refhost/OpenDatabase.h"
#include "refhost/ado/AdoErrors.h"
#include "refhost/ado/ConnectionString.h"
#include "refhost/ado/SameName.h"
#include "refhost/sql/engine/EmbeddedDatabase.h"

namespace refhost {

std::unique_ptr<Database> OpenEmbeddedDatabase(const std::string& connectionString, OpenMode mode) {
    const auto provider = ConnectionStringValue(connectionString, "Provider");
    if (!provider || !SameName(*provider, "KovraAccount")) {
        RaiseProviderNotFound();
    }
    return sql::OpenEmbedded(connectionString, mode == OpenMode::create ? sql::Mode::create : sql::Mode::open);
}

} // namespace refhost
