#pragma once

#include "host/Environment.h"
#include "host/HostLogin.h"

#include <memory>
#include <string>

namespace importing {

/// A login into an account, with the world that a class works in.
class Session {
public:
    Session() = default;
    virtual ~Session() = default;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    virtual host::Environment& environment() = 0;
    virtual host::HostLogin& login() = 0;
};

/// A session that leaves the account as it was, whatever is written in it.
class TestSession : public Session {
public:
    /// Takes back what was written so far, as far as others wait for that; rows that stand alone do not miss it.
    /// Throws host::Error.
    virtual void TakeBack() = 0;
    /// Whether what was written since is still held: a server may end a transaction by itself, and what it is asked
    /// then would stay.
    virtual bool Holds() = 0;
};

/// The account that an import goes into. The program gives it, since copies and transactions are the platform's.
class Account {
public:
    Account() = default;
    virtual ~Account() = default;
    Account(const Account&) = delete;
    Account& operator=(const Account&) = delete;

    /// What tells the account from every other in the import log; no password is in it.
    virtual std::string Identity() const = 0;
    /// Whether it is a database of a server, where the ERP's own components are not at hand.
    virtual bool OnServer() const = 0;
    /// A session in earnest. Throws host::Error.
    virtual std::unique_ptr<Session> Open() = 0;
    /// Throws host::Error, and std::runtime_error where the account cannot be copied.
    virtual std::unique_ptr<TestSession> OpenForTest() = 0;
};

} // namespace importing
