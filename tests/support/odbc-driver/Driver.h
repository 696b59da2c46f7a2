#pragma once

#include "refhost/ado/Database.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace odbc_driver {

/// The error of a handle's last call, as SQL Server's drivers report it.
struct Diagnostic {
    std::string state;
    int native = 0;
    std::string message;
};

struct Handle {
    std::vector<Diagnostic> diagnostics;
};

struct Environment : Handle {};

struct Connection : Handle {
    std::unique_ptr<refhost::Database> database;
    /// Whether it runs whole batches, as a server does; else a statement at a time.
    bool batches = false;
    bool autocommit = true;
};

struct Statement : Handle {
    explicit Statement(Connection& theConnection) : connection(theConnection) {}

    Connection& connection;
    /// The answers that are still to come.
    std::deque<refhost::BatchAnswer> answers;
    /// The rows of the present answer; without fields when it has none.
    refhost::ResultSet result;
    /// How many rows the present answer's statement wrote; -1 for one that writes none.
    std::int64_t written = -1;
    /// The current row counted from 1; 0 before the first fetch.
    std::size_t row = 0;
    /// How much of the value in `partColumn` was handed out already, in bytes of the C type asked for.
    std::size_t partColumn = 0;
    std::size_t partDone = 0;
};

} // namespace odbc_driver
