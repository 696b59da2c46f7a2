#include "cli/ServerDatabases.h"

#include "ModPub/Conversions.h"
#include "refhost/odbc/ServerDatabase.h"
#include "text/SameName.h"
#include "text/SqlText.h"

#include <stdexcept>

namespace cli {
namespace {

void Ensure(refhost::Connection& connection, const std::string& name, Console& console) {
    const ServerTexts& texts = console.messages().server;
    const bool created = refhost::odbc::EnsureDatabase(connection, name);
    console.Say(Fill(created ? texts.databaseCreated : texts.databaseThere, name));
}

} // namespace

void MakeServerDatabases(refhost::Connection& connection, const std::string& name, Console& console) {
    if (!name.empty()) {
        Ensure(connection, name, console);
        connection.Execute("USE " + refhost::SqlName(name), host::command_option::textNoRecords);
    }
    if (text::SameName(ModPub::ToText(connection.database().Query("SELECT DB_NAME() AS name").cells[0]), "master")) {
        throw std::runtime_error(std::string(console.messages().server.nameDatabase));
    }
    Ensure(connection, "QxSystem", console);
}

void TellWhatIsThere(bool calendarMade, const std::string& name, Console& console) {
    const ServerTexts& texts = console.messages().server;
    console.Say(calendarMade ? texts.calendarMade : texts.calendarThere);
    if (!name.empty()) {
        console.Say(Fill(texts.nameInLogin, name));
    }
}

} // namespace cli
