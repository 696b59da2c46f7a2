// Encrypted connections, on the real FreeTDS driver: what travels encrypted, and which certificates it takes.

#include "ClsInvSubject/ClsInvSubject.h"
#include "host/Error.h"
#include "refhost/Environment.h"
#include "refhost/eai/Login.h"
#include "refhost/odbc/OdbcDatabase.h"
#include "tests/support/TdsServer.h"
#include "tests/support/TestAccount.h"
#include "tests/support/Tls.h"

#include <cstdlib>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

namespace {

using Seen = test::TdsServer::Encryption;
using test::ServerCertificate;
using test::TdsServer;

constexpr const char* refused = "Unable to connect to data source";

/// Connects and runs a statement. @return "connected", or the error's text
std::string Attempt(const std::string& connectionString) {
    try {
        refhost::odbc::OpenOdbc(connectionString)->Execute("select 1 as n");
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), host::error_number::unspecified);
        EXPECT_EQ(error.description().find("verysecret"), std::string::npos) << error.description();
        return error.description();
    }
    return "connected";
}

/// FreeTDS's file of settings, and the file of the authorities that it names, as long as the object lives.
class DriverSettings {
public:
    /// @param authority what its authorities are; null for a file that is not there
    /// @param sections the settings, before the line that names the authorities
    DriverSettings(const ServerCertificate* authority, const std::string& sections) {
        const std::string known = (folder_.path() / "authority.pem").string();
        if (authority != nullptr) {
            std::ofstream(known) << authority->pem();
        }
        const std::string settings = (folder_.path() / "freetds.conf").string();
        std::ofstream(settings) << sections << "\nca file = " << known << "\n";
        setenv("FREETDSCONF", settings.c_str(), 1);
    }
    ~DriverSettings() { unsetenv("FREETDSCONF"); }
    DriverSettings(const DriverSettings&) = delete;
    DriverSettings& operator=(const DriverSettings&) = delete;

private:
    test::TemporaryFolder folder_;
};

class Encryption : public testing::Test {
protected:
    /// What a server that has encryption to offer sees of a client that connects and runs a statement.
    Seen SeenOf(const char* option, bool required = false) const {
        TdsServer server(account_.connectionString(), {.certificate = &certificate_, .requiresEncryption = required});
        EXPECT_EQ(Attempt(server.ConnectionString() + option), "connected") << option;
        return server.Seen();
    }

    static constexpr Seen everything{.encryptedLogins = 1, .encryptedBatches = 1};
    static constexpr Seen theLoginAlone{.encryptedLogins = 1, .plainBatches = 1};
    static constexpr Seen nothing{.plainLogins = 1, .plainBatches = 1};

    test::TestAccount account_{test::AccountContent::demo};
    ServerCertificate certificate_{"127.0.0.1"};
};

TEST_F(Encryption, IsOfEverythingWhereItIsAskedFor) { EXPECT_EQ(SeenOf(";Encryption=require"), everything); }

TEST_F(Encryption, IsOfTheLoginAloneWhereNobodyInsists) {
    EXPECT_EQ(SeenOf(""), theLoginAlone);
    EXPECT_EQ(SeenOf(";Encryption=request"), theLoginAlone);
}

TEST_F(Encryption, IsNoneWhereItIsSwitchedOff) { EXPECT_EQ(SeenOf(";Encryption=off"), nothing); }

TEST_F(Encryption, OptionOfAnotherDriverIsIgnored) { EXPECT_EQ(SeenOf(";Encrypt=yes"), theLoginAlone); }

TEST_F(Encryption, IsOfEverythingWhereTheServerInsists) {
    for (const char* option : {"", ";Encryption=off", ";Encryption=request", ";Encryption=require"}) {
        EXPECT_EQ(SeenOf(option, true), everything) << option;
    }
}

