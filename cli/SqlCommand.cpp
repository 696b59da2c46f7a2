#include "ModPub/Conversions.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "refhost/Environment.h"
#include "refhost/LoginFile.h"
#include "refhost/OpenDatabase.h"
#include "refhost/account/Batches.h"
#include "refhost/ado/Connection.h"
#include "refhost/ado/JsonRow.h"
#include "refhost/xml/FileText.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <variant>

namespace cli {
namespace {

/// Writes each row of each result. Throws the batch's first error once all was written that came with it.
void RunBatch(const std::string& batch, refhost::Database& database) {
    std::optional<host::Error> failure;
    database.RunBatch(batch, std::nullopt, [&](const refhost::BatchAnswer& answer) {
        if (const auto* error = std::get_if<host::Error>(&answer); error != nullptr && !failure) {
            failure = *error;
        }
        if (const auto* rows = std::get_if<refhost::ResultSet>(&answer)) {
            std::string lines;
            for (std::size_t row = 0; row < rows->rowCount; ++row) {
                refhost::AppendJsonRow(lines, *rows, row);
                lines.push_back('\n');
            }
            WriteOutput(lines);
        }
    });
    if (failure) {
        throw host::Error(*failure);
    }
}

} // namespace

int RunSql(const SqlArguments& arguments) {
    std::vector<std::string> batches = arguments.statements;
    for (const std::string& file : arguments.files) {
        std::ranges::move(refhost::SplitBatches(refhost::xml::ReadTextFile(file)), std::back_inserter(batches));
    }
    if (batches.empty()) {
        throw std::runtime_error("nothing to run: give -e STATEMENT or a file");
    }
    refhost::Environment environment;
    const refhost::Login login = refhost::ReadLogin(arguments.login, environment);
    refhost::Connection connection(refhost::OpenExisting());
    connection.Open(ModPub::ToText(login.Member("QxDbName")), "", "", host::command_option::unspecified);
    for (const std::string& batch : batches) {
        RunBatch(batch, connection.database());
    }
    return exit_status::done;
}

} // namespace cli
