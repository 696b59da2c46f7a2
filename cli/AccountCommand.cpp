#include "ModPub/Conversions.h"
#include "cli/Commands.h"
#include "cli/ServerDatabases.h"
#include "refhost/Environment.h"
#include "refhost/OpenDatabase.h"
#include "refhost/account/Account.h"
#include "refhost/ado/Connection.h"
#include "refhost/eai/Login.h"
#include "refhost/xml/FileText.h"

#include <stdexcept>
#include <string>

namespace cli {

int RunAccountCreate(const AccountArguments& arguments, Console& console) {
    refhost::Environment environment;
    const refhost::Login login(refhost::xml::ReadXmlFile(arguments.login), environment);
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
    return exit_status::done;
}

} // namespace cli
