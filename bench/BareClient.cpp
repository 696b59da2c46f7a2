#include "bench/BareClient.h"

#include "refhost/odbc/Diagnostics.h"
#include "refhost/odbc/Statement.h"

namespace bench {

using refhost::odbc::Check;
using refhost::odbc::Utf16Text;

BareClient::BareClient(const std::string& connectionString) {
    SQLHANDLE handle = nullptr;
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &handle);
    environment_ = refhost::odbc::EnvironmentHandle(handle);
    SQLSetEnvAttr(handle, SQL_ATTR_ODBC_VERSION, refhost::odbc::AttributeNumber(SQL_OV_ODBC3), 0);
    connection_ = refhost::odbc::Allocate<refhost::odbc::ConnectionHandle>(environment_);
    Utf16Text text = refhost::odbc::ToUtf16(connectionString);
    Check(SQLDriverConnectW(connection_.get(), nullptr, text.data(), static_cast<SQLSMALLINT>(text.size()), nullptr, 0,
                            nullptr, SQL_DRIVER_NOPROMPT),
          SQL_HANDLE_DBC, connection_.get());
    statement_ = refhost::odbc::Allocate<refhost::odbc::StatementHandle>(connection_);
}

BareClient::~BareClient() {
    statement_ = {};
    SQLDisconnect(connection_.get());
}

void BareClient::Run(Utf16Text& text, Way way) {
    SQLHSTMT statement = statement_.get();
    const auto size = static_cast<SQLINTEGER>(text.size());
    if (way == Way::direct) {
        Check(SQLExecDirectW(statement, text.data(), size), SQL_HANDLE_STMT, statement);
    } else {
        Check(SQLPrepareW(statement, text.data(), size), SQL_HANDLE_STMT, statement);
        Check(SQLExecute(statement), SQL_HANDLE_STMT, statement);
    }
    do {
        SQLSMALLINT columns = 0;
        SQLNumResultCols(statement, &columns);
        while (columns > 0 && SQL_SUCCEEDED(SQLFetch(statement))) {
        }
    } while (SQL_SUCCEEDED(SQLMoreResults(statement)));
    SQLFreeStmt(statement, SQL_CLOSE);
}

} // namespace bench
