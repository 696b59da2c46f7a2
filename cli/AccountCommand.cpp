#include "ModPub/Conversions.h"
#include "cli/Commands.h"
#include "refhost/Connection.h"
#include "refhost/Environment.h"
#include "refhost/account/Account.h"
#include "refhost/eai/Login.h"
#include "refhost/xml/FileText.h"

namespace cli {

int RunAccountCreate(const AccountArguments& arguments) {
    refhost::Environment environment;
    const refhost::Login login(refhost::xml::ReadXmlFile(arguments.login), environment);
    refhost::Connection connection(nullptr, refhost::OpenOrCreate());
    connection.Open(ModPub::ToText(login.Member("QxDbName")), "", "", host::command_option::unspecified);
    refhost::CreateAccount(connection, login.AccountId(), arguments.demo);
    return exit_status::done;
}

} // namespace cli
