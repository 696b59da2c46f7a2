#include "refhost/account/Account.h"

#include "AccountScripts.h"
#include "host/Error.h"
#include "refhost/account/Batches.h"

#include <string>

namespace refhost {

namespace {

bool Exists(host::Connection& connection, std::string_view table) {
    try {
        connection.Execute("SELECT * FROM " + std::string(table) + " WHERE 1=2");
        return true;
    } catch (const host::Error& error) {
        if (error.number() != host::error_number::noTable) {
            throw;
        }
        return false;
    }
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

void CreateAccount(host::Connection& connection, std::string_view accountId, bool demo) {
    if (Exists(connection, "AccInformation")) {
        throw host::Error(host::error_number::unspecified, "The database holds an account already.");
    }
    const bool hasCalendar = Exists(connection, "QxSystem..UA_Period");

    connection.BeginTrans();
    try {
        Run(connection, account_scripts::account);
        if (!hasCalendar) {
            Run(connection, account_scripts::QxSystem);
        }
        if (demo) {
            Run(connection, account_scripts::demo);
            Run(connection, WithAccountId(account_scripts::demo_QxSystem, accountId));
        }
        connection.CommitTrans();
    } catch (...) {
        connection.RollbackTrans();
        throw;
    }
}

} // namespace refhost
