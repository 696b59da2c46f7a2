#pragma once

#include "refhost/ado/Database.h"

#include <memory>
#include <string>
#include <string_view>

namespace refhost {

/// Whether a database that is not there is created.
enum class OpenMode { existing, create };

/// Opens the embedded account database that `connectionString` names ("Provider=KovraAccount"). Throws 3706 for any
/// other provider, else the database's error.
std::unique_ptr<Database> OpenEmbeddedDatabase(const std::string& connectionString, OpenMode mode = OpenMode::existing);

/// Whether `connectionString` names a database behind ODBC: it has a `Driver` or `DSN`.
bool IsOdbc(std::string_view connectionString);

/// Opens the account database that `connectionString` names: the embedded one for "Provider=KovraAccount", SQL Server
/// through ODBC for a text with `Driver` or `DSN`. Throws 3706 for any other text, else the database's error.
std::unique_ptr<Database> OpenDatabase(const std::string& connectionString, OpenMode mode = OpenMode::existing);

/// The usual opener, for databases that exist.
DatabaseOpener OpenExisting();
/// An opener for databases that exist, of which each commit is on the disk when it is done: an embedded one waits for
/// the disk and groups no commits, whatever the connection string says; a server does so anyway.
DatabaseOpener OpenDurably();
/// An opener that creates an embedded database that is not there.
DatabaseOpener OpenOrCreate();

} // namespace refhost
