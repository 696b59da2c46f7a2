#include "refhost/sql/engine/KeptReadLock.h"

#include <utility>

namespace refhost::sql {
namespace {

// The locks of a log: "WAL Locks" of SQLite's "WAL-mode File Format".
constexpr int writeLock = 0;
constexpr int checkpointLock = 1;
/// Of readers for whom all stands in the database.
constexpr int firstReadLock = 3;

bool Covers(int first, int count, int lock) { return first <= lock && lock < first + count; }

} // namespace

void KeptReadLock::Attach(sqlite3* db, const std::string& schema) {
    sqlite3_file* file = nullptr;
    sqlite3_file_control(db, schema.c_str(), SQLITE_FCNTL_FILE_POINTER, static_cast<void*>(&file));
    if (file == nullptr || file->pMethods == nullptr || file->pMethods->iVersion < 2) {
        return;
    }
    file_ = file;
    system_ = file->pMethods;
    static_cast<sqlite3_io_methods&>(methods_) = *system_;
    methods_.self = this;
    methods_.xShmLock = [](sqlite3_file* database, int first, int count, int flags) {
        return static_cast<const Methods*>(database->pMethods)->self->Lock(first, count, flags);
    };
    methods_.xShmUnmap = [](sqlite3_file* database, int remove) {
        KeptReadLock& self = *static_cast<const Methods*>(database->pMethods)->self;
        self.GiveBack();
        return self.system_->xShmUnmap(database, remove);
    };
    file->pMethods = &methods_;
}

void KeptReadLock::End() {
    keeps_ = false;
    GiveBack();
}

int KeptReadLock::Lock(int first, int count, int flags) {
    const bool reading = (flags & SQLITE_SHM_SHARED) != 0 && first >= firstReadLock;
    if ((flags & SQLITE_SHM_UNLOCK) != 0) {
        checkpoints_ = checkpoints_ && !Covers(first, count, checkpointLock);
        // What is written behind a lock of the log is read behind it as well; the database alone holds it no more.
        const bool holds = reading && (!std::exchange(writes_, false) || first > firstReadLock);
        if (keeps_ && holds) {
            kept_ = first;
            return SQLITE_OK;
        }
        return system_->xShmLock(file_, first, count, flags);
    }
    if (reading && kept_ == first) {
        kept_ = 0;
        return SQLITE_OK;
    }
    // SQLite would have its lock tell how far the log has grown, and goes on with what it tells where that is refused.
    const bool moves = !reading && count == 1 && first > firstReadLock && !checkpoints_;
    if (moves && kept_ > firstReadLock) {
        return SQLITE_BUSY;
    }
    writes_ = writes_ || first == writeLock;
    if (reading || Covers(first, count, kept_)) {
        GiveBack();
    }
    const int result = system_->xShmLock(file_, first, count, flags);
    checkpoints_ = checkpoints_ || (result == SQLITE_OK && Covers(first, count, checkpointLock));
    return result;
}

void KeptReadLock::GiveBack() {
    if (const int kept = std::exchange(kept_, 0); kept != 0) {
        system_->xShmLock(file_, kept, 1, SQLITE_SHM_UNLOCK | SQLITE_SHM_SHARED);
    }
}

} // namespace refhost::sql
