#pragma once

#include "refhost/OpenDatabase.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace test {

/// Databases that stay open from one connection to the next: a test that makes thousands of connections to one account
/// opens it once for each that is held at a time.
class DatabasePool {
public:
    /// What a connection of the environment opens its database with; the pool outlives the connections.
    refhost::DatabaseOpener Opener();
    /// A database for the test itself.
    std::unique_ptr<refhost::Database> Open(const std::string& connectionString);

    /// Whether a connection gave a database back in the middle of a transaction.
    bool transactionLeftOpen() const { return transactionLeftOpen_; }

private:
    class Lease;

    struct Entry {
        std::shared_ptr<refhost::Database> database;
        bool leased = false;
    };

    std::map<std::string, std::vector<std::unique_ptr<Entry>>> entries_;
    bool transactionLeftOpen_ = false;
};

} // namespace test
