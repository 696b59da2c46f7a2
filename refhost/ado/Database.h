#pragma once

#include "host/Database.h"
#include "host/Error.h"
#include "refhost/ado/Cells.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace refhost {

using Fields = std::vector<host::Field>;

/// The whole answer of a statement.
struct ResultSet {
    /// The columns; nullptr when the statement gives no rows at all (an insert, say). Shared, so that statements that
    /// run many times describe their columns once.
    std::shared_ptr<const Fields> fields;
    /// The rows' values, row after row, `fields->size()` each.
    Cells cells;
    std::size_t rowCount = 0;
};

/// How many rows a statement wrote.
struct RowsWritten {
    std::int64_t count = 0;
};

/// A text that the server says beside rows and errors, PRINT's for one.
struct ServerMessage {
    std::string text;
};

/// One answer of a batch. An error is one of them: what came before it stands, and the server may go on behind it.
using BatchAnswer = std::variant<ResultSet, RowsWritten, ServerMessage, host::Error>;
/// Takes the answers of a batch one by one, in the batch's order, as they come.
using BatchSink = std::function<void(BatchAnswer&& answer)>;
/// How long a batch may run; nothing for as long as it takes.
using TimeLimit = std::optional<std::chrono::milliseconds>;

/// A kind of account database: what stands behind `Connection` and `Recordset`, which add ADO's manners to it.
/// Every member throws `host::Error` with the number and message that ADO over SQL Server reports.
class Database {
public:
    virtual ~Database() = default;

    /// Runs one statement as a class sends it and reads its whole answer; of several result sets the first. A second
    /// statement smuggled in by a value is refused where the database can tell. May take 30 seconds, as with ADO.
    virtual ResultSet Query(std::string_view sql) = 0;
    /// The same, and drops the answer.
    virtual void Execute(std::string_view sql) = 0;
    /// Runs a whole batch as a client tool sends it. Errors of the batch go to `sink` like every other answer and are
    /// not thrown; what `sink` throws ends the batch. A database that knows no batches runs one statement.
    virtual void RunBatch(std::string_view sql, TimeLimit limit, const BatchSink& sink);
    /// Leaves autocommit. Throws when a transaction is open already.
    virtual void BeginTrans() = 0;
    /// Ends the transaction and returns to autocommit. Throw when none is open.
    virtual void CommitTrans() = 0;
    virtual void RollbackTrans() = 0;
    /// See `host::Connection`.
    virtual void BeginSeries() {}
    virtual void EndSeries() {}
};

/// How a connection opens its database: by its connection string alone, or with something between, as a test does.
using DatabaseOpener = std::function<std::unique_ptr<Database>(const std::string& connectionString)>;

} // namespace refhost
