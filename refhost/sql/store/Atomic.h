#pragma once

#include "refhost/sql/store/Runtime.h"

namespace refhost::sql {

/// What takes several of SQLite's statements, as a whole or not at all: a transaction, or a savepoint inside the open
/// one, undone unless committed.
class Atomic {
public:
    /// `schema` is the database that is written. Throws like `BeginWriting`.
    Atomic(sqlite3* db, Schema schema) : db_(db), own_(sqlite3_get_autocommit(db) != 0) {
        if (own_) {
            BeginWriting(db_, Prepare(db_, "BEGIN").get(), Prepare(db_, LockText(SqliteName(schema))).get());
        } else {
            Run(db_, "SAVEPOINT part");
        }
    }
    ~Atomic() { Rollback(); }
    Atomic(const Atomic&) = delete;
    Atomic& operator=(const Atomic&) = delete;

    /// Whether it is a transaction of its own.
    bool IsOwn() const { return own_; }
    void Commit() {
        Run(db_, own_ ? "COMMIT" : "RELEASE part");
        done_ = true;
    }

    /// Undoes what was done; it is over then.
    void Rollback() {
        if (!done_) {
            sqlite3_exec(db_, own_ ? "ROLLBACK" : "ROLLBACK TO part; RELEASE part", nullptr, nullptr, nullptr);
            done_ = true;
        }
    }

private:
    sqlite3* db_;
    bool own_;
    bool done_ = false;
};

} // namespace refhost::sql
