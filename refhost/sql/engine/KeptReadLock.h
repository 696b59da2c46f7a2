#pragma once

#include <string>

#include <sqlite3.h>

namespace refhost::sql {

/// Stands before a database file's locks: what one statement locked for reading is kept for the next one, over writes
/// as well. SQLite still asks before each statement what others have committed, so that none reads anything older than
/// it would without.
class KeptReadLock {
public:
    KeptReadLock() = default;
    KeptReadLock(const KeptReadLock&) = delete;
    KeptReadLock& operator=(const KeptReadLock&) = delete;

    /// Stands before the locks of an open database; does nothing where it has no write-ahead log. The object outlives
    /// the connection.
    void Attach(sqlite3* db, const std::string& schema);
    /// Keeps from now on. As long as a lock is kept, what came into the log since it was taken can be moved into the
    /// database by this connection alone, which does so when the log is long.
    void Begin() { keeps_ = true; }
    /// Keeps no longer.
    void End();

private:
    /// What SQLite calls for the database file.
    struct Methods : sqlite3_io_methods {
        KeptReadLock* self = nullptr;
    };

    int Lock(int first, int count, int flags);
    void GiveBack();

    Methods methods_;
    const sqlite3_io_methods* system_ = nullptr;
    sqlite3_file* file_ = nullptr;
    bool keeps_ = false;
    /// Whether the statement at hand writes.
    bool writes_ = false;
    /// Whether this connection moves the log into the database.
    bool checkpoints_ = false;
    /// The lock that is kept, 0 for none.
    int kept_ = 0;
};

} // namespace refhost::sql
