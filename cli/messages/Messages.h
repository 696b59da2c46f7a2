#pragma once

#include "cli/messages/Language.h"

#include <string>
#include <string_view>
#include <utility>

#include <fmt/format.h>

namespace cli {

/// A noun as it stands behind a number.
struct Noun {
    std::string_view one;
    std::string_view many;
    /// Names one of them by its number, `{0}`.
    std::string_view place;
};

/// What the help says.
struct HelpTexts {
    std::string_view program;
    std::string_view usage;
    std::string_view options;
    std::string_view command;
    std::string_view commands;
    std::string_view arguments;
    std::string_view required;
    std::string_view help;
    std::string_view version;
    std::string_view lang;
    std::string_view login;
    std::string_view trace;
    std::string_view transact;
    /// `{0}` the names of the classes.
    std::string_view transactClass;
    std::string_view transactRequest;
    std::string_view transactFormat;
    std::string_view transactJournal;
    std::string_view transactQuiet;
    std::string_view query;
    std::string_view queryConditions;
    std::string_view queryEnvelope;
    std::string_view sql;
    std::string_view sqlExecute;
    std::string_view sqlFiles;
    std::string_view sqlFormat;
    std::string_view sqlTimeout;
    std::string_view account;
    std::string_view accountCreate;
    std::string_view accountDemo;
    std::string_view accountDatabase;
    std::string_view loginCommand;
    std::string_view loginCheck;
    std::string_view loginInit;
    std::string_view loginInitFile;
    std::string_view loginInitConnection;
    std::string_view loginInitAccount;
    std::string_view loginInitYear;
    std::string_view loginInitUser;
    std::string_view loginInitName;
    std::string_view exitStatus;
};

/// What is wrong with a command line. `{0}` is what it is wrong with.
struct UsageTexts {
    std::string_view unexpected;
    std::string_view missingOption;
    std::string_view missingCommand;
    std::string_view missingValue;
    /// `{0}` the values that there are.
    std::string_view wrongValue;
    /// Where to read on; `{0}` the command.
    std::string_view seeHelp;
    /// `{0}` the name given, `{1}` the names of the classes.
    std::string_view unknownClass;
    /// `{0}` the nearest name.
    std::string_view didYouMean;
};

/// What making an account on a server tells.
struct ServerTexts {
    /// `{0}` the database.
    std::string_view databaseCreated;
    std::string_view databaseThere;
    std::string_view calendarMade;
    std::string_view calendarThere;
    /// What to do next: `{0}` the database.
    std::string_view nameInLogin;
    /// A database was named for an account that is a file.
    std::string_view noServer;
};

/// All texts that the program has for people, in one language.
struct Messages {
    Noun row;
    Noun document;
    Noun entry;
    HelpTexts help;
    UsageTexts usage;
    ServerTexts server;
};

const Messages& MessagesIn(Language language) noexcept;

/// The text with its places `{0}`, `{1}` … filled.
template <class... Arguments> std::string Fill(std::string_view text, const Arguments&... arguments) {
    return fmt::format(fmt::runtime(text), arguments...);
}

/// A number as people read it, "4,353".
std::string Grouped(std::size_t number);

/// A number with its noun, "1 row", "4,353 rows".
std::string Count(std::size_t number, const Noun& noun);

} // namespace cli
