#pragma once

#include "tests/support/DatabasePool.h"
#include "tests/support/TestAccount.h"
#include "tests/support/WatchedHost.h"
#include "tests/support/rules/PlayedCall.h"

#include <string>
#include <vector>

namespace test {

class Tape;

/// The account that a call works on, as it is between the runs.
class CallAccount {
public:
    /// @param call outlives the account
    explicit CallAccount(const PlayedCall& call);

    /// Runs the call on the watched host and notes what it asks.
    std::string Run(Tape& tape);
    /// Runs the call on the watched host.
    /// @param before sees each operation
    /// @param through puts something between the host and its databases
    using Through = std::function<std::unique_ptr<refhost::Database>(std::unique_ptr<refhost::Database> database)>;
    std::string Run(const BeforeOperation& before, const CallMarks& marks, const Through& through = {});

    /// The login of the runs.
    std::string LoginXml() const;

    /// What the account holds, in order.
    std::vector<std::string> Contents();
    /// Brings the account back to what it was before the call.
    void Restore();
    bool transactionLeftOpen() const { return pool_.transactionLeftOpen(); }

private:
    std::string ConnectionString() const { return account_.connectionString() + call_.connectionMore; }

    const PlayedCall& call_;
    TestAccount account_;
    DatabasePool pool_;
};

} // namespace test
