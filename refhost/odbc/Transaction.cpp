#include "refhost/odbc/Transaction.h"

#include "refhost/ado/ServerErrors.h"
#include "refhost/odbc/Diagnostics.h"

namespace refhost::odbc {

void Transaction::Begin() {
    if (open_) {
        throw host::Error(transactionOpen, "Cannot start more transactions on this session.");
    }
    SetAutocommit(false);
}

void Transaction::Commit() {
    RequireOpen();
    RequireAlive();
    Check(SQLEndTran(SQL_HANDLE_DBC, connection_.get(), SQL_COMMIT), SQL_HANDLE_DBC, connection_.get());
    SetAutocommit(true);
}

void Transaction::RollBack() {
    RequireOpen();
    try {
        Check(SQLEndTran(SQL_HANDLE_DBC, connection_.get(), SQL_ROLLBACK), SQL_HANDLE_DBC, connection_.get());
    } catch (const host::Error& refusal) {
        // The end of a transaction that is not there is a success. To a driver that hands on the server's refusal, and
        // would stay in manual commit for it, the server gives one that can be ended.
        try {
            RunStatement(connection_, "IF @@TRANCOUNT = 0 BEGIN TRANSACTION", commandSeconds);
        } catch (const host::Error&) {
            throw host::Error(refusal);
        }
        Check(SQLEndTran(SQL_HANDLE_DBC, connection_.get(), SQL_ROLLBACK), SQL_HANDLE_DBC, connection_.get());
    }
    SetAutocommit(true);
}

void Transaction::Note(const host::Error& error) {
    if (open_) {
        error_ = error;
        state_ = State::doubtful;
    }
}

void Transaction::RequireAlive() {
    if (state_ == State::doubtful) {
        state_ = ServerHasNone() ? State::lost : State::alive;
    }
    if (state_ == State::lost) {
        throw host::Error(host::error_number::unspecified,
                          "The server has rolled the transaction back after this error: " + error_->description());
    }
}

void Transaction::RequireOpen() const {
    if (!open_) {
        throw host::Error(noTransaction, "No transaction is active.");
    }
}

/// Whether the server says that the connection has no transaction open. One that cannot be asked does not.
bool Transaction::ServerHasNone() {
    try {
        const StatementHandle statement = RunStatement(connection_, "SELECT @@TRANCOUNT", commandSeconds);
        const ResultSet count = ReadRows(statement);
        return count.cells.size() == 1 && count.cells[0] == host::Value(0);
    } catch (const host::Error&) {
        return false;
    }
}

void Transaction::SetAutocommit(bool autocommit) {
    Check(SQLSetConnectAttrW(connection_.get(), SQL_ATTR_AUTOCOMMIT,
                             AttributeNumber(autocommit ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF), 0),
          SQL_HANDLE_DBC, connection_.get());
    open_ = !autocommit;
    state_ = State::alive;
    error_.reset();
}

} // namespace refhost::odbc
