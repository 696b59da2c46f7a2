#pragma once

#include "import/run/Account.h"

#include <memory>
#include <string>

namespace cli {

/// The account of a login file, on the reference host: tests run in a copy of an embedded account, and on a server in
/// one transaction that is taken back.
class ImportAccount final : public importing::Account {
public:
    /// Throws std::runtime_error for a login that cannot be used, host::Error for one without connection string.
    explicit ImportAccount(std::string login);

    std::string Identity() const override;
    bool OnServer() const override;
    std::unique_ptr<importing::Session> Open() override;
    std::unique_ptr<importing::TestSession> OpenForTest() override;

private:
    std::string login_;
    std::string connectionString_;
    std::string accountId_;
};

} // namespace cli
