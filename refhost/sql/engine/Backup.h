#pragma once

#include "refhost/sql/engine/EmbeddedDatabase.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace refhost::sql {

/// What is done with the files of an embedded account as a whole, while others read and write it. A connection string
/// is one that `OpenEmbedded` takes; `schema` chooses between the account and the system database beside it. All throw
/// `host::Error` "unspecified" for a file that cannot be opened, is no account database or is of a newer format.

/// Writes the database as it is at one moment to a new file: the file is whole or is not there. A transaction that is
/// open elsewhere is not in it, nobody waits for the copy, and an older format is kept. Throws for a file that exists
/// already or cannot be written.
void BackUp(const std::string& connectionString, Schema schema, const std::string& file);

/// Copies an account and the system database beside it, where there is one, into a folder that has neither, each like
/// `BackUp`, for a work that ends before the machine does: a power failure may take it. Returns the connection string
/// of the copy: `connectionString` with another Data Source.
std::string CopyAccount(const std::string& connectionString, const std::string& folder);

/// Puts what `BackUp` wrote in place of the database's content, or makes its file anew where it is gone, in the format
/// of this program. Whoever has the database open sees the old content or the new. Throws the lock time-out (1222), and
/// changes nothing, when another writes to it for longer than `wait`.
void Restore(const std::string& connectionString, Schema schema, const std::string& file,
             std::chrono::milliseconds wait = std::chrono::milliseconds(busyMilliseconds));

/// What is wrong with the files of an account and of its system database, in SQLite's words, which are for whoever
/// repairs them; empty where they are sound.
std::vector<std::string> CheckFiles(const std::string& connectionString);

/// A file's way to the format of this program.
struct FormatChange {
    std::string file;
    std::int64_t before;
    std::int64_t now;
};

/// Brings the files of an account and of its system database, where there is one, up to the format of this program, as
/// opening them for work does.
std::vector<FormatChange> UpgradeFiles(const std::string& connectionString);

} // namespace refhost::sql
