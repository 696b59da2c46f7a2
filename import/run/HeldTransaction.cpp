#include "import/run/HeldTransaction.h"

#include "host/Error.h"

namespace importing {

namespace {

[[noreturn]] void Refuse(const char* message) { throw host::Error(host::error_number::unspecified, message); }

} // namespace

/// One connection as a class or a component sees it.
class HeldTransaction::Handle final : public host::ForwardingConnection {
public:
    explicit Handle(HeldTransaction& transaction)
        : ForwardingConnection(transaction.shared_), transaction_(transaction) {}
    ~Handle() override {
        if (!savepoint_.empty()) {
            try {
                RollbackTrans();
            } catch (const host::Error&) {
                // The server has ended the transaction, and everything in it.
            }
        }
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    void Open(const std::string& connectionString, const std::string&, const std::string&, int) override {
        if (open_) {
            throw host::Error(host::error_number::objectOpen, "Operation is not allowed when the object is open.");
        }
        transaction_.Open(connectionString);
        open_ = true;
    }

    void Execute(std::string_view commandText, int options) override {
        RequireOpen();
        inner().Execute(commandText, options);
    }

    void BeginTrans() override {
        RequireOpen();
        if (!savepoint_.empty()) {
            Refuse("Only one transaction can be active on this session.");
        }
        const std::string savepoint = "KovraTest" + std::to_string(++transaction_.savepoints_);
        inner().Execute("SAVE TRANSACTION " + savepoint, host::command_option::textNoRecords);
        savepoint_ = savepoint;
    }

    void CommitTrans() override {
        RequireTransaction();
        // Asked so that a transaction which the server has ended meanwhile is not taken for committed.
        inner().Execute("SAVE TRANSACTION " + savepoint_ + "End", host::command_option::textNoRecords);
        savepoint_.clear();
    }

    void RollbackTrans() override {
        RequireTransaction();
        const std::string savepoint = std::exchange(savepoint_, {});
        inner().Execute("ROLLBACK TRANSACTION " + savepoint, host::command_option::textNoRecords);
    }

private:
    void RequireOpen() const {
        if (!open_) {
            throw host::Error(host::error_number::objectClosed, "Operation is not allowed when the object is closed.");
        }
    }
    void RequireTransaction() const {
        RequireOpen();
        if (savepoint_.empty()) {
            Refuse("No transaction is active.");
        }
    }

    HeldTransaction& transaction_;
    bool open_ = false;
    /// Where its own transaction began; empty while it has none.
    std::string savepoint_;
};

HeldTransaction::HeldTransaction(std::function<std::unique_ptr<host::Connection>()> create)
    : create_(std::move(create)) {}

HeldTransaction::~HeldTransaction() {
    if (!connectionString_.empty()) {
        try {
            shared_->RollbackTrans();
        } catch (const host::Error&) {
            // A connection that is closed takes its transaction with it.
        }
    }
}

std::unique_ptr<host::Connection> HeldTransaction::CreateConnection() {
    if (!shared_) {
        shared_ = create_();
    }
    return std::make_unique<Handle>(*this);
}

void HeldTransaction::Open(const std::string& connectionString) {
    if (connectionString_.empty()) {
        shared_->Open(connectionString, "", "", host::command_option::unspecified);
        connectionString_ = connectionString;
        shared_->BeginTrans();
    } else if (connectionString_ != connectionString) {
        Refuse("A test run works in one database.");
    }
}

void HeldTransaction::TakeBack() {
    if (!connectionString_.empty()) {
        shared_->RollbackTrans();
        shared_->BeginTrans();
    }
}

bool HeldTransaction::Holds(host::Environment& environment) {
    if (connectionString_.empty()) {
        return true;
    }
    try {
        const std::unique_ptr<host::Recordset> count = environment.CreateRecordset();
        count->Open("SELECT @@TRANCOUNT AS transactions", *shared_, host::CursorType::openStatic,
                    host::LockType::readOnly, host::command_option::text);
        return !count->AtEOF() && count->FieldValue(0) != host::Value(0);
    } catch (const host::Error&) {
        return false;
    }
}

} // namespace importing
