#include "refhost/ado/LossWatch.h"

#include <utility>

namespace refhost {
namespace {

class LossTellingDatabase final : public Database {
    // In front, since its type must be known to the members below.
    template <class Operation> auto Watched(const Operation& operation) {
        try {
            return operation();
        } catch (const ConnectionLost& loss) {
            tell_(loss);
            throw;
        }
    }

public:
    LossTellingDatabase(std::unique_ptr<Database> inner, std::function<void(const ConnectionLost&)> tell)
        : inner_(std::move(inner)), tell_(std::move(tell)) {}

    ResultSet Query(std::string_view sql) override {
        return Watched([&] { return inner_->Query(sql); });
    }
    void Execute(std::string_view sql) override {
        Watched([&] { inner_->Execute(sql); });
    }
    void RunBatch(std::string_view sql, TimeLimit limit, const BatchSink& sink) override {
        Watched([&] { inner_->RunBatch(sql, limit, sink); });
    }
    void BeginTrans() override {
        Watched([&] { inner_->BeginTrans(); });
    }
    void CommitTrans() override {
        Watched([&] { inner_->CommitTrans(); });
    }
    void RollbackTrans() override {
        Watched([&] { inner_->RollbackTrans(); });
    }

private:
    std::unique_ptr<Database> inner_;
    std::function<void(const ConnectionLost&)> tell_;
};

} // namespace

DatabaseOpener TellingOfLoss(DatabaseOpener opener, std::function<void(const ConnectionLost&)> tell) {
    return [opener = std::move(opener), tell = std::move(tell)](const std::string& connectionString) {
        return std::make_unique<LossTellingDatabase>(opener(connectionString), tell);
    };
}

} // namespace refhost
