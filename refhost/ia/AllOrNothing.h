#pragma once

#include "host/Database.h"
#include "host/Error.h"

#include <string_view>

namespace refhost {

/// Where `AllOrNothing` goes back to inside the caller's transaction.
inline constexpr std::string_view saveUnit = "SAVE TRANSACTION KovraUnit";
inline constexpr std::string_view undoUnit = "ROLLBACK TRANSACTION KovraUnit";

/// Runs `work` on a connection such that an error in it leaves nothing of it behind: inside the caller's transaction,
/// which stays open, or in one of its own where the caller has none. The error goes on its way.
template <class Work> void AllOrNothing(host::Connection& connection, const Work& work) {
    bool ownTransaction = false;
    try {
        connection.Execute(saveUnit);
    } catch (const host::Error& error) {
        try {
            connection.BeginTrans();
        } catch (const host::Error&) {
            // There is a transaction; the error is another one.
            throw host::Error(error);
        }
        ownTransaction = true;
    }
    try {
        work();
        if (ownTransaction) {
            connection.CommitTrans();
        }
    } catch (...) {
        try {
            if (ownTransaction) {
                connection.RollbackTrans();
            } else {
                connection.Execute(undoUnit);
            }
        } catch (...) {
            // A connection that cannot go back any more has lost its transaction.
        }
        throw;
    }
}

} // namespace refhost
