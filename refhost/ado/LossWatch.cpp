#include "refhost/ado/LossWatch.h"

#include "refhost/ado/ForwardingDatabase.h"

#include <utility>

namespace refhost {
namespace {

class LossTellingDatabase final : public ForwardingDatabase {
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
        : ForwardingDatabase(std::move(inner)), tell_(std::move(tell)) {}

    ResultSet Query(std::string_view sql) override {
        return Watched([&] { return inner().Query(sql); });
    }
    void Execute(std::string_view sql) override {
        Watched([&] { inner().Execute(sql); });
    }
    void RunBatch(std::string_view sql, TimeLimit limit, const BatchSink& sink) override {
        Watched([&] { inner().RunBatch(sql, limit, sink); });
    }
    void BeginTrans() override {
        Watched([&] { inner().BeginTrans(); });
    }
    void CommitTrans() override {
        Watched([&] { inner().CommitTrans(); });
    }
    void RollbackTrans() override {
        Watched([&] { inner().RollbackTrans(); });
    }
    void BeginSeries() override {
        Watched([&] { inner().BeginSeries(); });
    }
    void EndSeries() override {
        Watched([&] { inner().EndSeries(); });
    }

private:
    std::function<void(const ConnectionLost&)> tell_;
};

} // namespace

DatabaseOpener TellingOfLoss(DatabaseOpener opener, std::function<void(const ConnectionLost&)> tell) {
    return [opener = std::move(opener), tell = std::move(tell)](const std::string& connectionString) {
        return std::make_unique<LossTellingDatabase>(opener(connectionString), tell);
    };
}

} // namespace refhost
