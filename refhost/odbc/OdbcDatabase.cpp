#include "refhost/odbc/OdbcDatabase.h"

#include "refhost/ado/ServerErrors.h"
#include "refhost/odbc/Column.h"
#include "refhost/odbc/Diagnostics.h"
#include "refhost/odbc/Handle.h"
#include "refhost/odbc/Statement.h"
#include "refhost/odbc/Transaction.h"
#include "refhost/odbc/Utf16.h"
#include "text/ConnectionString.h"

#include <chrono>
#include <optional>
#include <utility>

namespace refhost::odbc {
namespace {

EnvironmentHandle AllocateEnvironment() {
    SQLHANDLE handle = nullptr;
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &handle))) {
        throw host::Error(host::error_number::unspecified, "The ODBC driver manager does not start.");
    }
    EnvironmentHandle environment(handle);
    Check(SQLSetEnvAttr(handle, SQL_ATTR_ODBC_VERSION, AttributeNumber(SQL_OV_ODBC3), 0), SQL_HANDLE_ENV, handle);
    return environment;
}

/// What ADO reports for an error of connecting: to it the time limit is no limit of a command. A driver may repeat the
/// password in its message; it is replaced.
host::Error ConnectError(const host::Error& error, const std::string& connectionString) {
    std::string message = error.description();
    for (const std::string_view key : {"Pwd", "Password"}) {
        const std::optional<std::string> password = text::ConnectionStringValue(connectionString, key);
        if (!password || password->empty()) {
            continue;
        }
        for (std::size_t at = message.find(*password); at != std::string::npos; at = message.find(*password, at + 3)) {
            message.replace(at, password->size(), "***");
        }
    }
    return {error.number() == timeExpired ? host::error_number::unspecified : error.number(), std::move(message),
            error.native()};
}

class OdbcDatabase : public Database {
public:
    OdbcDatabase(const std::string& connectionString, TimeLimits limits)
        : limits_(limits), environment_(AllocateEnvironment()), connection_(Allocate<ConnectionHandle>(environment_)) {
        SQLSetConnectAttrW(connection_.get(), SQL_ATTR_LOGIN_TIMEOUT, AttributeNumber(SecondsOf(limits.connect)), 0);
        Utf16Text text = ToUtf16(connectionString);
        try {
            Check(SQLDriverConnectW(connection_.get(), nullptr, text.data(), static_cast<SQLSMALLINT>(text.size()),
                                    nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT),
                  SQL_HANDLE_DBC, connection_.get());
        } catch (const host::Error& error) {
            throw ConnectError(error, connectionString);
        }
        connected_ = true;
    }

    ~OdbcDatabase() override {
        idle_ = {};
        if (connected_) {
            // A driver keeps a connection with an open transaction: end it first.
            try {
                if (transaction_.IsOpen()) {
                    transaction_.RollBack();
                }
            } catch (...) {
                // A connection that is lost has no transaction any more.
            }
            SQLDisconnect(connection_.get());
        }
    }

    OdbcDatabase(const OdbcDatabase&) = delete;
    OdbcDatabase& operator=(const OdbcDatabase&) = delete;

    ResultSet Query(std::string_view sql) override {
        return Run(sql, [](const StatementHandle& statement) {
            ResultSet answer = ReadRows(statement);
            // A batch runs to its end only when every answer was asked for.
            while (NextAnswer(statement)) {
                if (!answer.fields) {
                    answer = ReadRows(statement);
                }
            }
            return answer;
        });
    }

    void Execute(std::string_view sql) override {
        Run(sql, [](const StatementHandle& statement) {
            while (NextAnswer(statement)) {
            }
            return true;
        });
    }

    void RunBatch(std::string_view sql, TimeLimit limit, const BatchSink& sink) override {
        StatementHandle statement;
        SQLRETURN result = SQL_SUCCESS;
        try {
            transaction_.RequireAlive();
            statement = AllocateStatement(connection_, SecondsOf(limit));
            result = StartStatement(statement, sql);
        } catch (const host::Error& error) {
            return sink(error);
        }
        for (; result != SQL_NO_DATA; result = SQLMoreResults(statement.get())) {
            for (std::string& message : MessagesOf(SQL_HANDLE_STMT, statement.get())) {
                sink(ServerMessage{std::move(message)});
            }
            BatchAnswer answer = AnswerOf(statement, result);
            const auto* const error = std::get_if<host::Error>(&answer);
            // After an error of the driver's own (a lost connection, a time limit) there is nothing more to come.
            const bool over = error != nullptr && error->native() == 0;
            if (error != nullptr) {
                transaction_.Note(*error);
            }
            if (const auto* const written = std::get_if<RowsWritten>(&answer);
                written == nullptr || written->count >= 0) {
                sink(std::move(answer));
            }
            if (over) {
                return;
            }
        }
    }

    void BeginTrans() override { transaction_.Begin(); }
    void CommitTrans() override { transaction_.Commit(); }
    void RollbackTrans() override { transaction_.RollBack(); }

private:
    /// Runs a batch, and `read` on its answers to their end. The handle serves the next batch, unless there is an
    /// error.
    template <class Read> auto Run(std::string_view sql, const Read& read) -> decltype(read(StatementHandle())) {
        return transaction_.Run([&] {
            StatementHandle statement = std::exchange(idle_, StatementHandle());
            if (statement.get() == nullptr) {
                statement = AllocateStatement(connection_, SecondsOf(limits_.statement));
            }
            Check(StartStatement(statement, sql), SQL_HANDLE_STMT, statement.get());
            auto answer = read(statement);
            SQLFreeStmt(statement.get(), SQL_CLOSE);
            idle_ = std::move(statement);
            return answer;
        });
    }

    /// Whole seconds, a part of one counted as one; 0 is no limit to ODBC.
    static SQLULEN SecondsOf(TimeLimit limit) {
        return limit ? static_cast<SQLULEN>(std::chrono::ceil<std::chrono::seconds>(*limit).count()) : 0;
    }

    /// Rows, the error or the number of rows written (-1 for a statement that writes none) at which a batch stands.
    static BatchAnswer AnswerOf(const StatementHandle& statement, SQLRETURN result) {
        try {
            Check(result, SQL_HANDLE_STMT, statement.get());
            if (ResultSet rows = ReadRows(statement); rows.fields) {
                return rows;
            }
            SQLLEN written = -1;
            Check(SQLRowCount(statement.get(), &written), SQL_HANDLE_STMT, statement.get());
            return RowsWritten{written};
        } catch (const host::Error& error) {
            return error;
        }
    }

    TimeLimits limits_;
    EnvironmentHandle environment_;
    ConnectionHandle connection_;
    bool connected_ = false;
    Transaction transaction_{connection_};
    /// The statement that ran last, ready for the next text.
    StatementHandle idle_;
};

} // namespace

std::unique_ptr<Database> OpenOdbc(const std::string& connectionString, TimeLimits limits) {
    return std::make_unique<OdbcDatabase>(connectionString, limits);
}

} // namespace refhost::odbc
