#include "tests/support/DatabasePool.h"

#include "host/Error.h"
#include "refhost/OpenDatabase.h"
#include "refhost/ado/ForwardingDatabase.h"

#include <algorithm>

namespace test {

/// A database as long as a connection holds it.
class DatabasePool::Lease : public refhost::ForwardingDatabase {
public:
    Lease(DatabasePool& pool, Entry& entry) : ForwardingDatabase(entry.database), pool_(pool), entry_(entry) {
        entry_.leased = true;
    }
    ~Lease() override {
        try {
            BeginTrans();
        } catch (const host::Error&) {
            pool_.transactionLeftOpen_ = true;
        }
        RollbackTrans();
        entry_.leased = false;
    }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;

private:
    DatabasePool& pool_;
    Entry& entry_;
};

refhost::DatabaseOpener DatabasePool::Opener() {
    return [this](const std::string& connectionString) { return Open(connectionString); };
}

std::unique_ptr<refhost::Database> DatabasePool::Open(const std::string& connectionString) {
    std::vector<std::unique_ptr<Entry>>& entries = entries_[connectionString];
    const auto idle = std::ranges::find_if(entries, [](const auto& entry) { return !entry->leased; });
    if (idle != entries.end()) {
        return std::make_unique<Lease>(*this, **idle);
    }
    entries.push_back(std::make_unique<Entry>());
    entries.back()->database = refhost::OpenDatabase(connectionString);
    return std::make_unique<Lease>(*this, *entries.back());
}

} // namespace test
