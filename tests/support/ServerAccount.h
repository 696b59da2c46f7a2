#pragma once

#include "refhost/ado/Connection.h"

#include <string>
#include <string_view>
#include <vector>

namespace test {

/// An empty account in a database of its own on a server: made here, and dropped at the end. Its calendar of periods,
/// elsewhere in `QxSystem`, stands in that database too, so that nothing else on the server is touched.
class ServerAccount {
public:
    /// @param server connection string of a login that may create databases; a database that it names is left alone
    explicit ServerAccount(std::string server);
    ~ServerAccount();
    ServerAccount(const ServerAccount&) = delete;
    ServerAccount& operator=(const ServerAccount&) = delete;

    /// Opens the account, whatever connection string it is asked for.
    refhost::DatabaseOpener Opener() const;
    /// Runs T-SQL batches (separated by lines that hold GO alone).
    void Run(std::string_view batches) const;
    /// The rows of a query, one JSON object a line.
    std::vector<std::string> Rows(std::string_view sql) const;

private:
    std::string server_;
    std::string name_;
};

} // namespace test
