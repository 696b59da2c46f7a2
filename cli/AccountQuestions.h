#pragma once

#include "refhost/Environment.h"

#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// Puts questions of the program's own to an account database.
class AccountQuestions {
public:
    /// @param connection open; it outlives this
    AccountQuestions(host::Environment& environment, host::Connection& connection)
        : environment_(environment), connection_(connection) {}

    /// The first column of each row as text, Null as the empty text. Throws `host::Error`.
    std::vector<std::string> Column(std::string_view sql);
    /// The first value; the empty text when there is no row.
    std::string First(std::string_view sql);

private:
    host::Environment& environment_;
    host::Connection& connection_;
};

} // namespace cli
