// An ODBC driver over the embedded account database: a T-SQL server for the tests of the ODBC layer, loaded by the real
// driver manager. It offers what that layer calls, and no more. Its connection string names an embedded account, or by
// "Databases=FOLDER[;Database=NAME]" a folder of databases (`ServerDatabases`).

#include "refhost/odbc/Utf16.h"
#include "refhost/sql/engine/EmbeddedDatabase.h"
#include "tests/support/ServerDatabases.h"
#include "tests/support/odbc-driver/Calls.h"
#include "tests/support/odbc-driver/Diagnose.h"
#include "tests/support/odbc-driver/Driver.h"
#include "tests/support/odbc-driver/Values.h"
#include "text/ConnectionString.h"

#include <algorithm>
#include <cstring>

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

namespace {

using namespace odbc_driver;
using refhost::odbc::ToUtf16;
using refhost::odbc::ToUtf8;
using refhost::odbc::Utf16Text;

template <class T> T& As(SQLHANDLE handle) { return *static_cast<T*>(handle); }

/// Runs `action`; an error becomes the handle's diagnostic.
template <class Action> SQLRETURN Guarded(Handle& handle, const Action& action) {
    handle.diagnostics.clear();
    try {
        return static_cast<SQLRETURN>(action());
    } catch (const host::Error& error) {
        handle.diagnostics.push_back(Diagnose(error));
        return SQL_ERROR;
    }
}

Utf16Text TextArgument(const SQLWCHAR* text, SQLINTEGER length) {
    if (length == SQL_NTS) {
        return Utf16Text(text);
    }
    return Utf16Text(text, static_cast<std::size_t>(length));
}

/// Writes `text` with a terminator into a buffer of `room` units; tells the whole length in units.
template <class Length>
SQLRETURN WriteText(const std::string& text, SQLWCHAR* buffer, std::size_t room, Length* length) {
    const Utf16Text units = ToUtf16(text);
    if (length != nullptr) {
        *length = static_cast<Length>(units.size());
    }
    if (buffer == nullptr || room == 0) {
        return SQL_SUCCESS;
    }
    const std::size_t copied = std::min(units.size(), room - 1);
    std::copy_n(units.data(), copied, buffer);
    buffer[copied] = 0;
    return copied < units.size() ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}

Handle& AnyHandle(SQLSMALLINT type, SQLHANDLE handle) {
    switch (type) {
    case SQL_HANDLE_ENV:
        return As<Environment>(handle);
    case SQL_HANDLE_DBC:
        return As<Connection>(handle);
    default:
        return As<Statement>(handle);
    }
}

/// Runs a statement or, on a server, a batch. Its answers wait to be asked for.
void Run(Statement& statement, const std::string& sql) {
    refhost::Database& database = *statement.connection.database;
    statement.answers.clear();
    // A server takes USE in any batch; the embedded database in those of client tools alone.
    if (statement.connection.batches || sql.starts_with("USE ")) {
        database.RunBatch(sql, std::nullopt,
                          [&](refhost::BatchAnswer answer) { statement.answers.push_back(std::move(answer)); });
        return;
    }
    try {
        if (refhost::ResultSet rows = database.Query(sql); rows.fields) {
            statement.answers.emplace_back(std::move(rows));
        }
    } catch (const host::Error& error) {
        statement.answers.emplace_back(error);
    }
}

/// Goes on to the next answer of a batch; what the server says in front of it comes with it.
SQLRETURN Advance(Statement& statement) {
    statement.diagnostics.clear();
    statement.result = {};
    statement.written = -1;
    statement.row = 0;
    SQLRETURN result = SQL_NO_DATA;
    while (result == SQL_NO_DATA && !statement.answers.empty()) {
        const refhost::BatchAnswer answer = std::move(statement.answers.front());
        statement.answers.pop_front();
        if (const auto* const message = std::get_if<refhost::ServerMessage>(&answer)) {
            statement.diagnostics.push_back(Diagnose(*message));
            continue;
        }
        result = statement.diagnostics.empty() ? SQL_SUCCESS : SQL_SUCCESS_WITH_INFO;
        if (const auto* const rows = std::get_if<refhost::ResultSet>(&answer)) {
            statement.result = *rows;
        } else if (const auto* const written = std::get_if<refhost::RowsWritten>(&answer)) {
            statement.written = written->count;
        } else {
            statement.diagnostics.push_back(Diagnose(std::get<host::Error>(answer)));
            result = SQL_ERROR;
        }
    }
    // Words behind the last answer are one of their own.
    return result == SQL_NO_DATA && !statement.diagnostics.empty() ? SQL_SUCCESS_WITH_INFO : result;
}

} // namespace

