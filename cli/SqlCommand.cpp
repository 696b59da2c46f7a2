#include "ModPub/Conversions.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "refhost/Environment.h"
#include "refhost/OpenDatabase.h"
#include "refhost/account/Batches.h"
#include "refhost/ado/Connection.h"
#include "refhost/eai/Login.h"
#include "refhost/trace/JsonRow.h"
#include "refhost/xml/FileText.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace cli {
namespace {

void RunBatch(const std::string& batch, refhost::Database& database) {
    const refhost::ResultSet result = database.Query(batch);
    if (!result.fields) {
        return;
    }
    std::string lines;
    for (std::size_t row = 0; row < result.rowCount; ++row) {
        refhost::AppendJsonRow(lines, result, row);
        lines.push_back('\n');
    }
    WriteOutput(lines);
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
    const refhost::Login login(refhost::xml::ReadXmlFile(arguments.login), environment);
    refhost::Connection connection(nullptr, refhost::OpenExisting());
    connection.Open(ModPub::ToText(login.Member("QxDbName")), "", "", host::command_option::unspecified);
    for (const std::string& batch : batches) {
        RunBatch(batch, connection.database());
    }
    return exit_status::done;
}

} // namespace cli
