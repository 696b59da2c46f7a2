#include "refhost/sql/engine/GatheredLog.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace refhost::sql {
namespace {

// The layout of a log: "WAL Frame Format" of SQLite's file format.
constexpr int headingSize = 24;
/// A heading's second number, highest byte first: the database's pages after a commit, 0 inside of a transaction.
constexpr std::size_t pagesBegin = 4;
constexpr std::size_t pagesEnd = 8;

bool EndsTransaction(const char* heading) {
    return std::any_of(heading + pagesBegin, heading + pagesEnd, [](char byte) { return byte != 0; });
}

} // namespace

void GatheredLog::Attach(sqlite3* db, const std::string& schema) {
    sqlite3_file* database = nullptr;
    sqlite3_file_control(db, schema.c_str(), SQLITE_FCNTL_FILE_POINTER, static_cast<void*>(&database));
    sqlite3_file* log = nullptr;
    sqlite3_file_control(db, schema.c_str(), SQLITE_FCNTL_JOURNAL_POINTER, static_cast<void*>(&log));
    if (log == nullptr || log->pMethods == nullptr) {
        return;
    }
    // Where a write may damage its neighbours, SQLite fills a sector up by pieces of pages.
    if ((database->pMethods->xDeviceCharacteristics(database) & SQLITE_IOCAP_POWERSAFE_OVERWRITE) == 0) {
        return;
    }
    waiting_ = std::make_unique<char[]>(room);
    system_ = log->pMethods;
    static_cast<sqlite3_io_methods&>(methods_) = *system_;
    methods_.self = this;
    methods_.xWrite = [](sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset) {
        return Of(file).Write(file, bytes, count, offset);
    };
    methods_.xRead = [](sqlite3_file* file, void* bytes, int count, sqlite3_int64 offset) {
        return Forward(file, [&](const auto& system) { return system.xRead(file, bytes, count, offset); });
    };
    methods_.xTruncate = [](sqlite3_file* file, sqlite3_int64 size) {
        return Forward(file, [&](const auto& system) { return system.xTruncate(file, size); });
    };
    methods_.xSync = [](sqlite3_file* file, int how) {
        return Forward(file, [&](const auto& system) { return system.xSync(file, how); });
    };
    methods_.xFileSize = [](sqlite3_file* file, sqlite3_int64* size) {
        return Forward(file, [&](const auto& system) { return system.xFileSize(file, size); });
    };
    methods_.xClose = [](sqlite3_file* file) {
        // What still waits belongs to no transaction that was committed.
        return Of(file).system_->xClose(file);
    };
    log->pMethods = &methods_;
}

GatheredLog& GatheredLog::Of(sqlite3_file* file) { return *static_cast<const Methods*>(file->pMethods)->self; }

template <class Ask> int GatheredLog::Forward(sqlite3_file* file, const Ask& ask) {
    GatheredLog& log = Of(file);
    const int code = log.Flush(file);
    return code == SQLITE_OK ? ask(*log.system_) : code;
}

int GatheredLog::Write(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset) {
    const bool appends = offset == end_;
    const Last before = std::exchange(last_, Last::other);
    end_ = offset + count;
    // A heading that is written anew stands behind nothing that was just written: it does not wait.
    if (appends && count == headingSize) {
        last_ = EndsTransaction(static_cast<const char*>(bytes)) ? Last::endHeading : Last::heading;
        return Append(file, bytes, count, offset);
    }
    if (appends && before != Last::other) {
        const int code = Append(file, bytes, count, offset);
        return code == SQLITE_OK && before == Last::endHeading ? Flush(file) : code;
    }
    const int code = Flush(file);
    return code == SQLITE_OK ? system_->xWrite(file, bytes, count, offset) : code;
}

int GatheredLog::Append(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset) {
    if (size_ + count > room) {
        if (const int code = Flush(file); code != SQLITE_OK) {
            return code;
        }
    }
    if (size_ == 0) {
        begin_ = offset;
    }
    std::memcpy(waiting_.get() + size_, bytes, static_cast<std::size_t>(count));
    size_ += count;
    return SQLITE_OK;
}

int GatheredLog::Flush(sqlite3_file* file) {
    const int size = std::exchange(size_, 0);
    return size == 0 ? SQLITE_OK : system_->xWrite(file, waiting_.get(), size, begin_);
}

} // namespace refhost::sql
