#include "tests/scenario/ServerAccount.h"

#include "refhost/OpenDatabase.h"
#include "refhost/account/Account.h"
#include "refhost/account/Batches.h"
#include "refhost/ado/JsonRow.h"
#include "refhost/odbc/ServerDatabase.h"
#include "text/SqlText.h"

#include <exception>
#include <iostream>
#include <random>
#include <utility>

namespace test {
namespace {

void OpenOn(refhost::Connection& connection) {
    connection.Open("the account", "", "", host::command_option::unspecified);
}

} // namespace

ServerAccount::ServerAccount(std::string server)
    : server_(std::move(server)), name_("kovra_test_" + std::to_string(std::random_device()())) {
    refhost::Connection connection([this](const std::string&) { return refhost::OpenDatabase(server_); });
    OpenOn(connection);
    refhost::odbc::EnsureDatabase(connection, name_);
    connection.Execute("USE " + refhost::SqlName(name_), host::command_option::textNoRecords);
    refhost::odbc::EnsureDatabase(connection, "QxSystem");
    refhost::CreateAccount(connection, "001", false, true);
}

ServerAccount::~ServerAccount() {
    try {
        const std::unique_ptr<refhost::Database> database = refhost::OpenDatabase(server_);
        database->Execute("USE [master]");
        database->Execute("DROP DATABASE " + refhost::SqlName(name_));
    } catch (const std::exception& error) {
        std::cerr << "The database " << name_ << " is left on the server: " << error.what() << '\n';
    }
}

refhost::DatabaseOpener ServerAccount::Opener() const {
    return [this](const std::string&) {
        std::unique_ptr<refhost::Database> database = refhost::OpenDatabase(server_);
        database->Execute("USE " + refhost::SqlName(name_));
        return database;
    };
}

void ServerAccount::Run(std::string_view batches) const {
    refhost::Connection connection(Opener());
    OpenOn(connection);
    for (const std::string& batch : refhost::SplitBatches(batches)) {
        connection.Execute(batch, host::command_option::unspecified);
    }
}

std::vector<std::string> ServerAccount::Rows(std::string_view sql) const {
    const refhost::ResultSet result = Opener()("")->Query(sql);
    std::vector<std::string> rows(result.rowCount);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        refhost::AppendJsonRow(rows[row], result, row);
    }
    return rows;
}

} // namespace test
