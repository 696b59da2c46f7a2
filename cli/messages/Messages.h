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
    std::string_view traceTimes;
    std::string_view traceCommand;
    std::string_view traceShow;
    std::string_view traceShowFile;
    std::string_view transact;
    /// `{0}` the names of the classes.
    std::string_view transactClass;
    std::string_view transactRequest;
    std::string_view transactFormat;
    std::string_view transactJournal;
    std::string_view transactQuiet;
    std::string_view host;
    std::string_view transactServer;
    std::string_view doctor;
    std::string_view doctorLogin;
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
    std::string_view accountBackup;
    std::string_view accountRestore;
    std::string_view accountCheck;
    std::string_view accountUpgrade;
    std::string_view accountSystem;
    std::string_view accountFile;
    std::string_view loginCommand;
    std::string_view loginCheck;
    std::string_view loginInit;
    std::string_view loginInitFile;
    std::string_view loginInitConnection;
    std::string_view loginInitAccount;
    std::string_view loginInitYear;
    std::string_view loginInitUser;
    std::string_view loginInitName;
    /// How spreadsheets are read. `{0}` the names of the classes.
    std::string_view sheetClass;
    std::string_view sheetName;
    std::string_view sheetHeaderRow;
    std::string_view sheetMap;
    std::string_view sheetMapValue;
    std::string_view sheetEncoding;
    std::string_view sheetHidden;
    std::string_view sheetFixCodes;
    std::string_view sheetAllowDuplicates;
    std::string_view sheetFile;
    std::string_view sheetJson;
    std::string_view workbook;
    std::string_view workbookOutput;
    std::string_view workbookLogin;
    std::string_view request;
    std::string_view requestOutput;
    std::string_view requestLogin;
    std::string_view requestQuiet;
    std::string_view import;
    std::string_view importCommit;
    std::string_view importStrict;
    std::string_view importReport;
    std::string_view importRefused;
    std::string_view imports;
    std::string_view importsList;
    std::string_view importsShow;
    std::string_view importsUndo;
    std::string_view importsNumber;
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
    std::string_view wrongNumber;
    /// Where to read on; `{0}` the command.
    std::string_view seeHelp;
    /// `{0}` the name given, `{1}` the names of the classes.
    std::string_view unknownClass;
    /// `{0}` the nearest name.
    std::string_view didYouMean;
    /// `{0}` the entry.
    std::string_view wrongMap;
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
    /// Neither the login nor the operator has named a database.
    std::string_view nameDatabase;
    /// A database was named for an account that is a file.
    std::string_view noServer;
};

/// What is told of an import. Rows, documents and entries come with their numbers, see `Noun`.
struct SummaryTexts {
    /// `{0}` how many.
    std::string_view accepted;
    std::string_view allAccepted;
    std::string_view allRefused;
    /// `{0}` how many were accepted, `{1}` how many refused.
    std::string_view someRefused;
    /// `{0}` the row, `{1}` its key, `{2}` the message.
    std::string_view refusal;
    /// The same without a key: `{0}` the row, `{1}` the message.
    std::string_view refusalWithoutKey;
    /// The same of a row that is written all the same.
    std::string_view afterAcceptance;
    /// `{0}` how many refusals are not shown.
    std::string_view moreRefusals;
    /// Stands for an empty message.
    std::string_view noReason;
    /// What an outcome without a row is of.
    std::string_view request;
    /// Stands between a document and its entry.
    std::string_view betweenPlaces;
    std::string_view betweenClauses;
    /// `{0}` the row, `{1}` how many after it.
    std::string_view stoppedByError;
    /// `{0}` the row, `{1}` what the driver says.
    std::string_view connectionLost;
    /// `{0}` the code, `{1}` the message.
    std::string_view requestRefused;
    std::string_view nothingImported;
    std::string_view noRows;
    /// `{0}` the operation.
    std::string_view emptied;
    std::string_view undone;
    /// `{0}` how many were done, the number alone; `{1}` of how many; `{2}` how many were done, with their noun.
    std::string_view interrupted;
    std::string_view interruptedBefore;
    std::string_view interruptedAfter;
    /// Of a request that is written in one transaction.
    std::string_view interruptedWhole;
    std::string_view stoppedByFailure;

