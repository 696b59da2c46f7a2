#pragma once

#include <memory>
#include <string>

#include <sqlite3.h>

namespace refhost::sql {

/// Stands before a database's write-ahead log and hands to the system at once what a transaction appends to it. SQLite
/// writes each page and its heading by a call of its own; here they wait for the page that ends the transaction, which
/// is written before SQLite tells others of it: what is committed is with the system as ever.
class GatheredLog {
public:
    GatheredLog() = default;
    GatheredLog(const GatheredLog&) = delete;
    GatheredLog& operator=(const GatheredLog&) = delete;

    /// Stands before the log of an open database; does nothing where it has none. The object outlives the connection.
    void Attach(sqlite3* db, const std::string& schema);

private:
    /// What SQLite calls for the log.
    struct Methods : sqlite3_io_methods {
        GatheredLog* self = nullptr;
    };
    /// What the last write was.
    enum class Last {
        other,      ///< nothing that a page may follow
        heading,    ///< the heading of a page inside of a transaction
        endHeading, ///< the heading of the page that ends it
    };

    static GatheredLog& Of(sqlite3_file* file);
    /// Writes what waits, then does what SQLite asks of the file.
    template <class Ask> static int Forward(sqlite3_file* file, const Ask& ask);

    int Write(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset);
    int Append(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset);
    int Flush(sqlite3_file* file);

    /// Room for a transaction of 24 pages; a larger one goes in several pieces. SQLite's own files take less than 128
    /// KB at once.
    static constexpr int room = 100'000;

    Methods methods_;
    const sqlite3_io_methods* system_ = nullptr;
    std::unique_ptr<char[]> waiting_;
    int size_ = 0;
    /// Where in the log the waiting bytes belong.
    sqlite3_int64 begin_ = 0;
    /// Where the log's last write ends, the waiting ones included.
    sqlite3_int64 end_ = -1;
    Last last_ = Last::other;
};

} // namespace refhost::sql
