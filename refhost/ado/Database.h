#pragma once

#include "host/Database.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace refhost {

using Fields = std::vector<host::Field>;

/// The whole answer of a statement.
struct ResultSet {
    /// The columns; nullptr when the statement gives no rows at all (an insert, say). Shared, so that statements that
    /// run many times describe their columns once.
    std::shared_ptr<const Fields> fields;
    /// The rows' values, row after row, `fields->size()` each.
    std::vector<host::Value> cells;
    std::size_t rowCount = 0;
};

/// A kind of account database: what stands behind `Connection` and `Recordset`, which add ADO's manners to it.
/// Every member throws `host::Error` with the number and message that ADO over SQL Server reports.
class Database {
public:
    virtual ~Database() = default;

    /// Runs one batch and reads its whole answer.
    virtual ResultSet Query(std::string_view sql) = 0;
    /// Runs one batch and drops its answer.
    virtual void Execute(std::string_view sql) = 0;
    /// Leaves autocommit. Throws when a transaction is open already.
    virtual void BeginTrans() = 0;
    /// Ends the transaction and returns to autocommit. Throw when none is open.
    virtual void CommitTrans() = 0;
    virtual void RollbackTrans() = 0;
};

/// How a connection opens its database: by its connection string alone, or with something between, as a test does.
using DatabaseOpener = std::function<std::unique_ptr<Database>(const std::string& connectionString)>;

} // namespace refhost
