#include "ModPub/Conversions.h"
#include "cli/Commands.h"
#include "refhost/Environment.h"
#include "refhost/OpenDatabase.h"
#include "refhost/account/Account.h"
#include "refhost/ado/Connection.h"
#include "refhost/eai/Login.h"
#include "refhost/odbc/SystemDatabase.h"
#include "refhost/xml/FileText.h"

namespace cli {

int RunAccountCreate(const AccountArguments& arguments) {
    refhost::Environment environment;
    const refhost::Login login(refhost::xml::ReadXmlFile(arguments.login), environment);
    refhost::Connection connection(refhost::OpenOrCreate());
    const std::string connectionString = ModPub::ToText(login.Member("QxDbName"));
    connection.Open(connectionString, "", "", host::command_option::unspecified);
    if (refhost::IsOdbc(connectionString)) {
        refhost::odbc::EnsureSystemDatabase(connection);
    }
    refhost::CreateAccount(connection, login.AccountId(), arguments.demo);
    return exit_status::done;
}

} // namespace cli
