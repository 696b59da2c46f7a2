#include "tests/support/ServerAccount.h"

#include "refhost/OpenDatabase.h"
#include "refhost/account/Account.h"
#include "refhost/account/Batches.h"
#include "refhost/ado/ForwardingDatabase.h"
#include "refhost/ado/JsonRow.h"
#include "refhost/odbc/ServerDatabase.h"
#include "text/SqlText.h"

#include <exception>
#include <iostream>
#include <random>
#include <utility>

namespace test {
namespace {

/// A database that says of itself what is asked of `QxSystem`: that of the server is everybody's, and stays as it is.
class WithOwnCalendar final : public refhost::ForwardingDatabase {
public:
    WithOwnCalendar(std::unique_ptr<refhost::Database> inner, std::string name)
        : ForwardingDatabase(std::move(inner)), name_(std::move(name)) {}

    refhost::ResultSet Query(std::string_view sql) override { return inner().Query(Own(sql)); }
    void Execute(std::string_view sql) override { inner().Execute(Own(sql)); }
    void RunBatch(std::string_view sql, refhost::TimeLimit limit, const refhost::BatchSink& sink) override {
        inner().RunBatch(Own(sql), limit, sink);
    }

private:
    std::string Own(std::string_view sql) const {
        constexpr std::string_view shared = "QxSystem.";
        std::string own(sql);
        for (std::size_t at = own.find(shared); at != std::string::npos; at = own.find(shared, at)) {
            own.replace(at, shared.size() - 1, name_);
        }
        return own;
    }

    std::string name_;
};

void OpenOn(refhost::Connection& connection) {
    connection.Open("the account", "", "", host::command_option::unspecified);
}

} // namespace

ServerAccount::ServerAccount(std::string server)
    : server_(std::move(server)), name_("kovra_test_" + std::to_string(std::random_device()())) {
    {
        refhost::Connection connection([this](const std::string&) { return refhost::OpenDatabase(server_); });
        OpenOn(connection);
        refhost::odbc::EnsureDatabase(connection, name_);
    }
    refhost::Connection connection(Opener());
    OpenOn(connection);
    refhost::CreateAccount(connection, "001", false);
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
    return [this](const std::string&) -> std::unique_ptr<refhost::Database> {
        std::unique_ptr<refhost::Database> database = refhost::OpenDatabase(server_);
        database->Execute("USE " + refhost::SqlName(name_));
        return std::make_unique<WithOwnCalendar>(std::move(database), name_);
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
