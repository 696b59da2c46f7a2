#include "tests/support/DatabasePool.h"

#include "host/Error.h"

#include <utility>

namespace test {

class DatabasePool::Pooled : public refhost::Database {
public:
    Pooled(DatabasePool& pool, std::string connectionString, std::unique_ptr<refhost::Database> inner)
        : pool_(pool), connectionString_(std::move(connectionString)), inner_(std::move(inner)) {}

    ~Pooled() override {
        try {
            inner_->BeginTrans();
        } catch (const host::Error&) {
            pool_.transactionLeftOpen_ = true;
        }
        inner_->RollbackTrans();
        pool_.idle_[connectionString_].push_back(std::move(inner_));
    }
    Pooled(const Pooled&) = delete;
    Pooled& operator=(const Pooled&) = delete;

    refhost::ResultSet Query(std::string_view sql) override { return inner_->Query(sql); }
    void Execute(std::string_view sql) override { inner_->Execute(sql); }
    void BeginTrans() override { inner_->BeginTrans(); }
    void CommitTrans() override { inner_->CommitTrans(); }
    void RollbackTrans() override { inner_->RollbackTrans(); }

private:
    DatabasePool& pool_;
    std::string connectionString_;
    std::unique_ptr<refhost::Database> inner_;
};

refhost::DatabaseOpener DatabasePool::Opener() {
    return [this](const std::string& connectionString) { return Open(connectionString); };
}

std::unique_ptr<refhost::Database> DatabasePool::Open(const std::string& connectionString) {
    std::vector<std::unique_ptr<refhost::Database>>& idle = idle_[connectionString];
    std::unique_ptr<refhost::Database> database;
    if (idle.empty()) {
        database = refhost::OpenDatabase(connectionString);
    } else {
        database = std::move(idle.back());
        idle.pop_back();
    }
    return std::make_unique<Pooled>(*this, connectionString, std::move(database));
}

} // namespace test
