#pragma once

#include "refhost/Environment.h"
#include "refhost/eai/Login.h"
#include "refhost/trace/Trace.h"
#include "tests/support/FaultyEnvironment.h"
#include "tests/support/TestAccount.h"

#include <string>
#include <string_view>
#include <vector>

namespace test {

/// What came of one call of `Transact`.
struct ImportRun {
    std::string result;
    /// What the class itself asked of the database, one JSON object a line.
    std::vector<std::string> trace;
};

/// Runs a request through a new instance of `Class` on the account.
/// @param login the login as XML text
template <class Class>
ImportRun Import(const TestAccount& account, std::string_view request, const std::string& login, Faults faults = {}) {
    const std::filesystem::path path = account.folder() / "trace.jsonl";
    ImportRun run;
    {
        refhost::Trace trace(path.string());
        FaultyEnvironment environment(std::move(faults), &trace);
        refhost::Login hostLogin(login, environment);
        Class instance(environment);
        run.result = instance.Transact(request, &hostLogin);
        trace.Flush();
    }
    run.trace = OwnLines(path);
    return run;
}

/// A request of rows with the element name "row".
std::string Request(std::string_view proc, std::string_view rows);

/// One outcome of a result document.
struct Outcome {
    std::string key;
    long code;
    std::string description;
};

/// The result document of a request with these outcomes; texts without XML's own characters.
std::string ResultDocument(std::string_view proc, const std::vector<Outcome>& outcomes);

/// Trace lines; a failed one carries its error's number.
std::string Connected(std::string_view connectionString, int error = 0);
/// A look-up: static cursor, read-only, a text command.
std::string LookedUp(std::string_view sql, int error = 0);
/// The year-end look-up: a look-up with its cursor at the client.
std::string LookedUpAtClient(std::string_view sql, int error = 0);
/// A query without command type.
std::string Queried(std::string_view sql, int error = 0);
std::string Executed(std::string_view sql, int error = 0);

} // namespace test
