#pragma once

#include "refhost/odbc/Handle.h"
#include "refhost/odbc/Utf16.h"

#include <string>

namespace bench {

/// How a text goes to the server.
enum class Way { direct, prepared };

/// No more than ODBC takes to have a text run: sent, its rows fetched, its further answers asked for. Nothing is read
/// of a row, nothing described; one statement handle serves all.
class BareClient {
public:
    /// Throws host::Error when the server cannot be reached.
    explicit BareClient(const std::string& connectionString);
    ~BareClient();
    BareClient(const BareClient&) = delete;
    BareClient& operator=(const BareClient&) = delete;

    /// Throws host::Error when the server refuses the text.
    void Run(refhost::odbc::Utf16Text& text, Way way);

private:
    refhost::odbc::EnvironmentHandle environment_;
    refhost::odbc::ConnectionHandle connection_;
    refhost::odbc::StatementHandle statement_;
};

} // namespace bench
