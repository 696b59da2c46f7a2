#include "tests/support/FaultyEnvironment.h"

#include "refhost/OpenDatabase.h"
#include "refhost/ado/ForwardingDatabase.h"

#include <utility>

namespace test {
namespace {

class FaultyDatabase : public refhost::ForwardingDatabase {
public:
    FaultyDatabase(std::unique_ptr<refhost::Database> inner, std::shared_ptr<const Faults> faults)
        : ForwardingDatabase(std::move(inner)), faults_(std::move(faults)) {}

    refhost::ResultSet Query(std::string_view sql) override {
        Before(faults_->statement, sql);
        return inner().Query(sql);
    }
    void Execute(std::string_view sql) override {
        Before(faults_->statement, sql);
        inner().Execute(sql);
    }
    void BeginTrans() override {
        Before(faults_->transaction, "BeginTrans");
        inner().BeginTrans();
    }
    void CommitTrans() override {
        Before(faults_->transaction, "CommitTrans");
        inner().CommitTrans();
    }
    void RollbackTrans() override {
        Before(faults_->transaction, "RollbackTrans");
        inner().RollbackTrans();
    }

private:
    static void Before(const std::function<void(std::string_view)>& hook, std::string_view what) {
        if (hook) {
            hook(what);
        }
    }

    std::shared_ptr<const Faults> faults_;
};

refhost::DatabaseOpener FaultyOpener(std::shared_ptr<const Faults> faults) {
    return [faults = std::move(faults)](const std::string& connectionString) {
        return std::make_unique<FaultyDatabase>(refhost::OpenDatabase(connectionString), faults);
    };
}

BeforeOperation FaultyOperation(std::shared_ptr<const Faults> faults) {
    return [faults = std::move(faults)](const HostOperation& operation) {
        if (operation.kind == HostOperation::Kind::helper && faults->eaiHelper) {
            faults->eaiHelper(operation.name);
        }
        if (operation.kind == HostOperation::Kind::creation && operation.name == "DOMDocument" && faults->document) {
            faults->document();
        }
    };
}

} // namespace

FaultyEnvironment::FaultyEnvironment(Faults faults, refhost::Trace* trace)
    : FaultyEnvironment(std::make_shared<const Faults>(std::move(faults)), trace) {}

FaultyEnvironment::FaultyEnvironment(const std::shared_ptr<const Faults>& faults, refhost::Trace* trace)
    : WatchedEnvironment(FaultyOperation(faults), FaultyOpener(faults), trace) {}

} // namespace test
