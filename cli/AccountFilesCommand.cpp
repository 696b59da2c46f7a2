#include "ModPub/Conversions.h"
#include "cli/Commands.h"
#include "cli/LoginFile.h"
#include "cli/Output.h"
#include "refhost/Environment.h"
#include "refhost/OpenDatabase.h"
#include "refhost/sql/engine/Backup.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace cli {
namespace {

using refhost::sql::Schema;

/// The connection string of a login's account, which is an embedded one. Throws for every other.
std::string EmbeddedConnection(const AccountArguments& arguments, const AccountTexts& texts) {
    refhost::Environment environment;
    const refhost::Login login = ReadLogin(arguments.login, environment);
    std::string connection = ModPub::ToText(login.Member("QxDbName"));
    if (refhost::IsOdbc(connection)) {
        throw std::runtime_error(std::string(texts.embeddedOnly));
    }
    return connection;
}

Schema ChosenSchema(const AccountArguments& arguments) { return arguments.system ? Schema::system : Schema::account; }

} // namespace

int RunAccountBackup(const AccountArguments& arguments, Console& console) {
    const AccountTexts& texts = console.messages().account;
    refhost::sql::BackUp(EmbeddedConnection(arguments, texts), ChosenSchema(arguments), arguments.file);
    console.Say(Fill(arguments.system ? texts.systemBackedUp : texts.backedUp, arguments.file));
    return exit_status::done;
}

int RunAccountRestore(const AccountArguments& arguments, Console& console) {
    const AccountTexts& texts = console.messages().account;
    refhost::sql::Restore(EmbeddedConnection(arguments, texts), ChosenSchema(arguments), arguments.file);
    console.Say(Fill(arguments.system ? texts.systemRestored : texts.restored, arguments.file));
    return exit_status::done;
}

int RunAccountCheck(const AccountArguments& arguments, Console& console) {
    const AccountTexts& texts = console.messages().account;
    const std::vector<std::string> faults = refhost::sql::CheckFiles(EmbeddedConnection(arguments, texts));
    for (const std::string& fault : faults) {
        WriteForPeople(fault + "\n");
    }
    console.Say(faults.empty() ? texts.sound : texts.damaged);
    return faults.empty() ? exit_status::done : exit_status::failed;
}

int RunAccountUpgrade(const AccountArguments& arguments, Console& console) {
    const AccountTexts& texts = console.messages().account;
    for (const refhost::sql::FormatChange& change : refhost::sql::UpgradeFiles(EmbeddedConnection(arguments, texts))) {
        console.Say(Fill(change.before == change.now ? texts.upToDate : texts.upgraded, change.file, change.before,
                         change.now));
    }
    return exit_status::done;
}

} // namespace cli