TEST_F(Encryption, CarriesAnImport) {
    TdsServer server(account_.connectionString(), {.certificate = &certificate_});
    refhost::Environment environment;
    refhost::Login login("<login QxDbName=\"" + server.ConnectionString() + ";Encryption=require\" cIYear=\"2024\"/>",
                         environment);
    const std::string result = kovra::ClsInvSubject(environment)
                                   .Transact("<qxinterface roottag=\"row\" docid=\"r\" "
                                             "proc=\"ADD\"><row><cWhCode>01</cWhCode><cInvHead>140301</cInvHead>"
                                             "</row></qxinterface>",
                                             &login);
    EXPECT_EQ(result, "<qxinterface docid=\"r\" proc=\"ADD\"><item key=\"仓库编码：01， ， \" code=\"0\" dsc=\"ok\"/>"
                      "</qxinterface>");
    EXPECT_EQ(account_.Rows("select cWhCode from IA_HeadSet where cInvHead = '140301' and iYear = 2024").size(), 1U);
    EXPECT_EQ(server.Seen().encryptedLogins, 1);
    EXPECT_GT(server.Seen().encryptedBatches, 0);
    EXPECT_EQ(server.Seen().plainLogins + server.Seen().plainBatches, 0);
}

TEST_F(Encryption, ThatTheServerHasNotIsRefusedWhereItIsAskedFor) {
    TdsServer server(account_.connectionString(), {});
    EXPECT_EQ(Attempt(server.ConnectionString() + ";Encryption=request"), "connected");
    EXPECT_EQ(server.Seen(), nothing);
    EXPECT_EQ(Attempt(server.ConnectionString() + ";Encryption=require"), refused);
    EXPECT_EQ(server.Seen(), nothing) << "not even the login was sent";
}

/// A server with a certificate, and a client whose section of freetds.conf names the authorities that it knows.
class Certificate : public testing::Test {
protected:
    static std::string Connect(const ServerCertificate& certificate, const ServerCertificate* authority,
                               const std::string& more = {}) {
        const test::TestAccount account;
        TdsServer server(account.connectionString(), {.certificate = &certificate});
        const DriverSettings settings(authority, "[erp]\nhost = 127.0.0.1\nport = " + std::to_string(server.port()) +
                                                     "\ntds version = 7.4\nencryption = require\n" + more);
        const std::string outcome =
            Attempt("Driver=FreeTDS;Servername=erp;ClientCharset=UTF-8;Uid=kovra;Pwd=verysecret");
        const Seen seen = server.Seen();
        EXPECT_EQ(seen, outcome == "connected" ? Seen({.encryptedLogins = 1, .encryptedBatches = 1}) : Seen{})
            << "whoever is refused learns no password";
        return outcome;
    }

    ServerCertificate ofThisMachine_{"127.0.0.1"};
    ServerCertificate ofAnotherHost_{"erp.example"};
};

TEST_F(Certificate, OfAKnownAuthorityIsTaken) { EXPECT_EQ(Connect(ofThisMachine_, &ofThisMachine_), "connected"); }

TEST_F(Certificate, OfAnotherAuthorityIsRefused) {
    const ServerCertificate stranger("127.0.0.1");
    EXPECT_EQ(Connect(stranger, &ofThisMachine_), refused);
}

TEST_F(Certificate, OfAnotherHostIsRefusedUnlessTheNameDoesNotCount) {
    EXPECT_EQ(Connect(ofAnotherHost_, &ofAnotherHost_), refused);
    EXPECT_EQ(Connect(ofAnotherHost_, &ofAnotherHost_, "check certificate hostname = no"), "connected");
}

TEST_F(Certificate, IsRefusedWhereTheFileOfAuthoritiesIsNotThere) {
    EXPECT_EQ(Connect(ofThisMachine_, nullptr), refused);
}

// `Server=` reads no section, and not the one for all servers either.
TEST_F(Certificate, IsCheckedForServersOfASectionOnly) {
    const test::TestAccount account;
    TdsServer server(account.connectionString(), {.certificate = &ofAnotherHost_});
    const DriverSettings settings(&ofThisMachine_, "[global]");
    EXPECT_EQ(Attempt(server.ConnectionString() + ";Encryption=require"), "connected");
}

} // namespace
