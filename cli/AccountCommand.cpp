#include "ModPub/Conversions.h"
#include "cli/AccountQuestions.h"
#include "cli/Commands.h"
#include "cli/LoginFile.h"
#include "cli/ServerDatabases.h"
#include "refhost/Environment.h"
#include "refhost/OpenDatabase.h"
#include "refhost/account/Account.h"
#include "refhost/ado/Connection.h"

#include <stdexcept>
#include <string>

namespace cli {
namespace {

void TellWhatWasMade(AccountQuestions& account, const AccountArguments& arguments, Console& console) {
    const AccountTexts& texts = console.messages().account;
    const auto count = [&account](const char* from) {
        return account.First(std::string("SELECT COUNT(*) AS n FROM ") + from);
    };
    console.Say(Fill(texts.accountMade, count("sysobjects WHERE type = N'U'"), count("sysobjects WHERE type = N'V'")));
    if (arguments.demo) {
        console.Say(Fill(texts.demoMade, count("Warehouse"), count("inventory"), count("code WHERE iyear = 2024"),
                         count("department")));
    }
    console.Say(Fill(texts.next, "kovra login check --login " + arguments.login));
}

} // namespace

int RunAccountCreate(const AccountArguments& arguments, Console& console) {
    refhost::Environment environment;
    const refhost::Login login = ReadLogin(arguments.login, environment);
    refhost::Connection connection(refhost::OpenOrCreate());
    const std::string connectionString = ModPub::ToText(login.Member("QxDbName"));
    connection.Open(connectionString, "", "", host::command_option::unspecified);
    const bool server = refhost::IsOdbc(connectionString);
    if (server) {
        MakeServerDatabases(connection, arguments.database, console);
    } else if (!arguments.database.empty()) {
        throw std::runtime_error(std::string(console.messages().server.noServer));
    }
    const bool calendarMade = refhost::CreateAccount(connection, login.AccountId(), arguments.demo, server);
    if (server) {
        TellWhatIsThere(calendarMade, arguments.database, console);
    }
    AccountQuestions account(environment, connection);
    TellWhatWasMade(account, arguments, console);
    return exit_status::done;
}

} // namespace cli
