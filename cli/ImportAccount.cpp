#include "cli/ImportAccount.h"

#include "ModPub/Conversions.h"
#include "cli/LoginFile.h"
#include "cli/Platform.h"
#include "import/run/HeldTransaction.h"
#include "os/Files.h"
#include "refhost/Environment.h"
#include "refhost/sql/engine/Backup.h"
#include "refhost/sql/engine/EmbeddedDatabase.h"
#include "text/ConnectionString.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace cli {
namespace {

namespace fs = std::filesystem;

constexpr const char* connectionAttribute = "QxDbName";

/// A login in an environment of its own.
class OpenSession final : public importing::Session {
public:
    explicit OpenSession(const std::string& login) : login_(ReadLogin(login, environment_)) {}

    host::Environment& environment() override { return environment_; }
    host::HostLogin& login() override { return login_; }

private:
    refhost::Environment environment_;
    refhost::Login login_;
};

class TemporaryFolder {
public:
    TemporaryFolder() : path_(platform::CreatePrivateFolder()) {}
    ~TemporaryFolder() {
        std::error_code ignored;
        fs::remove_all(os::PathOf(path_), ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const noexcept { return path_; }

private:
    std::string path_;
};

/// The login's text with another connection string.
std::string WithConnection(const std::string& login, host::Environment& environment, const std::string& text) {
    const std::unique_ptr<host::DOMDocument> document = environment.CreateDOMDocument();
    document->LoadXML(ReadLoginXml(login, environment));
    document->DocumentElement()->SetAttribute(connectionAttribute, text);
    return document->Xml();
}

/// A test run in a copy of an embedded account.
class CopySession final : public importing::TestSession {
public:
    CopySession(const std::string& login, const std::string& connectionString)
        : login_(WithConnection(login, environment_, refhost::sql::CopyAccount(connectionString, folder_.path())),
                 environment_) {}

    host::Environment& environment() override { return environment_; }
    host::HostLogin& login() override { return login_; }
    void TakeBack() override {} // Nobody waits for a copy.
    bool Holds() override { return true; }

private:
    TemporaryFolder folder_;
    refhost::Environment environment_;
    refhost::Login login_;
};

/// A test run in a transaction on a server.
class HeldSession final : public importing::TestSession {
public:
    explicit HeldSession(const std::string& login) : login_(ReadLogin(login, environment_)) {}

    host::Environment& environment() override { return environment_; }
    host::HostLogin& login() override { return login_; }
    void TakeBack() override { environment_.transaction().TakeBack(); }
    bool Holds() override { return environment_.transaction().Holds(environment_); }

private:
    importing::WithHeldTransaction<refhost::Environment> environment_;
    refhost::Login login_;
};

} // namespace

ImportAccount::ImportAccount(std::string login) : login_(std::move(login)) {
    OpenSession session(login_);
    connectionString_ = session.login().ConnectionString();
    accountId_ = session.login().AccountId();
}

std::string ImportAccount::Identity() const {
    std::string identity = accountId_;
    if (!OnServer()) {
        std::error_code ignored;
        const fs::path file = os::PathOf(refhost::sql::FileOf(connectionString_));
        const fs::path known = fs::weakly_canonical(file, ignored);
        return identity.append("|").append(os::NameOf(ignored ? file : known));
    }
    for (const std::string_view key : {"DSN", "Server", "Database", "Data Source"}) {
        identity.append("|").append(text::ConnectionStringValue(connectionString_, key).value_or(""));
    }
    return identity;
}

bool ImportAccount::OnServer() const { return refhost::IsOdbc(connectionString_); }

std::unique_ptr<importing::Session> ImportAccount::Open() { return std::make_unique<OpenSession>(login_); }

std::unique_ptr<importing::TestSession> ImportAccount::OpenForTest() {
    if (OnServer()) {
        return std::make_unique<HeldSession>(login_);
    }
    return std::make_unique<CopySession>(login_, connectionString_);
}

} // namespace cli
