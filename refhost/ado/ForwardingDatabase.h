#pragma once

#include "refhost/ado/Database.h"

#include <memory>
#include <string_view>
#include <utility>

namespace refhost {

/// A database that hands everything to another: what decorators of a database are made of. Several may share one.
class ForwardingDatabase : public Database {
public:
    explicit ForwardingDatabase(std::shared_ptr<Database> inner) : inner_(std::move(inner)) {}

    ResultSet Query(std::string_view sql) override { return inner_->Query(sql); }
    void Execute(std::string_view sql) override { inner_->Execute(sql); }
    void RunBatch(std::string_view sql, TimeLimit limit, const BatchSink& sink) override {
        inner_->RunBatch(sql, limit, sink);
    }
    void BeginTrans() override { inner_->BeginTrans(); }
    void CommitTrans() override { inner_->CommitTrans(); }
    void RollbackTrans() override { inner_->RollbackTrans(); }
    void BeginSeries() override { inner_->BeginSeries(); }
    void EndSeries() override { inner_->EndSeries(); }

protected:
    /// The database that this one decorates.
    Database& inner() const noexcept { return *inner_; }
    /// Gives up its share in that database; nothing may be asked of this one afterwards.
    void Release() noexcept { inner_.reset(); }

private:
    std::shared_ptr<Database> inner_;
};

} // namespace refhost
