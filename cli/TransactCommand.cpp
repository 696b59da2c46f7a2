#include "cli/Classes.h"
#include "cli/Commands.h"
#include "cli/Host.h"
#include "cli/Journal.h"
#include "cli/Output.h"
#include "cli/Platform.h"
#include "cli/Progress.h"
#include "cli/Registered.h"
#include "cli/ResultText.h"
#include "cli/Summary.h"
#include "refhost/trace/Trace.h"
#include "refhost/xml/FileText.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <stdexcept>
#include <utility>

namespace cli {
namespace {

using platform::Stream;

const ImportClass& FindClass(const std::string& name, const UsageTexts& texts) {
    const std::vector<ImportClass>& classes = ImportClasses();
    const auto found = std::ranges::find(classes, name, &ImportClass::name);
    if (found == classes.end()) {
        throw std::runtime_error(Fill(texts.unknownClass, name, ClassNames()));
    }
    return *found;
}

ResultFormat FormatNamed(const std::string& name) {
    if (name.empty()) {
        return platform::IsTerminal(Stream::output) ? ResultFormat::table : ResultFormat::xml;
    }
    return name == "table" ? ResultFormat::table : name == "json" ? ResultFormat::json : ResultFormat::xml;
}

void WriteResult(std::string result, ResultFormat format, const ImportLog& log, const ImportClass& importClass,
                 const Messages& messages) {
    const bool terminal = platform::IsTerminal(Stream::output);
    switch (format) {
    case ResultFormat::table:
        WriteForPeople(ResultTable(log, messages, OutputWidth()));
        return;
    case ResultFormat::json:
        result = ResultJson(log, importClass);
        break;
    case ResultFormat::xml:
        if (!result.empty()) {
            result.push_back('\n');
        }
        break;
    }
    if (terminal) {
        WriteForPeople(result);
    } else {
        WriteOutput(result);
    }
}

int ExitStatus(const ImportLog& log) {
    if (platform::Interrupted()) {
        return exit_status::interrupted;
    }
    if (!log.failure.empty()) {
        return exit_status::unusable;
    }
    if (log.error) {
        return exit_status::errorResult;
    }
    return log.anyRefused ? exit_status::failed : exit_status::done;
}

std::string_view HowItEnded(const ImportLog& log) {
    if (log.undone) {
        return "undone";
    }
    if (log.stopped) {
        return "interrupted";
    }
    return log.error ? "refused" : "done";
}

std::string ReadRequest(const TransactArguments& arguments, Console& console) {
    if (arguments.request == "-" && !arguments.quiet && platform::IsTerminal(Stream::input)) {
        console.Say(console.messages().summary.waitingForInput);
    }
    return refhost::xml::ReadXmlFile(arguments.request);
}

} // namespace

int RunTransact(const TransactArguments& arguments, Console& console) {
    const Messages& messages = console.messages();
    const ImportClass& importClass = FindClass(arguments.className, messages.usage);
    const ResultFormat format = FormatNamed(arguments.format);
    const std::string request = ReadRequest(arguments, console);
    if constexpr (hasCom) {
        if (arguments.registered) {
            // Nobody watches the registered class: what is known of its import stands in the result.
            ImportLog log(std::nullopt, true, {});
            std::string result = TransactByRegistered(importClass.name, request, arguments.login, arguments.trace);
            ReadOutcomes(request, result, log);
            WriteResult(std::move(result), format, log, importClass, messages);
            if (!arguments.quiet) {
                const SummaryContext context{
                    .importClass = importClass, .interrupted = false, .listsRefusals = true, .emptyInput = false};
                Summarize(log, context, console);
            }
            return ExitStatus(log);
        }
    }
    std::optional<refhost::Trace> trace;
    if (!arguments.trace.empty()) {
        trace.emplace(arguments.trace, refhost::Trace::Begin::empty,
                      arguments.traceTimes ? refhost::Trace::Times::told : refhost::Trace::Times::untold);
    }
    // The log comes after the login, which needs the host.
    ImportLog* lossLog = nullptr;
    // What the journal tells of is on the disk before it tells.
    const Commits commits = arguments.journal.empty() ? Commits::asTheyAreSet : Commits::durably;
    const std::unique_ptr<Host> host = OpenHost(
        arguments.host, trace ? &*trace : nullptr,
        [&lossLog](const refhost::ConnectionLost& loss) {
            if (lossLog != nullptr) {
                lossLog->ConnectionLost(loss.description());
            }
        },
        commits);
    host::HostLogin& login = host->ReadLogin(arguments.login);
    std::optional<Journal> journal;
    if (!arguments.journal.empty()) {
        journal.emplace(arguments.journal, importClass.name, arguments.request);
    }

    ImportLog::Listeners listeners{.wantsStop = platform::Interrupted};
    if (journal) {
        listeners.outcome = [&journal](const LoggedOutcome& outcome) { journal->Add(outcome); };
    }
    Progress progress(console);
    if (!arguments.quiet && console.IsTerminal()) {
        listeners.progress = [&](std::size_t begun, std::size_t of, bool entries) {
            const Noun& rows = importClass.importsDocuments ? messages.document : messages.row;
            progress.Show(begun, of, entries ? messages.entry : rows);
        };
    }
    ImportLog log(arguments.quiet ? std::nullopt : importClass.fields(), format != ResultFormat::xml,
                  std::move(listeners));
    lossLog = &log;
    platform::NoteInterruptions();
    std::string result;
    try {
        result = importClass.transact(host->environment(), request, &login, &log);
    } catch (const host::Error& error) {
        // The class itself could not be created.
        log.RequestRefused(std::to_string(error.number()), error.description());
    }
    console.ClearProgress();

    // The result comes first; where it cannot be written, people are told of it behind the summary.
    std::exception_ptr failure;
    try {
        WriteResult(std::move(result), format, log, importClass, messages);
        if (journal) {
            journal->End(HowItEnded(log));
        }
        if (trace) {
            trace->Flush();
        }
    } catch (...) {
        failure = std::current_exception();
    }
    if (!arguments.quiet) {
        const bool tableOnTerminal = format == ResultFormat::table && platform::IsTerminal(Stream::output);
        Summarize(log,
                  {.importClass = importClass,
                   .interrupted = platform::Interrupted(),
                   .listsRefusals = !(tableOnTerminal && console.IsTerminal()),
                   .emptyInput = arguments.request == "-" && request.empty()},
                  console);
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
    return ExitStatus(log);
}

} // namespace cli
