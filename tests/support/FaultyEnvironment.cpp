#include "tests/support/FaultyEnvironment.h"

#include <utility>

namespace test {
namespace {

class FaultyDatabase : public refhost::Database {
public:
    FaultyDatabase(std::unique_ptr<refhost::Database> inner, std::shared_ptr<const Faults> faults)
        : inner_(std::move(inner)), faults_(std::move(faults)) {}

    refhost::ResultSet Query(std::string_view sql) override {
        Before(faults_->statement, sql);
        return inner_->Query(sql);
    }
    void Execute(std::string_view sql) override {
        Before(faults_->statement, sql);
        inner_->Execute(sql);
    }
    void BeginTrans() override {
        Before(faults_->transaction, "BeginTrans");
        inner_->BeginTrans();
    }
    void CommitTrans() override {
        Before(faults_->transaction, "CommitTrans");
        inner_->CommitTrans();
    }
    void RollbackTrans() override {
        Before(faults_->transaction, "RollbackTrans");
        inner_->RollbackTrans();
    }

private:
    static void Before(const std::function<void(std::string_view)>& hook, std::string_view what) {
        if (hook) {
            hook(what);
        }
    }

    std::unique_ptr<refhost::Database> inner_;
    std::shared_ptr<const Faults> faults_;
};

class FaultyEaiHelper : public host::EaiHelper {
public:
    FaultyEaiHelper(host::EaiHelper& inner, std::shared_ptr<const Faults> faults)
        : inner_(inner), faults_(std::move(faults)) {}

    std::string GetAttr(const host::DOMNode* element, std::string_view name) override {
        Before("GetAttr");
        return inner_.GetAttr(element, name);
    }
    std::string GetChildText(const host::DOMNode* node, std::string_view name) override {
        Before("GetChildText");
        return inner_.GetChildText(node, name);
    }
    std::string MakeErrorResult(std::string_view code, std::string_view message, std::string_view detail) override {
        Before("MakeErrorResult");
        return inner_.MakeErrorResult(code, message, detail);
    }
    std::string MakeResultDoc(std::string_view docid, std::string_view proc) override {
        Before("MakeResultDoc");
        return inner_.MakeResultDoc(docid, proc);
    }
    void AddResultItem(host::DOMDocument& resultDocument, std::string_view key, long code,
                       std::string_view description) override {
        Before("AddResultItem");
        inner_.AddResultItem(resultDocument, key, code, description);
    }

private:
    void Before(std::string_view operation) const {
        if (faults_->eaiHelper) {
            faults_->eaiHelper(operation);
        }
    }

    host::EaiHelper& inner_;
    std::shared_ptr<const Faults> faults_;
};

refhost::DatabaseOpener FaultyOpener(std::shared_ptr<const Faults> faults) {
    return [faults = std::move(faults)](const std::string& connectionString) {
        return std::make_unique<FaultyDatabase>(refhost::OpenDatabase(connectionString), faults);
    };
}

} // namespace

FaultyEnvironment::FaultyEnvironment(Faults faults, refhost::Trace* trace)
    : FaultyEnvironment(std::make_shared<const Faults>(std::move(faults)), trace) {}

FaultyEnvironment::FaultyEnvironment(std::shared_ptr<const Faults> faults, refhost::Trace* trace)
    : refhost::Environment(trace, FaultyOpener(faults)), faults_(std::move(faults)) {}

FaultyEnvironment::~FaultyEnvironment() = default;

std::unique_ptr<host::DOMDocument> FaultyEnvironment::CreateDOMDocument() {
    if (faults_->document) {
        faults_->document();
    }
    return refhost::Environment::CreateDOMDocument();
}

host::EaiHelper& FaultyEnvironment::GetEaiHelper() {
    if (!eaiHelper_) {
        eaiHelper_ = std::make_unique<FaultyEaiHelper>(refhost::Environment::GetEaiHelper(), faults_);
    }
    return *eaiHelper_;
}

} // namespace test