    std::string_view warning;
    std::string_view rootTagNamesNothing;
    /// `{0}` the operation asked for, `{1}` the class, `{2}` its operations.
    std::string_view unknownOperation;
    std::string_view emptyInput;
    /// `{0}` the element, `{1}` the class, `{2}` how often, `{3}` the first row.
    std::string_view unknownField;
    std::string_view times;
    std::string_view waitingForInput;

    /// `{0}` how many have begun, `{1}` of how many.
    std::string_view progress;
    /// Behind it: `{0}` the time left.
    std::string_view timeLeft;
    /// `{0}` a number.
    std::string_view seconds;
    std::string_view minutes;

    // The table of outcomes.
    std::string_view rowHeading;
    std::string_view outcomeHeading;
    std::string_view codeHeading;
    std::string_view keyHeading;
    std::string_view messageHeading;
    std::string_view acceptedCell;
    std::string_view refusedCell;
};

/// What `kovra login` and `kovra account` say.
struct AccountTexts {
    std::string_view attributeHeading;
    std::string_view valueHeading;
    std::string_view stateHeading;
    std::string_view hidden;
    std::string_view fine;
    /// `{0}` what needs the attribute.
    std::string_view missing;
    std::string_view noDatabase;
    std::string_view noYear;
    std::string_view noMonth;
    std::string_view noDate;

    /// `{0}` the file.
    std::string_view embedded;
    std::string_view odbc;
    /// `{0}` the version.
    std::string_view version;
    std::string_view noAccount;
    /// `{0}` the date.
    std::string_view starts;
    std::string_view noStart;
    /// `{0}` the year, `{1}` the months.
    std::string_view closed;
    std::string_view noneClosed;
    std::string_view decemberClosed;
    /// `{0}` how many.
    std::string_view ledgerRows;
    /// `{0}` the account, `{1}` the year, `{2}` how many.
    std::string_view calendar;
    std::string_view noCalendar;
    std::string_view usable;
    /// `{0}` how many.
    std::string_view unusable;
    std::string_view cannotOpen;

    /// `{0}` the file.
    std::string_view loginMade;
    /// `{0}` the command.
    std::string_view next;

    /// `{0}` how many tables, `{1}` how many views.
    std::string_view accountMade;
    /// `{0}` warehouses, `{1}` items, `{2}` ledger accounts, `{3}` departments.
    std::string_view demoMade;

    /// `{0}` the backup's file.
    std::string_view backedUp;
    std::string_view systemBackedUp;
    std::string_view restored;
    std::string_view systemRestored;
    std::string_view sound;
    /// What to do about the faults listed before it.
    std::string_view damaged;
    /// `{0}` the file, `{1}` its format before, `{2}` its format now.
    std::string_view upgraded;
    std::string_view upToDate;
    /// The account is on a server.
    std::string_view embeddedOnly;
};

/// What is told of a spreadsheet's cells.
struct SheetTexts {
    /// `{0}` how many.
    std::string_view corrections;
    /// `{0}` the place, `{1}` what stands there, `{2}` what it became.
    std::string_view correction;
    /// `{0}` how many.
    std::string_view warnings;
    /// `{0}` how many rows.
    std::string_view refusals;
    /// `{0}` the place, `{1}` the reason.
    std::string_view finding;
    /// `{0}` how many.
    std::string_view moreLines;
    /// `{0}` how many rows.
    std::string_view hiddenTaken;
    std::string_view hiddenSkipped;
    /// `{0}` how many rows are taken, `{1}` how many refused.
    std::string_view taken;
    std::string_view noRows;
    /// `{0}` the file.
    std::string_view requestWritten;
    std::string_view requestNotWritten;
    /// `{0}` the file.
    std::string_view templateWritten;
    std::string_view templateThere;
};

