#pragma once

#include "refhost/eai/Login.h"
#include "tests/support/TestAccount.h"
#include "tests/support/WatchedHost.h"

#include <string>
#include <string_view>
#include <vector>

namespace test {

/// The texts that a call opens its recordsets on: of each recordset, in the order of their creation.
using RecordsetUse = std::vector<std::vector<std::string>>;

/// The recordsets of a request that a new instance of `Class` imports into the account.
template <class Class> RecordsetUse RecordsetsOf(const TestAccount& account, std::string_view request) {
    RecordsetUse use;
    WatchedEnvironment environment([&](const HostOperation& operation) {
        if (operation.kind == HostOperation::Kind::creation && operation.name == "Recordset") {
            use.emplace_back();
        } else if (operation.recordset != 0 && operation.name == "Open") {
            use.at(static_cast<std::size_t>(operation.recordset) - 1).emplace_back(operation.text);
        }
    });
    refhost::Login login(account.LoginXml(), environment);
    Class instance(environment);
    instance.Transact(request, environment.Watch(login).get());
    return use;
}

} // namespace test
