#pragma once

#include "refhost/ado/Database.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace test {

/// A connection to a server of several databases, as a client sees it: NAME.db of a folder is the database NAME, an
/// embedded account, and one of them is in use. Knows DB_ID, CREATE DATABASE, USE and DROP DATABASE, each as a batch of
/// its own; every other batch goes to the database in use. `master` is always there, and forgotten with the connection.
class ServerDatabases : public refhost::Database {
public:
    /// @param folder where the databases are
    /// @param database the one to use; throws 4060 where there is none of that name
    /// @param mayCreate whether the client has the right to create databases
    ServerDatabases(std::filesystem::path folder, std::string_view database, bool mayCreate = true);

    refhost::ResultSet Query(std::string_view sql) override;
    void Execute(std::string_view sql) override;
    void RunBatch(std::string_view sql, refhost::TimeLimit limit, const refhost::BatchSink& sink) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;

private:
    std::optional<refhost::BatchAnswer> OfDatabases(std::string_view sql);
    std::filesystem::path File(std::string_view database) const;
    bool Exists(std::string_view database) const;
    void Use(std::string_view database);
    void Create(std::string_view database);
    void Drop(std::string_view database);
    void RequireNoTransaction(std::string_view statement) const;

    std::filesystem::path folder_;
    bool mayCreate_;
    bool inTransaction_ = false;
    /// The name that the connection in `database_` was opened by.
    std::string opened_;
    std::unique_ptr<refhost::Database> database_;
};

} // namespace test
