#include "refhost/odbc/OdbcDatabase.h"

#include "refhost/odbc/Column.h"
#include "refhost/odbc/Diagnostics.h"
#include "refhost/odbc/Handle.h"
#include "refhost/odbc/Utf16.h"
#include "text/ConnectionString.h"

#include <chrono>
#include <optional>
#include <utility>
#include <vector>

namespace refhost::odbc {
namespace {

/// ADO's `ConnectionTimeout` and `CommandTimeout` as they are when nobody sets them, in seconds.
constexpr SQLULEN connectSeconds = 15;
constexpr SQLULEN statementSeconds = 30;

SQLPOINTER Number(SQLULEN value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr): ODBC's own convention
}

template <class Child, class Parent> Child Allocate(const Parent& parent) {
    SQLHANDLE handle = nullptr;
    Check(SQLAllocHandle(Child::type(), parent.get(), &handle), Parent::type(), parent.get());
    return Child(handle);
}

EnvironmentHandle AllocateEnvironment() {
    SQLHANDLE handle = nullptr;
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &handle))) {
        throw host::Error(host::error_number::unspecified, "The ODBC driver manager does not start.");
    }
    EnvironmentHandle environment(handle);
    Check(SQLSetEnvAttr(handle, SQL_ATTR_ODBC_VERSION, Number(SQL_OV_ODBC3), 0), SQL_HANDLE_ENV, handle);
    return environment;
}

/// The message with the password replaced, should a driver repeat it.
host::Error WithoutPassword(const host::Error& error, const std::string& connectionString) {
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
    return {error.number(), std::move(message)};
}

class OdbcDatabase : public Database {
public:
    explicit OdbcDatabase(const std::string& connectionString)
        : environment_(AllocateEnvironment()), connection_(Allocate<ConnectionHandle>(environment_)) {
        SQLSetConnectAttrW(connection_.get(), SQL_ATTR_LOGIN_TIMEOUT, Number(connectSeconds), 0);
        Utf16Text text = ToUtf16(connectionString);
        try {
            Check(SQLDriverConnectW(connection_.get(), nullptr, text.data(), static_cast<SQLSMALLINT>(text.size()),
                                    nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT),
                  SQL_HANDLE_DBC, connection_.get());
        } catch (const host::Error& error) {
            throw WithoutPassword(error, connectionString);
        }
        connected_ = true;
    }

    ~OdbcDatabase() override {
        if (connected_) {
            // A driver keeps a connection with an open transaction: end it first.
            if (!autocommit_) {
                SQLEndTran(SQL_HANDLE_DBC, connection_.get(), SQL_ROLLBACK);
            }
            SQLDisconnect(connection_.get());
        }
    }

    OdbcDatabase(const OdbcDatabase&) = delete;
    OdbcDatabase& operator=(const OdbcDatabase&) = delete;

    ResultSet Query(std::string_view sql) override {
        const StatementHandle statement = Run(sql);
        ResultSet answer;
        do {
            SQLSMALLINT columns = 0;
            Check(SQLNumResultCols(statement.get(), &columns), SQL_HANDLE_STMT, statement.get());
            if (columns > 0 && !answer.fields) {
                ReadAnswer(statement.get(), columns, answer);
            }
        } while (NextAnswer(statement.get()));
        return answer;
    }

    void Execute(std::string_view sql) override {
        const StatementHandle statement = Run(sql);
        // A batch runs to its end only when every answer was asked for.
        while (NextAnswer(statement.get())) {
        }
    }

    void RunBatch(std::string_view sql, TimeLimit limit, const BatchSink& sink) override {
        try {
            const StatementHandle statement = Run(sql, SecondsOf(limit));
            do {
                SQLSMALLINT columns = 0;
                Check(SQLNumResultCols(statement.get(), &columns), SQL_HANDLE_STMT, statement.get());
                if (columns > 0) {
                    ResultSet rows;
                    ReadAnswer(statement.get(), columns, rows);
                    sink(std::move(rows));
                    continue;
                }
                SQLLEN written = 0;
                Check(SQLRowCount(statement.get(), &written), SQL_HANDLE_STMT, statement.get());
                if (written >= 0) {
                    sink(RowsWritten{written});
                }
            } while (NextAnswer(statement.get()));
        } catch (const host::Error& error) {
            sink(error);
        }
    }

    void BeginTrans() override {
        if (!autocommit_) {
            throw host::Error(host::error_number::unspecified, "Only one transaction can be active on this session.");
        }
        SetAutocommit(false);
    }

    void CommitTrans() override { EndTransaction(SQL_COMMIT); }
    void RollbackTrans() override { EndTransaction(SQL_ROLLBACK); }

private:
    /// Whole seconds, a part of one counted as one; 0 is no limit to ODBC.
    static SQLULEN SecondsOf(TimeLimit limit) {
        return limit ? static_cast<SQLULEN>(std::chrono::ceil<std::chrono::seconds>(*limit).count()) : 0;
    }

    StatementHandle Run(std::string_view sql, SQLULEN seconds = statementSeconds) {
        StatementHandle statement = Allocate<StatementHandle>(connection_);
        SQLSetStmtAttrW(statement.get(), SQL_ATTR_QUERY_TIMEOUT, Number(seconds), 0);
        Utf16Text text = ToUtf16(sql);
        Check(SQLExecDirectW(statement.get(), text.data(), static_cast<SQLINTEGER>(text.size())), SQL_HANDLE_STMT,
              statement.get());
        return statement;
    }

    static bool NextAnswer(SQLHSTMT statement) {
        const SQLRETURN result = SQLMoreResults(statement);
        Check(result, SQL_HANDLE_STMT, statement);
        return result != SQL_NO_DATA;
    }

    static void ReadAnswer(SQLHSTMT statement, SQLSMALLINT count, ResultSet& answer) {
        std::vector<Column> columns;
        auto fields = std::make_shared<Fields>();
        for (SQLUSMALLINT index = 1; index <= static_cast<SQLUSMALLINT>(count); ++index) {
            columns.push_back(DescribeColumn(statement, index));
            fields->push_back(columns.back().field);
        }
        answer.fields = std::move(fields);
        for (;;) {
            const SQLRETURN result = SQLFetch(statement);
            Check(result, SQL_HANDLE_STMT, statement);
            if (result == SQL_NO_DATA) {
                return;
            }
            for (std::size_t index = 0; index < columns.size(); ++index) {
                answer.cells.push_back(ReadValue(statement, static_cast<SQLUSMALLINT>(index + 1), columns[index]));
            }
            ++answer.rowCount;
        }
    }

    void SetAutocommit(bool autocommit) {
        Check(SQLSetConnectAttrW(connection_.get(), SQL_ATTR_AUTOCOMMIT,
                                 Number(autocommit ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF), 0),
              SQL_HANDLE_DBC, connection_.get());
        autocommit_ = autocommit;
    }

    void EndTransaction(SQLSMALLINT how) {
        if (autocommit_) {
            throw host::Error(host::error_number::unspecified, "No transaction is active.");
        }
        Check(SQLEndTran(SQL_HANDLE_DBC, connection_.get(), how), SQL_HANDLE_DBC, connection_.get());
        SetAutocommit(true);
    }

    EnvironmentHandle environment_;
    ConnectionHandle connection_;
    bool connected_ = false;
    bool autocommit_ = true;
};

} // namespace

std::unique_ptr<Database> OpenOdbc(const std::string& connectionString) {
    return std::make_unique<OdbcDatabase>(connectionString);
}

} // namespace refhost::odbc
