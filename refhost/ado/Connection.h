#pragma once

#include "host/Database.h"
#include "refhost/ado/Database.h"
#include "refhost/ado/RowsetXml.h"

#include <memory>
#include <utility>

namespace refhost {

/// ADO's manners of a connection over any kind of account database: the connection string chooses it.
class Connection : public host::Connection {
public:
    /// @param opener how the database is opened
    explicit Connection(DatabaseOpener opener) : opener_(std::move(opener)) {}
    ~Connection() override;

    void Open(const std::string& connectionString, const std::string& userId, const std::string& password,
              int options) override;
    void Execute(std::string_view commandText, int options) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;
    void BeginSeries() override;
    void EndSeries() override;

    /// The database behind. Throws 3704 when the connection is closed.
    Database& database();
    /// What its recordsets share when they are saved.
    const std::shared_ptr<RowsetShapes>& shapes() const { return shapes_; }

private:
    DatabaseOpener opener_;
    std::unique_ptr<Database> database_;
    std::shared_ptr<RowsetShapes> shapes_ = std::make_shared<RowsetShapes>();
    bool inTransaction_ = false;
};

} // namespace refhost
