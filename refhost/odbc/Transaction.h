#pragma once

#include "host/Error.h"
#include "refhost/ado/ConnectionLost.h"
#include "refhost/odbc/Handle.h"
#include "refhost/odbc/Statement.h"

#include <optional>

namespace refhost::odbc {

/// The transaction of a connection: autocommit until one begins, and again after it ends.
///
/// SQL Server ends a transaction itself after some errors (a failed conversion, for one). What is asked in it then
/// would be committed at once, statement by statement; so nothing more is asked until it is rolled back here too.
class Transaction {
public:
    /// @param connection outlives the transaction
    explicit Transaction(const ConnectionHandle& connection) : connection_(connection) {}

    bool IsOpen() const noexcept { return open_; }

    /// Throws when one is open.
    void Begin();
    /// Throws when none is open, or when the server has rolled it back; the message says after which error.
    void Commit();
    /// Rolls back and returns to autocommit, also when the server has rolled it back already. Throws when none is open.
    void RollBack();

    /// Runs `work`, which asks the server something. Throws instead when the server has rolled the transaction back.
    /// An error with which the connection is gone becomes `ConnectionLost`.
    template <class Work> auto Run(const Work& work) {
        RequireAlive();
        try {
            return work();
        } catch (const host::Error& error) {
            Note(error);
            if (IsDead(connection_)) {
                throw ConnectionLost(error);
            }
            throw;
        }
    }

    /// Notes an error of a statement: the server may have rolled the transaction back with it.
    void Note(const host::Error& error);
    /// Throws when the server has rolled the transaction back.
    void RequireAlive();

private:
    enum class State { alive, doubtful, lost };

    void RequireOpen() const;
    bool ServerHasNone();
    void SetAutocommit(bool autocommit);

    const ConnectionHandle& connection_;
    bool open_ = false;
    State state_ = State::alive;
    /// The latest error in it.
    std::optional<host::Error> error_;
};

} // namespace refhost::odbc
