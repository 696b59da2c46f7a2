#include "cli/Classes.h"
#include "cli/Commands.h"
#include "host/Error.h"

#include <cstdio>
#include <exception>
#include <functional>
#include <string>

#include <CLI/CLI.hpp>

namespace {

std::string ClassNames() {
    std::string names;
    for (const cli::ImportClass& importClass : cli::ImportClasses()) {
        names.append(names.empty() ? "" : ", ").append(importClass.name);
    }
    return names;
}

/// Runs a command; says on standard error what it cannot do.
int Guarded(const std::function<int()>& command) {
    try {
        return command();
    } catch (const host::Error& error) {
        std::fprintf(stderr, "%d: %s\n", error.number(), error.description().c_str());
        return cli::exit_status::failed;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kovra: %s\n", error.what());
        return cli::exit_status::unusable;
    }
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Imports documents into the inventory accounting of an ERP account.", "kovra");
    app.set_version_flag("--version", "kovra " KOVRA_VERSION);
    app.require_subcommand(1);
    std::function<int()> command;

    cli::TransactArguments transact;
    CLI::App* const transactCommand = app.add_subcommand("transact", "Run a request through a class, write the result");
    transactCommand->add_option("--class", transact.className, "The class: " + ClassNames())->required();
    transactCommand->add_option("--login", transact.login, "The login, an XML file")->required();
    transactCommand->add_option("--trace", transact.trace, "File for what is asked of the database, JSON lines");
    transactCommand->add_option("request", transact.request, "The request, an XML file; - for standard input");
    transactCommand->callback([&] { command = [&] { return cli::RunTransact(transact); }; });

    cli::QueryArguments query;
    CLI::App* const queryCommand = app.add_subcommand("query", "Query stock documents, write the filled envelope");
    queryCommand->add_option("--login", query.login, "The login, an XML file")->required();
    queryCommand->add_option("--conditions", query.conditions, "The conditions, an XML file; without it none");
    queryCommand->add_option("--trace", query.trace, "File for what is asked of the database, JSON lines");
    queryCommand->add_option("envelope", query.envelope, "The envelope, an XML file; - for standard input");
    queryCommand->callback([&] { command = [&] { return cli::RunQuery(query); }; });

    cli::SqlArguments sql;
    CLI::App* const sqlCommand = app.add_subcommand("sql", "Run T-SQL batches, write each row as a JSON object");
    sqlCommand->add_option("--login", sql.login, "The login, an XML file")->required();
    sqlCommand->add_option("-e,--execute", sql.statements, "A statement; may be given several times")
        ->allow_extra_args(false);
    sqlCommand->add_option("files", sql.files, "Files of batches, separated by lines that hold GO alone");
    sqlCommand->callback([&] { command = [&] { return cli::RunSql(sql); }; });

    cli::AccountArguments account;
    CLI::App* const accountCommand = app.add_subcommand("account", "Account databases");
    accountCommand->require_subcommand(1);
    CLI::App* const createCommand = accountCommand->add_subcommand("create", "Create the host's tables");
    createCommand->add_option("--login", account.login, "The login, an XML file")->required();
    createCommand->add_flag("--demo", account.demo, "Add a small company to try things on");
    createCommand->callback([&] { command = [&] { return cli::RunAccountCreate(account); }; });

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        // Help and version end well; everything else is a usage error.
        return app.exit(error) == 0 ? cli::exit_status::done : cli::exit_status::unusable;
    }
    return Guarded(command);
}
