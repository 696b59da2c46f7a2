#include "cli/AccountCodes.h"

#include "cli/LoginFile.h"
#include "import/account/ReadCodeLists.h"
#include "refhost/Environment.h"

namespace cli {

importing::CodeLists CodesOfAccount(const std::string& login, const importing::ClassFields& classFields) {
    refhost::Environment environment;
    refhost::Login members = ReadLogin(login, environment);
    importing::AccountReader account(environment, members);
    return importing::ReadCodeLists(classFields, account);
}

} // namespace cli
