#include "refhost/odbc/Statement.h"

#include "refhost/odbc/Column.h"
#include "refhost/odbc/Diagnostics.h"
#include "refhost/odbc/Utf16.h"

#include <memory>
#include <vector>

namespace refhost::odbc {

StatementHandle AllocateStatement(const ConnectionHandle& connection, SQLULEN seconds) {
    auto statement = Allocate<StatementHandle>(connection);
    SQLSetStmtAttrW(statement.get(), SQL_ATTR_QUERY_TIMEOUT, AttributeNumber(seconds), 0);
    return statement;
}

SQLRETURN StartStatement(const StatementHandle& statement, std::string_view sql) {
    Utf16Text text = ToUtf16(sql);
    return SQLExecDirectW(statement.get(), text.data(), static_cast<SQLINTEGER>(text.size()));
}

StatementHandle RunStatement(const ConnectionHandle& connection, std::string_view sql, SQLULEN seconds) {
    StatementHandle statement = AllocateStatement(connection, seconds);
    Check(StartStatement(statement, sql), SQL_HANDLE_STMT, statement.get());
    return statement;
}

ResultSet ReadRows(const StatementHandle& handle) {
    SQLHSTMT statement = handle.get();
    SQLSMALLINT count = 0;
    Check(SQLNumResultCols(statement, &count), SQL_HANDLE_STMT, statement);
    ResultSet rows;
    if (count <= 0) {
        return rows;
    }
    std::vector<Column> columns;
    auto fields = std::make_shared<Fields>();
    for (SQLUSMALLINT index = 1; index <= static_cast<SQLUSMALLINT>(count); ++index) {
        columns.push_back(DescribeColumn(statement, index));
        fields->push_back(columns.back().field);
    }
    rows.fields = std::move(fields);
    for (;;) {
        const SQLRETURN result = SQLFetch(statement);
        Check(result, SQL_HANDLE_STMT, statement);
        if (result == SQL_NO_DATA) {
            return rows;
        }
        for (std::size_t index = 0; index < columns.size(); ++index) {
            rows.cells.Add(ReadValue(statement, static_cast<SQLUSMALLINT>(index + 1), columns[index]));
        }
        ++rows.rowCount;
    }
}

bool IsDead(const ConnectionHandle& connection) {
    SQLUINTEGER dead = SQL_CD_FALSE;
    return SQL_SUCCEEDED(
               SQLGetConnectAttrW(connection.get(), SQL_ATTR_CONNECTION_DEAD, &dead, sizeof(dead), nullptr)) &&
           dead == SQL_CD_TRUE;
}

bool NextAnswer(const StatementHandle& statement) {
    const SQLRETURN result = SQLMoreResults(statement.get());
    Check(result, SQL_HANDLE_STMT, statement.get());
    return result != SQL_NO_DATA;
}

} // namespace refhost::odbc
