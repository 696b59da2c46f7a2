#include "cli/messages/Tables.h"

namespace cli {

constexpr Messages englishMessages = {
    .row = {.one = "{0} row", .many = "{0} rows", .place = "row {0}"},
    .document = {.one = "{0} document", .many = "{0} documents", .place = "document {0}"},
    .entry = {.one = "{0} entry", .many = "{0} entries", .place = "entry {0}"},
    .help =
        {
            .program = "Imports documents into the inventory accounting of an ERP account.",
            .usage = "Usage",
            .options = "Options",
            .command = "COMMAND",
            .commands = "Commands",
            .arguments = "Arguments",
            .required = "required",
            .help = "Show this help and end",
            .version = "Show the version, with those of the libraries, and end",
            .lang = "Language of what is said: zh or en; without it LC_ALL, LC_MESSAGES or LANG decides",
            .login = "The login, an XML file; kovra login init makes one",
            .trace = "Write what is asked of the database to FILE, as JSON lines",
            .transact = "Run a request through a class and write the result; a summary goes to standard error",
            .transactClass = "The class: {0}",
            .transactRequest = "The request, an XML file; - or nothing for standard input",
            .transactFormat =
                "How the result is written: xml (as the class gives it), table or json; without it table on "
                "a terminal, else xml",
            .transactJournal = "Add each outcome to FILE as it happens, as JSON lines; what FILE holds stays",
            .transactQuiet = "No summary and no progress on standard error",
            .query = "Query stock documents and write the filled envelope",
            .queryConditions = "The conditions, an XML file; without it none",
            .queryEnvelope = "The envelope, an XML file; - or nothing for standard input",
            .sql = "Run T-SQL batches and write their rows; counts and messages go to standard error",
            .sqlExecute = "A statement; may be given several times",
            .sqlFiles = "Files of batches, separated by lines that hold GO alone",
            .sqlFormat = "How rows are written: without it table on a terminal, else json (one object a line)",
            .sqlTimeout = "How long a batch may take; without it as long as it takes",
            .account = "Account databases",
            .accountCreate = "Create the host's tables in an empty account database",
            .accountDemo = "Add a small company to try things on",
            .accountDatabase = "On a server: create the database NAME for the account, unless it is there",
            .loginCommand = "Login files",
            .loginCheck = "Tell what is missing or wrong in a login, open its account and say what it is",
            .loginInit = "Make a login file that only its owner can read",
            .loginInitFile = "The file to make; one that is there stays as it is",
            .loginInitConnection = "The connection string of the account's database",
            .loginInitAccount = "The account's id",
            .loginInitYear = "The accounting year",
            .loginInitUser = "The user's id",
            .loginInitName = "The operator's name, which becomes the maker of documents that name none",
            .exitStatus = "Exit status:\n"
                          "  0    everything was accepted, or operation EMPTY was done\n"
                          "  1    some or all rows were refused; query, sql, account and login: what was asked failed\n"
                          "  2    the command line or a file is not usable\n"
                          "  3    the request was refused as a whole: the result is an error result\n"
                          "  130  interrupted; the result tells what was done until then",
        },
    .usage =
        {
            .unexpected = "{0} is not known here",
            .missingOption = "{0} is missing",
            .missingCommand = "a command is missing",
            .missingValue = "{0} takes a value",
            .wrongValue = "the values are {0}",
            .seeHelp = "{0} --help tells what there is",
            .unknownClass = "there is no class '{0}'; the classes are {1}",
            .didYouMean = "did you mean {0}?",
        },
    .server =
        {
            .databaseCreated = "created the database {0}",
            .databaseThere = "the database {0} was there already",
            .calendarMade = "made the calendar table UA_Period in QxSystem",
            .calendarThere = "QxSystem had a calendar table UA_Period already: it was kept",
            .nameInLogin = "now put Database={0} into the login's QxDbName",
            .noServer = "--database is for an account on a server; this login's account is a file",
        },
};

} // namespace cli
