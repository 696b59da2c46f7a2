#pragma once

#include <atomic>
#include <filesystem>
#include <list>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace test {

class ServerCertificate;

/// A SQL Server on this machine, as far as a client sees it over the wire: it speaks Microsoft's TDS 7.4 (MS-TDS) and
/// puts the embedded account database behind it, so that the real FreeTDS driver has a server to talk to. Like SQL
/// Server it ends a transaction itself after an error of conversion, and says so by a change of the environment. Texts
/// may come as batches or prepared, without parameters.
///
/// It keeps to its `Manners` where a test wants something to go wrong. Each connection is served by a thread of its
/// own.
class TdsServer {
public:
    struct Manners {
        bool refuseLogin = false;
        /// Takes connections and never says a word.
        bool muteLogin = false;
        /// Hangs up when a batch holds this text.
        std::string hangUpAt = {};
        /// Leaves a batch that holds this text without an answer until the client cancels it.
        std::string muteAt = {};
        /// Makes the client the victim of a deadlock at a batch that holds this text: its transaction is gone.
        std::string deadlockAt = {};
        /// A folder of databases (`ServerDatabases`) instead of an account; a login that names none uses `master`.
        std::filesystem::path databases = {};
        /// Whether clients have the right to create databases there.
        bool mayCreate = true;
        /// What it encrypts connections with, which outlives it; null where it offers no encryption.
        const ServerCertificate* certificate = nullptr;
        /// Asks for encryption whatever the client says; else the client chooses.
        bool requiresEncryption = false;
    };
    /// What came how.
    struct Encryption {
        int encryptedLogins = 0;
        int plainLogins = 0;
        int encryptedBatches = 0;
        int plainBatches = 0;
        bool operator==(const Encryption&) const = default;
    };

    /// @param account connection string of the embedded account database behind; empty for none
    TdsServer(std::string account, Manners manners);
    ~TdsServer();
    TdsServer(const TdsServer&) = delete;
    TdsServer& operator=(const TdsServer&) = delete;

    /// What a client connects with.
    std::string ConnectionString() const;
    /// Where it listens on this machine.
    int port() const { return port_; }
    /// How often a client cancelled a statement.
    int Cancelled() const { return cancelled_; }
    /// What came encrypted, and what did not.
    Encryption Seen();
    /// How many messages clients sent after their logins: each is a way to the server and back.
    int Requests() const { return requests_; }
    /// Those among them that call a procedure.
    int Calls() const { return calls_; }

private:
    class Session;

    void Serve();
    void Note(int Encryption::*what);

    std::string account_;
    Manners manners_;
    int listener_;
    int port_ = 0;
    std::atomic<int> cancelled_ = 0;
    std::atomic<int> requests_ = 0;
    std::atomic<int> calls_ = 0;
    std::mutex mutex_;
    bool closing_ = false;
    Encryption seen_;
    std::vector<int> clients_;
    std::list<std::thread> sessions_;
    std::thread thread_;
};

} // namespace test