/// What `kovra import` and `kovra imports` say.
struct ImportTexts {
    /// `{0}` how many rows.
    std::string_view progressRefused;
    /// `{0}` how many rows.
    std::string_view ready;
    std::string_view imported;
    /// `{0}` the quantity, `{1}` the amount.
    std::string_view sums;
    /// `{0}` how many rows.
    std::string_view corrected;
    std::string_view hidden;
    std::string_view refused;
    std::string_view warnings;
    /// `{0}` how many rows.
    std::string_view open;
    /// `{0}` how often, `{1}` the reason, `{2}` the places.
    std::string_view reason;
    std::string_view betweenPlaces;
    std::string_view morePlaces;
    /// `{0}` how many.
    std::string_view moreReasons;
    /// `{0}` the code, `{1}` the message.
    std::string_view ledgerRefuses;
    std::string_view testRun;
    std::string_view interrupted;
    std::string_view interruptedTest;
    /// `{0}` the number, `{1}` the login.
    std::string_view undoHint;
    /// `{0}` the file.
    std::string_view refusedWritten;
    std::string_view reportWritten;
    /// `{0}` the file.
    std::string_view logBusy;
    std::string_view noImports;
    /// `{0}` the number.
    std::string_view unknownImport;
    std::string_view nothingToUndo;
    /// `{0}` the number, `{1}` how many rows.
    std::string_view undone;
    std::string_view undoNotByClass;
    std::string_view undoPosted;
    /// `{0}` how many rows.
    std::string_view undoChanged;
    /// `{0}` the lines.
    std::string_view undoChangedLines;
    /// `{0}` the hash.
    std::string_view fileHash;
    /// What the tables are headed by.
    std::string_view number;
    std::string_view time;
    std::string_view state;
    std::string_view className;
    std::string_view file;
    std::string_view operatorName;
    std::string_view rowsIn;
    std::string_view rowsRefused;
    std::string_view amount;
    std::string_view line;
    std::string_view record;
    std::string_view stateTest;
    std::string_view stateCutOff;
    std::string_view stateEnded;
    std::string_view stateUndone;
    std::string_view unitBegun;
    std::string_view unitImported;
    std::string_view unitNotIn;
};

/// What `kovra trace` says.
struct TraceTexts {
    std::string_view lineHeading;
    std::string_view timeHeading;
    std::string_view countHeading;
    std::string_view operationHeading;
    std::string_view errorHeading;
    std::string_view statementHeading;
    std::string_view slowest;
    std::string_view repeated;
    /// `{0}` how many operations, `{1}` how many of them failed.
    std::string_view sum;
    /// `{0}` milliseconds.
    std::string_view time;
    std::string_view untimed;
    /// `{0}` the line.
    std::string_view noTrace;
};

/// What `kovra doctor` says.
struct DoctorTexts {
    std::string_view classHeading;
    std::string_view sizeHeading;
    std::string_view versionHeading;
    std::string_view stateHeading;
    std::string_view fileHeading;
    std::string_view bits64;
    std::string_view bits32;
    std::string_view created;
    /// `{0}` the HRESULT, `{1}` what the system says of it.
    std::string_view notCreated;
    /// Of a class of the other size, in a process of its own.
    std::string_view createdApart;
    /// `{0}` the HRESULT, `{1}` what the system says of it.
    std::string_view notCreatedApart;
    std::string_view notRegistered;
    /// Of a class that this program's size cannot create.
    std::string_view otherSize;
    std::string_view fileMissing;
    /// `{0}` the database.
    std::string_view accountOpens;
    /// `{0}` the error's number, `{1}` its description.
    std::string_view accountFails;
    std::string_view healthy;
    /// `{0}` how many classes.
    std::string_view missing;
    std::string_view askOtherSize;
};

/// All texts that the program has for people, in one language.
struct Messages {
    Noun row;
    Noun document;
    Noun entry;
    /// Its `place` is not used: a cell has an address.
    Noun cell;
    HelpTexts help;
    UsageTexts usage;
    ServerTexts server;
    SummaryTexts summary;
    AccountTexts account;
    SheetTexts sheet;
    ImportTexts import;
    TraceTexts trace;
    DoctorTexts doctor;
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
