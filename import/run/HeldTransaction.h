#pragma once

#include "host/Environment.h"
#include "host/Forwarding.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace importing {

/// One transaction around everything that is asked of an account, whoever asks: all connections made here share one
/// connection to the database, on which a transaction is open that is never committed. The transactions of the
/// connections become savepoints inside it.
class HeldTransaction {
public:
    /// @param create makes the shared connection
    explicit HeldTransaction(std::function<std::unique_ptr<host::Connection>()> create);
    /// Takes everything back.
    ~HeldTransaction();
    HeldTransaction(const HeldTransaction&) = delete;
    HeldTransaction& operator=(const HeldTransaction&) = delete;

    /// A connection for a class or a component. This object outlives it.
    std::unique_ptr<host::Connection> CreateConnection();

    /// Takes back what was written so far and begins anew. Throws host::Error.
    void TakeBack();
    /// Whether the transaction is still open: SQL Server ends one itself after some errors, and what is asked then
    /// would stay. Nothing is asked then.
    bool Holds(host::Environment& environment);

private:
    class Handle;

    void Open(const std::string& connectionString);

    std::function<std::unique_ptr<host::Connection>()> create_;
    std::shared_ptr<host::Connection> shared_;
    /// Empty as long as nobody has opened it.
    std::string connectionString_;
    std::size_t savepoints_ = 0;
};

/// An implementation of `host::Environment` whose connections, its own components' included, work inside one
/// transaction that is taken back at the end.
template <class Environment> class WithHeldTransaction : public Environment {
public:
    /// @param arguments what an `Environment` is made from
    template <class... Arguments>
    explicit WithHeldTransaction(Arguments&&... arguments)
        : Environment(std::forward<Arguments>(arguments)...),
          transaction_([this] { return Environment::CreateConnection(); }) {}

    std::unique_ptr<host::Connection> CreateConnection() override { return transaction_.CreateConnection(); }

    HeldTransaction& transaction() noexcept { return transaction_; }

private:
    HeldTransaction transaction_;
};

} // namespace importing
