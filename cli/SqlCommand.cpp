#include "ModPub/Conversions.h"
#include "cli/Commands.h"
#include "cli/LoginFile.h"
#include "cli/Output.h"
#include "cli/Platform.h"
#include "cli/ResultWriter.h"
#include "refhost/Environment.h"
#include "refhost/OpenDatabase.h"
#include "refhost/account/Batches.h"
#include "refhost/ado/Connection.h"
#include "refhost/ado/JsonRow.h"
#include "refhost/eai/Login.h"
#include "refhost/xml/FileText.h"
#include "text/Fault.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <optional>
#include <variant>

namespace cli {
namespace {

/// Writes what a batch answers: rows to standard output, everything else to standard error.
class BatchPrinter {
public:
    BatchPrinter(RowFormat format, Console& console)
        : format_(format), width_(platform::TerminalWidth(platform::Stream::output)), console_(console) {}

    void operator()(const refhost::ResultSet& rows) {
        // A line between two results, where their lines do not tell them apart.
        const std::string_view gap = format_ == RowFormat::json || first_ ? "" : "\n";
        first_ = false;
        const bool terminal = platform::IsTerminal(platform::Stream::output);
        const std::string text =
            std::string(gap) + ResultText(rows, format_, terminal ? width_ : 0, console_.messages());
        format_ == RowFormat::table ? WriteForPeople(text) : WriteOutput(text);
    }
    void operator()(refhost::RowsWritten rows) {
        console_.Say("(" + Count(static_cast<std::size_t>(rows.count), console_.messages().row) + ")");
    }
    void operator()(const refhost::ServerMessage& message) { console_.Say(message.text); }
    void operator()(const host::Error& error) {
        failed_ = true;
        const bool forPeople = console_.IsTerminal() && error.native() != 0;
        const std::string lead =
            forPeople ? "Msg " + std::to_string(error.native()) + ": " : std::to_string(error.number()) + ": ";
        console_.Say(Console::Tone::bad, lead, error.description());
    }

    bool failed() const { return failed_; }

private:
    RowFormat format_;
    std::size_t width_;
    Console& console_;
    bool first_ = true;
    bool failed_ = false;
};

RowFormat FormatOf(const SqlArguments& arguments) {
    if (const std::optional<RowFormat> format = RowFormatNamed(arguments.format)) {
        return *format;
    }
    return platform::IsTerminal(platform::Stream::output) ? RowFormat::table : RowFormat::json;
}

} // namespace

int RunSql(const SqlArguments& arguments, Console& console) {
    std::vector<std::string> batches = arguments.statements;
    for (const std::string& file : arguments.files) {
        std::ranges::move(refhost::SplitBatches(refhost::xml::ReadTextFile(file)), std::back_inserter(batches));
    }
    if (batches.empty()) {
        throw text::Fault(
            {"nothing to run: give -e STATEMENT or a file", "没有要运行的语句：请给出 -e 语句或一个文件"});
    }
    refhost::Environment environment;
    const refhost::Login login = ReadLogin(arguments.login, environment);
    refhost::Connection connection(refhost::OpenExisting());
    connection.Open(ModPub::ToText(login.Member("QxDbName")), "", "", host::command_option::unspecified);
    refhost::TimeLimit limit;
    if (arguments.seconds > 0) {
        limit = std::chrono::seconds(arguments.seconds);
    }
    BatchPrinter printer(FormatOf(arguments), console);
    for (const std::string& batch : batches) {
        connection.database().RunBatch(batch, limit, [&](const refhost::BatchAnswer& answer) {
            std::visit([&](const auto& each) { printer(each); }, answer);
        });
        if (printer.failed()) {
            return exit_status::failed;
        }
    }
    return exit_status::done;
}

} // namespace cli
