#pragma once

#include <string>
#include <thread>

namespace test {

/// A server on this machine that speaks just enough of Microsoft's TDS 7.0 (MS-TDS) to fail: it refuses a login, or
/// takes it and hangs up at the first statement. It serves one connection.
class TdsServer {
public:
    enum class Behaviour { refuseLogin, hangUp };

    explicit TdsServer(Behaviour behaviour);
    ~TdsServer();
    TdsServer(const TdsServer&) = delete;
    TdsServer& operator=(const TdsServer&) = delete;

    /// What a client connects with.
    std::string ConnectionString() const;

private:
    void Serve() const;

    Behaviour behaviour_;
    int listener_;
    int port_ = 0;
    std::thread thread_;
};

} // namespace test