extern "C" {

SQLRETURN SQL_API SQLAllocHandle(SQLSMALLINT type, SQLHANDLE parent, SQLHANDLE* handle) {
    Note(__func__);

    switch (type) {
    case SQL_HANDLE_ENV:
        *handle = new Environment;
        return SQL_SUCCESS;
    case SQL_HANDLE_DBC:
        *handle = new Connection;
        return SQL_SUCCESS;
    case SQL_HANDLE_STMT:
        *handle = new Statement(As<Connection>(parent));
        return SQL_SUCCESS;
    default:
        return SQL_ERROR;
    }
}

SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT type, SQLHANDLE handle) {
    Note(__func__);

    switch (type) {
    case SQL_HANDLE_ENV:
        delete &As<Environment>(handle);
        break;
    case SQL_HANDLE_DBC:
        delete &As<Connection>(handle);
        break;
    default:
        delete &As<Statement>(handle);
    }
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
    Note(__func__);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLDriverConnectW(SQLHDBC handle, SQLHWND, SQLWCHAR* text, SQLSMALLINT length, SQLWCHAR*, SQLSMALLINT,
                                    SQLSMALLINT*, SQLUSMALLINT) {
    Note(__func__);

    auto& connection = As<Connection>(handle);
    return Guarded(connection, [&] {
        const std::string connectionString = ToUtf8(TextArgument(text, length));
        const auto folder = text::ConnectionStringValue(connectionString, "Databases");
        connection.batches = folder.has_value();
        if (folder) {
            connection.database = std::make_unique<test::ServerDatabases>(
                *folder, text::ConnectionStringValue(connectionString, "Database").value_or("master"));
        } else {
            connection.database = refhost::sql::OpenEmbedded(connectionString);
        }
        return SQL_SUCCESS;
    });
}

SQLRETURN SQL_API SQLDisconnect(SQLHDBC handle) {
    Note(__func__);

    As<Connection>(handle).database.reset();
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetConnectAttrW(SQLHDBC handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER) {
    Note(__func__);

    auto& connection = As<Connection>(handle);
    return Guarded(connection, [&] {
        if (attribute == SQL_ATTR_AUTOCOMMIT) {
            const bool autocommit = reinterpret_cast<SQLULEN>(value) == SQL_AUTOCOMMIT_ON;
            if (!autocommit && connection.autocommit) {
                connection.database->BeginTrans();
            }
            connection.autocommit = autocommit;
        }
        return SQL_SUCCESS;
    });
}

SQLRETURN SQL_API SQLEndTran(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT how) {
    Note(__func__);

    auto& connection = As<Connection>(handle);
    return Guarded(connection, [&] {
        if (how == SQL_COMMIT) {
            connection.database->CommitTrans();
        } else {
            connection.database->RollbackTrans();
        }
        // ODBC begins the next transaction with the next statement; the layer returns to autocommit before that.
        return SQL_SUCCESS;
    });
}

SQLRETURN SQL_API SQLSetStmtAttrW(SQLHSTMT, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
    Note(__func__);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetStmtAttrW(SQLHSTMT, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER, SQLINTEGER*) {
    Note(__func__);

    // The driver manager asks for the four descriptors of a statement; it only keeps them.
    if (attribute >= SQL_ATTR_APP_ROW_DESC && attribute <= SQL_ATTR_IMP_PARAM_DESC) {
        static Handle descriptor;
        *static_cast<SQLHANDLE*>(value) = &descriptor;
        return SQL_SUCCESS;
    }
    return SQL_ERROR;
}

SQLRETURN SQL_API SQLExecDirectW(SQLHSTMT handle, SQLWCHAR* text, SQLINTEGER length) {
    Note(__func__);

    auto& statement = As<Statement>(handle);
    Run(statement, ToUtf8(TextArgument(text, length)));
    const SQLRETURN result = Advance(statement);
    return result == SQL_NO_DATA ? SQL_SUCCESS : result;
}

SQLRETURN SQL_API SQLMoreResults(SQLHSTMT handle) {
    Note(__func__);
    return Advance(As<Statement>(handle));
}

SQLRETURN SQL_API SQLRowCount(SQLHSTMT handle, SQLLEN* count) {
    Note(__func__);

    *count = static_cast<SQLLEN>(As<Statement>(handle).written);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFreeStmt(SQLHSTMT, SQLUSMALLINT) {
    Note(__func__);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLNumResultCols(SQLHSTMT handle, SQLSMALLINT* columns) {
    Note(__func__);

    const auto& fields = As<Statement>(handle).result.fields;
    *columns = fields ? static_cast<SQLSMALLINT>(fields->size()) : SQLSMALLINT{0};
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLDescribeColW(SQLHSTMT handle, SQLUSMALLINT index, SQLWCHAR* name, SQLSMALLINT room,
                                  SQLSMALLINT* nameLength, SQLSMALLINT* type, SQLULEN* size, SQLSMALLINT* digits,
                                  SQLSMALLINT* nullable) {
    Note(__func__);

    const host::Field& field = (*As<Statement>(handle).result.fields)[index - 1U];
    const ColumnType described = DescribeType(field);
    *type = described.type;
    *size = described.size;
    *digits = described.digits;
    *nullable = field.nullable ? SQL_NULLABLE : SQL_NO_NULLS;
    return WriteText(field.name, name, static_cast<std::size_t>(room), nameLength);
}

SQLRETURN SQL_API SQLColAttributeW(SQLHSTMT handle, SQLUSMALLINT index, SQLUSMALLINT attribute, SQLPOINTER text,
                                   SQLSMALLINT bytes, SQLSMALLINT* length, SQLLEN*) {
    Note(__func__);

    if (attribute != SQL_DESC_TYPE_NAME) {
        return SQL_ERROR;
    }
    const host::Field& field = (*As<Statement>(handle).result.fields)[index - 1U];
    SQLSMALLINT units = 0;
    const SQLRETURN result = WriteText(DescribeType(field).name, static_cast<SQLWCHAR*>(text),
                                       static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR), &units);
    *length = static_cast<SQLSMALLINT>(units * static_cast<SQLSMALLINT>(sizeof(SQLWCHAR)));
    return result;
}

SQLRETURN SQL_API SQLFetch(SQLHSTMT handle) {
    Note(__func__);

    auto& statement = As<Statement>(handle);
    statement.partColumn = 0;
    if (statement.row >= statement.result.rowCount) {
        return SQL_NO_DATA;
    }
    ++statement.row;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetData(SQLHSTMT handle, SQLUSMALLINT column, SQLSMALLINT cType, SQLPOINTER buffer, SQLLEN bytes,
                             SQLLEN* indicator) {
    Note(__func__);

    auto& statement = As<Statement>(handle);
    if (statement.partColumn != column) {
        statement.partColumn = column;
        statement.partDone = 0;
    }
    const std::size_t index = (statement.row - 1) * statement.result.fields->size() + column - 1U;
    return Guarded(statement, [&] {
        return CopyValue(statement.result.cells[index], cType, buffer, static_cast<std::size_t>(bytes), indicator,
                         statement.partDone);
    });
}

SQLRETURN SQL_API SQLGetDiagRecW(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT record, SQLWCHAR* state,
                                 SQLINTEGER* native, SQLWCHAR* message, SQLSMALLINT room, SQLSMALLINT* length) {
    Note(__func__);

    const std::vector<Diagnostic>& diagnostics = AnyHandle(type, handle).diagnostics;
    if (record < 1 || static_cast<std::size_t>(record) > diagnostics.size()) {
        return SQL_NO_DATA;
    }
    const Diagnostic& diagnostic = diagnostics[static_cast<std::size_t>(record) - 1];
    WriteText<SQLSMALLINT>(diagnostic.state, state, 6, nullptr);
    *native = diagnostic.native;
    return WriteText(diagnostic.message, message, static_cast<std::size_t>(room), length);
}

// Nothing asks for what the driver can do; whether somebody does, the calls tell.
SQLRETURN SQL_API SQLGetInfoW(SQLHDBC, SQLUSMALLINT, SQLPOINTER, SQLSMALLINT, SQLSMALLINT*) {
    Note(__func__);
    return SQL_ERROR;
}
SQLRETURN SQL_API SQLPrepareW(SQLHSTMT, SQLWCHAR*, SQLINTEGER) {
    Note(__func__);
    return SQL_ERROR;
}

// The driver manager wants it to be there before it asks for records at all.
SQLRETURN SQL_API SQLGetDiagFieldW(SQLSMALLINT, SQLHANDLE, SQLSMALLINT, SQLSMALLINT, SQLPOINTER, SQLSMALLINT,
                                   SQLSMALLINT*) {
    Note(__func__);

    return SQL_NO_DATA;
}

} // extern "C"
