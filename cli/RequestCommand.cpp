#include "cli/AccountCodes.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/SheetFindings.h"
#include "import/request/BuildRequest.h"
#include "import/writing/Files.h"
#include "os/Files.h"

#include <filesystem>

namespace cli {
namespace {

void WriteRequest(const std::string& path, const std::string& request) {
    if (path == "-") {
        WriteOutput(request);
        return;
    }
    importing::WriteFile(path, request);
}

std::string RequestJson(const RequestArguments& arguments, const importing::Sheet& sheet, Language language) {
    std::string text;
    text::JsonWriter json(text);
    json.Open('{')
        .Member("file", arguments.sheet.file)
        .Member("class", sheet.classFields->className)
        .Member("rows", sheet.rows.size())
        .Member("taken", CountTaken(sheet))
        .Member("hidden", sheet.hiddenRows);
    WriteFindings(json, sheet, language);
    json.Close('}');
    return text + "\n";
}

} // namespace

int RunRequest(const RequestArguments& arguments, Console& console) {
    const Messages& messages = console.messages();
    importing::Spreadsheet spreadsheet = OpenSpreadsheet(arguments.sheet, messages.usage);
    importing::CodeLists codes;
    if (!arguments.login.empty()) {
        codes = CodesOfAccount(arguments.login, spreadsheet.classFields());
    }
    const importing::Sheet sheet = spreadsheet.Read(codes);
    const std::size_t taken = CountTaken(sheet);
    const std::size_t refused = sheet.rows.size() - taken;
    const bool usable = sheet.faults.empty() && !sheet.rows.empty();
    const bool writes = usable && taken > 0 && !(arguments.json && arguments.output == "-");
    if (writes) {
        const std::filesystem::path file = std::filesystem::u8path(arguments.sheet.file);
        WriteRequest(arguments.output, importing::BuildRequest(sheet, os::NameOf(file.stem()), "ADD"));
    }
    if (arguments.json) {
        WriteOutput(RequestJson(arguments, sheet, console.language()));
    }

    const SheetTexts& texts = messages.sheet;
    if (!arguments.quiet) {
        TellFindings(sheet, console);
    }
    TellFaults(sheet, console);
    if (sheet.faults.empty() && sheet.rows.empty()) {
        console.Say(Console::Tone::bad, "kovra: ", texts.noRows);
    }
    if (!arguments.quiet) {
        if (sheet.hiddenRows > 0 && usable) {
            console.Say(Fill(arguments.sheet.hidden == "skip" ? texts.hiddenSkipped : texts.hiddenTaken,
                             Count(sheet.hiddenRows, messages.row)));
        }
        if (usable) {
            console.Say(refused == 0 ? Console::Tone::good : Console::Tone::bad,
                        Fill(texts.taken, Count(taken, messages.row), Count(refused, messages.row)), {});
        }
        if (!writes && !arguments.json) {
            console.Say(texts.requestNotWritten);
        } else if (writes && arguments.output != "-") {
            console.Say(Fill(texts.requestWritten, arguments.output));
        }
    }
    if (!usable) {
        return exit_status::unusable;
    }
    return refused == 0 ? exit_status::done : exit_status::failed;
}

} // namespace cli
