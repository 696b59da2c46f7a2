#include "cli/Commands.h"
#include "cli/ImportAccount.h"
#include "cli/OpenImportLog.h"
#include "cli/Output.h"
#include "cli/Table.h"
#include "import/log/Undo.h"
#include "import/messages/Figures.h"

#include <string>
#include <string_view>
#include <vector>

#include <fmt/ranges.h>

namespace cli {
namespace {

using importing::LoggedImport;
using importing::LoggedUnit;
using importing::UndoOutcome;

void Write(const Table& table) { WriteForPeople(table.Text(OutputWidth())); }

std::string_view StateOf(const LoggedImport& import, const ImportTexts& texts) {
    if (import.testRun) {
        return texts.stateTest;
    }
    switch (import.state) {
    case LoggedImport::State::running:
        return texts.stateCutOff;
    case LoggedImport::State::ended:
        return texts.stateEnded;
    case LoggedImport::State::undone:
        break;
    }
    return texts.stateUndone;
}

std::string_view StateOf(const LoggedUnit& unit, const ImportTexts& texts) {
    switch (unit.state) {
    case LoggedUnit::State::begun:
        return texts.unitBegun;
    case LoggedUnit::State::imported:
        return texts.unitImported;
    case LoggedUnit::State::notIn:
        break;
    }
    return texts.unitNotIn;
}

std::string Number(std::int64_t number) { return Grouped(static_cast<std::size_t>(number)); }

void List(const std::vector<LoggedImport>& imports, const ImportTexts& texts) {
    using Alignment = Table::Alignment;
    Table table({{texts.number, Alignment::right},
                 texts.time,
                 texts.state,
                 texts.className,
                 texts.file,
                 texts.operatorName,
                 {texts.rowsIn, Alignment::right},
                 {texts.rowsRefused, Alignment::right},
                 {texts.amount, Alignment::right}});
    for (const LoggedImport& import : imports) {
        table.AddRow({std::to_string(import.number), import.time, std::string(StateOf(import, texts)), import.className,
                      import.file, import.operatorName, Number(import.taken), Number(import.refused),
                      importing::Amount(import.amount)});
    }
    Write(table);
}

std::runtime_error Unknown(std::int64_t number, const ImportTexts& texts) {
    return std::runtime_error(Fill(texts.unknownImport, number));
}

} // namespace

int RunImportsList(const ImportsArguments& arguments, Console& console) {
    const ImportTexts& texts = console.messages().import;
    const std::vector<LoggedImport> imports = OpenImportLog(arguments.login, texts).Imports();
    if (imports.empty()) {
        console.Say(texts.noImports);
    } else {
        List(imports, texts);
    }
    return exit_status::done;
}

int RunImportsShow(const ImportsArguments& arguments, Console& console) {
    const ImportTexts& texts = console.messages().import;
    importing::ImportLog log = OpenImportLog(arguments.login, texts);
    const std::optional<LoggedImport> import = log.Find(arguments.number);
    if (!import) {
        throw Unknown(arguments.number, texts);
    }
    List({*import}, texts);
    WriteForPeople(Fill(texts.fileHash, import->hash) + "\n");
    const std::vector<LoggedUnit> units = log.Units(arguments.number);
    if (!units.empty()) {
        Table table({{texts.line, Table::Alignment::right}, texts.state, {texts.record, Table::Alignment::right}});
        for (const LoggedUnit& unit : units) {
            table.AddRow({std::to_string(unit.line), std::string(StateOf(unit, texts)),
                          unit.id ? std::to_string(*unit.id) : std::string()});
        }
        Write(table);
    }
    return exit_status::done;
}

int RunImportsUndo(const ImportsArguments& arguments, Console& console) {
    using Result = UndoOutcome::Result;
    using Tone = Console::Tone;
    const ImportTexts& texts = console.messages().import;
    importing::ImportLog log = OpenImportLog(arguments.login, texts);
    ImportAccount account(arguments.login);
    const UndoOutcome outcome = importing::UndoImport(log, account, arguments.number);
    switch (outcome.result) {
    case Result::undone:
        console.Say(Tone::good, Fill(texts.undone, arguments.number, Count(outcome.rows, console.messages().row)), {});
        return exit_status::done;
    case Result::unknown:
        throw Unknown(arguments.number, texts);
    case Result::nothingToUndo:
        throw std::runtime_error(Fill(texts.nothingToUndo, arguments.number));
    case Result::notByClass:
        console.Say(Tone::bad, texts.undoNotByClass, {});
        break;
    case Result::posted:
        console.Say(Tone::bad, texts.undoPosted, {});
        break;
    case Result::changed:
        console.Say(Tone::bad, Fill(texts.undoChanged, Count(outcome.lines.size(), console.messages().row)), {});
        console.Say(Fill(texts.undoChangedLines, fmt::format("{}", fmt::join(outcome.lines, texts.betweenPlaces))));
        break;
    }
    return exit_status::failed;
}

} // namespace cli
