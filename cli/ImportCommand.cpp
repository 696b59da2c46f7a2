#include "cli/Classes.h"
#include "cli/Commands.h"
#include "cli/ImportAccount.h"
#include "cli/ImportText.h"
#include "cli/OpenImportLog.h"
#include "cli/Output.h"
#include "cli/Platform.h"
#include "cli/Progress.h"
#include "import/file/ReadFileFacts.h"
#include "import/report/Report.h"
#include "import/run/RunImport.h"
#include "import/writing/Files.h"
#include "import/writing/RefusedRows.h"

#include <algorithm>
#include <ctime>
#include <string>

namespace cli {
namespace {

using importing::Outcome;

std::string LocalTime() {
    const std::time_t now = std::time(nullptr);
    char text[32];
    const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", std::localtime(&now));
    return {text, length};
}

importing::Transact TransactOf(std::string_view className) {
    const std::vector<ImportClass>& classes = ImportClasses();
    return std::ranges::find(classes, className, &ImportClass::name)->transact;
}

/// Where the files of an import are.
struct Written {
    std::string refused; ///< empty where no row was refused
    std::string report;
};

/// Writes the report, and the file of the refused rows where there are any.
Written WriteFiles(const Outcome& outcome, const ImportArguments& arguments, Language language) {
    const std::string& file = arguments.sheet.file;
    Written written{arguments.refused, arguments.report};
    if (std::ranges::any_of(outcome.rows, [](const importing::RowOutcome& row) { return IsRefused(row.state); })) {
        const auto write = [&](const std::string& path) { importing::WriteRefusedRows(outcome, language, path); };
        if (written.refused.empty()) {
            written.refused = importing::WriteKeepingOthers(importing::RefusedRowsPath(file, language), write);
        } else {
            write(written.refused);
        }
    } else {
        written.refused.clear();
    }
    if (written.report.empty()) {
        written.report = importing::ReportPath(outcome, language);
    }
    importing::WriteFile(written.report, importing::ReportHtml(outcome, language));
    return written;
}

void TellFiles(const Written& written, Console& console) {
    const ImportTexts& texts = console.messages().import;
    if (!written.refused.empty()) {
        console.Say(Fill(texts.refusedWritten, written.refused));
    }
    console.Say(Fill(texts.reportWritten, written.report));
}

int ExitStatus(const Outcome& outcome) {
    if (outcome.interrupted) {
        return exit_status::interrupted;
    }
    if (!outcome.faults.empty()) {
        return exit_status::unusable;
    }
    if (outcome.refused) {
        return exit_status::errorResult;
    }
    const bool allIn =
        std::ranges::all_of(outcome.rows, [](const importing::RowOutcome& row) { return IsTaken(row.state); });
    return allIn ? exit_status::done : exit_status::failed;
}

} // namespace

int RunImport(const ImportArguments& arguments, Console& console) {
    const Messages& messages = console.messages();
    const importing::FileFacts file = importing::ReadFileFacts(arguments.sheet.file);
    importing::Spreadsheet spreadsheet = OpenSpreadsheet(arguments.sheet, messages.usage);
    ImportAccount account(arguments.login);
    importing::ImportLog log = OpenImportLog(arguments.login, messages.import);
    Progress progress(console);
    platform::NoteInterruptions();
    const importing::ImportTask task{
        .account = account,
        .transact = TransactOf(spreadsheet.classFields().className),
        .spreadsheet = spreadsheet,
        .file = file,
        .log = log,
        .time = LocalTime(),
        .commit = arguments.commit,
        .strict = arguments.strict,
        .allowDuplicates = arguments.sheet.allowDuplicates,
        .wantsStop = platform::Interrupted,
        .progress =
            [&](std::size_t done, std::size_t of, std::size_t refused) {
                if (!arguments.quiet && console.IsTerminal()) {
                    progress.Show(done + 1, of, messages.row,
                                  refused == 0 ? std::string()
                                               : Fill(messages.import.progressRefused, Grouped(refused)));
                }
            },
    };
    const Outcome outcome = importing::RunImport(task);
    console.ClearProgress();
    // Before anything is said: who reads that may go away.
    const Written written = WriteFiles(outcome, arguments, console.language());
    if (arguments.json) {
        WriteOutput(ImportJson(outcome, console.language()));
    }
    if (arguments.quiet || !outcome.faults.empty()) {
        TellFaults(outcome, console);
    }
    if (!arguments.quiet) {
        TellImport(outcome, arguments.login, console);
        TellFiles(written, console);
    }
    return ExitStatus(outcome);
}

} // namespace cli
