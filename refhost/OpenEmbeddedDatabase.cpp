#include "refhost/OpenDatabase.h"
#include "refhost/ado/AdoErrors.h"
#include "refhost/sql/engine/EmbeddedDatabase.h"
#include "text/ConnectionString.h"
#include "text/SameName.h"

namespace refhost {

std::unique_ptr<Database> OpenEmbeddedDatabase(const std::string& connectionString, OpenMode mode) {
    const auto provider = text::ConnectionStringValue(connectionString, "Provider");
    if (!provider || !text::SameName(*provider, "KovraAccount")) {
        RaiseProviderNotFound();
    }
    return sql::OpenEmbedded(connectionString, mode == OpenMode::create ? sql::Mode::create : sql::Mode::open);
}

} // namespace refhost
