#include "cli/AccountCodes.h"

#include "ModPub/Conversions.h"
#include "import/account/ReadCodeLists.h"
#include "refhost/Environment.h"
#include "refhost/LoginFile.h"

#include <memory>

namespace cli {

importing::CodeLists CodesOfAccount(const std::string& login, const importing::ClassFields& classFields) {
    refhost::Environment environment;
    const refhost::Login members = refhost::ReadLogin(login, environment);
    const std::unique_ptr<host::Connection> connection = environment.CreateConnection();
    connection->Open(ModPub::ToText(members.Member("QxDbName")), "", "", host::command_option::unspecified);
    return importing::ReadCodeLists(classFields, environment, *connection, ModPub::ToText(members.Member("cIYear")));
}

} // namespace cli
