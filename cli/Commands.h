#pragma once

#include "cli/Console.h"
#include "cli/SheetOptions.h"

#include <cstdint>
#include <string>
#include <vector>

namespace cli {

/// Exit statuses of the program.
namespace exit_status {
inline constexpr int done = 0;
/// Some or all rows were refused; what was asked of the database failed.
inline constexpr int failed = 1;
/// The command line or a file is not usable.
inline constexpr int unusable = 2;
/// The request was refused as a whole.
inline constexpr int errorResult = 3;
/// Interrupted by the user.
inline constexpr int interrupted = 130;
} // namespace exit_status

struct TransactArguments {
    std::string className;
    std::string login;
    /// Empty for none.
    std::string trace;
    /// Whether the trace tells times.
    bool traceTimes = false;
    /// A file that each outcome is added to as it happens; empty for none.
    std::string journal;
    /// "xml", "table" or "json"; empty for "table" on a terminal, else "xml".
    std::string format;
    /// What the class runs on; empty for the reference host. See `HostNames`.
    std::string host = {};
    /// Whether the class is the one that is registered.
    bool registered = false;
    /// Nothing but errors on standard error.
    bool quiet = false;
    /// A file, or "-" for standard input.
    std::string request = "-";
};

struct QueryArguments {
    std::string login;
    /// Empty for no conditions.
    std::string conditions;
    /// Empty for none.
    std::string trace;
    /// Whether the trace tells times.
    bool traceTimes = false;
    /// What the class runs on; empty for the reference host. See `HostNames`.
    std::string host = {};
    /// A file, or "-" for standard input.
    std::string envelope = "-";
};

struct ImportArguments {
    SheetArguments sheet;
    std::string login;
    /// In earnest; a test run otherwise.
    bool commit = false;
    bool strict = false;
    /// Where the report and the refused rows go; empty for beside the spreadsheet.
    std::string report;
    std::string refused;
    bool json = false;
    /// Nothing but errors on standard error.
    bool quiet = false;
};

struct ImportsArguments {
    std::string login;
    std::int64_t number = 0;
};

struct SqlArguments {
    std::string login;
    std::vector<std::string> statements;
    std::vector<std::string> files;
    /// "table", "json" or "csv"; empty for table on a terminal and else JSON.
    std::string format;
    /// How many seconds each batch may take, 0 for as long as it takes.
    int seconds = 0;
};

struct AccountArguments {
    std::string login;
    /// The database to create on a server; empty for the one that the login names.
    std::string database;
    bool demo = false;
    /// The file that a backup goes to or comes from.
    std::string file;
    /// Whether the system database is meant instead of the account.
    bool system = false;
};

struct TraceShowArguments {
    std::string file;
};

struct LoginCheckArguments {
    std::string login;
};

/// Members that are empty are left to the program: today's year and date.
struct LoginInitArguments {
    std::string file = "login.xml";
    std::string connection = "Provider=KovraAccount;Data Source=account.db";
    std::string account = "001";
    std::string year;
    std::string user = "demo";
    std::string userName;
};

struct RequestArguments {
    SheetArguments sheet;
    /// A file, or "-" for standard output.
    std::string output = "-";
    /// The login of the account that codes are held against; empty to leave them unchecked.
    std::string login;
    bool json = false;
    /// Nothing but errors on standard error.
    bool quiet = false;
};

struct TemplateArguments {
    std::string className;
    /// The workbook to make.
    std::string output;
    /// The login of the account that the codes to choose from are read of; empty for none.
    std::string login;
};

/// Runs a request through a class, writes the result and tells people what came of it. Each command returns the exit
/// status; it throws `std::exception` for a file that cannot be used and `host::Error` for what the database refuses.
int RunTransact(const TransactArguments& arguments, Console& console);

/// Queries stock documents and writes the filled envelope. Throws `host::Error` for what the query raises too.
int RunQuery(const QueryArguments& arguments);

/// Makes the request of a spreadsheet's rows and tells what was corrected and what is refused. Throws
/// importing::UnreadableFile too.
int RunRequest(const RequestArguments& arguments, Console& console);

/// Makes a workbook to fill in. Throws std::runtime_error when the file is there already.
int RunTemplate(const TemplateArguments& arguments, Console& console);

/// Imports a spreadsheet, or tests what importing it would do.
int RunImport(const ImportArguments& arguments, Console& console);

/// Lists the imports of a login on standard output.
int RunImportsList(const ImportsArguments& arguments, Console& console);
/// Shows one with the lines that it wrote.
int RunImportsShow(const ImportsArguments& arguments, Console& console);
/// Takes one back; the status is `failed` where that cannot be done.
int RunImportsUndo(const ImportsArguments& arguments, Console& console);

/// Runs T-SQL batches up to the first that fails. Rows go to standard output; counts, messages and errors of a batch go
/// to `console`.
int RunSql(const SqlArguments& arguments, Console& console);

/// Tells on standard output what a trace holds: every operation in order, the slowest, and the statements that come
/// more than once. Throws std::runtime_error for a file that is no trace.
int RunTraceShow(const TraceShowArguments& arguments, Console& console);

/// Creates the host's tables, and tells people what it made.
int RunAccountCreate(const AccountArguments& arguments, Console& console);

/// Copies an embedded account database, or the system database beside it, to a file while others work on it, and back.
/// Each tells people what it did, and throws std::runtime_error for an account on a server.
int RunAccountBackup(const AccountArguments& arguments, Console& console);
int RunAccountRestore(const AccountArguments& arguments, Console& console);
/// Tells on standard output what is damaged in the files of an embedded account and of its system database; the status
/// is `failed` where something is. Throws likewise.
int RunAccountCheck(const AccountArguments& arguments, Console& console);
/// Brings these files up to the program's format, and tells people of each what it had. Throws likewise.
int RunAccountUpgrade(const AccountArguments& arguments, Console& console);

/// Tells on standard output what is missing or wrong in a login and what its account is. The status is `failed` where
/// something is wrong.
int RunLoginCheck(const LoginCheckArguments& arguments, Console& console);

/// Makes a login file, which its owner alone can read. Throws std::system_error when it is there already.
int RunLoginInit(const LoginInitArguments& arguments, Console& console);

} // namespace cli
