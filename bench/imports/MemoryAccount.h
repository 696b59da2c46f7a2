#pragma once

#include "refhost/OpenDatabase.h"
#include "refhost/sql/engine/EmbeddedDatabase.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

/// How recorded statements begin and end a transaction.
inline constexpr const char* beginTransaction = "BEGIN";
inline constexpr const char* commitTransaction = "COMMIT";

/// Takes a statement as it is sent.
using StatementSink = std::function<void(std::string_view sql)>;

/// An account in memory, with the host's tables, that outlives the connections to it.
class MemoryAccount {
public:
    static constexpr const char* connectionString = "Provider=KovraAccount;Data Source=:memory:";

    MemoryAccount();

    /// Opens every connection on this account, whatever its connection string.
    refhost::DatabaseOpener Opener() const;
    /// The same, handing every statement to `note`, those that begin and commit transactions included.
    refhost::DatabaseOpener RecordingOpener(const StatementSink& note) const;

    /// Runs statements in one transaction.
    void Fill(const std::vector<std::string>& statements);

    refhost::sql::EmbeddedDatabase& database() { return *database_; }

private:
    std::shared_ptr<refhost::sql::EmbeddedDatabase> database_;
};

} // namespace bench
