#include "refhost/account/Account.h"

#include "AccountScripts.h"
#include "ModPub/Conversions.h"
#include "host/Error.h"
#include "refhost/account/Batches.h"
#include "text/SqlText.h"

#include <string>

namespace refhost {

namespace {

bool Exists(Connection& connection, std::string_view table) {
    const ResultSet id = connection.database().Query("SELECT OBJECT_ID(N'" + std::string(table) + "') AS id");
    return id.rowCount == 1 && !id.cells[0].IsNull();
}

/// Runs `work` with the connection inside the server's database `QxSystem`.
template <class Work> void WithinSystemDatabase(Connection& connection, const Work& work) {
    const ResultSet name = connection.database().Query("SELECT DB_NAME() AS name");
    connection.Execute("USE QxSystem", host::command_option::textNoRecords);
    work();
    connection.Execute("USE " + SqlName(ModPub::ToText(name.cells[0])), host::command_option::textNoRecords);
}

void Run(host::Connection& connection, std::string_view script) {
    for (const std::string& batch : SplitBatches(script)) {
        connection.Execute(batch, host::command_option::textNoRecords);
    }
}

std::string WithAccountId(std::string_view script, std::string_view accountId) {
    std::string quoted;
    for (const char c : accountId) {
        quoted.append(c == '\'' ? 2 : 1, c);
    }

    static constexpr std::string_view placeholder = "$(AccountId)";
    std::string text(script);
    for (std::size_t at = 0; (at = text.find(placeholder, at)) != std::string::npos; at += quoted.size()) {
        text.replace(at, placeholder.size(), quoted);
    }
    return text;
}

} // namespace

bool CreateAccount(Connection& connection, std::string_view accountId, bool demo, bool onServer) {
    if (Exists(connection, "AccInformation")) {
        throw host::Error(host::error_number::unspecified, "The database holds an account already.");
    }
    const bool hasCalendar = Exists(connection, "QxSystem..UA_Period");

    connection.BeginTrans();
    try {
        Run(connection, account_scripts::account);
        if (demo) {
            Run(connection, account_scripts::demo);
        }
        const auto fillSystemDatabase = [&] {
            if (!hasCalendar) {
                Run(connection, account_scripts::QxSystem);
            }
            if (demo) {
                Run(connection, WithAccountId(account_scripts::demo_QxSystem, accountId));
            }
        };
        if (onServer) {
            WithinSystemDatabase(connection, fillSystemDatabase);
        } else {
            fillSystemDatabase();
        }
        connection.CommitTrans();
    } catch (...) {
        connection.RollbackTrans();
        throw;
    }
    return !hasCalendar;
}

} // namespace refhost
