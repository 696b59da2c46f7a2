#pragma once

#include "host/Error.h"
#include "refhost/OpenDatabase.h"
#include "refhost/account/Account.h"
#include "refhost/ado/Connection.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace refhost {

/// An account of its own in memory, with the demonstration company, for each test.
class DemoAccount : public testing::Test {
protected:
    DemoAccount() {
        connection.Open("Provider=KovraAccount;Data Source=:memory:", "", "", host::command_option::unspecified);
        CreateAccount(connection, "001", true);
    }

    /// The rows that `sql` gives, each as its values' texts joined by '|'; Null is "NULL".
    std::vector<std::string> Rows(std::string_view sql);
    /// How many rows `sql` gives.
    std::size_t Count(std::string_view sql) { return connection.database().Query(sql).rowCount; }

    Connection connection{OpenOrCreate()};
};

} // namespace refhost
