#pragma once

#include "refhost/Environment.h"
#include "refhost/OpenDatabase.h"
#include "refhost/trace/Traced.h"

#include <functional>
#include <memory>
#include <string_view>

namespace test {

/// One operation that somebody asks of the host.
struct HostOperation {
    /// `database` is everything on a connection or recordset, `creation` the making of an object, `helper` what is
    /// asked of the integration helper, `component` what is asked of the login and of every other object of the host.
    enum class Kind { database, creation, helper, component };

    Kind kind;
    /// The member's name: "Open", "FieldValue", "AddResultItem"; of a creation the name of what is created.
    std::string_view name;
    /// The statement (of a recordset's member the one it was opened on), or what else tells the operation from others.
    std::string_view text = {};
    /// Number of the connection that it works on, counted from 1 in the order of creation; 0 for none.
    int connection = 0;
    /// Number of the recordset, counted likewise.
    int recordset = 0;
    /// Whether a host component asks in the course of an operation of its own.
    bool inside = false;
};

/// Sees each operation before it runs, and fails it by throwing.
using BeforeOperation = std::function<void(const HostOperation& operation)>;

/// Numbers what is created and knows which operations run inside others.
class HostWatch {
public:
    explicit HostWatch(BeforeOperation before) : before_(std::move(before)) {}

    void Notice(HostOperation operation) {
        operation.inside = depth_ > 0;
        before_(operation);
    }
    int NextConnection() { return ++connections_; }
    int NextRecordset() { return ++recordsets_; }

    /// Lives as long as an operation of a component runs.
    class Inside {
    public:
        explicit Inside(HostWatch& watch) : watch_(watch) { ++watch_.depth_; }
        ~Inside() { --watch_.depth_; }
        Inside(const Inside&) = delete;
        Inside& operator=(const Inside&) = delete;

    private:
        HostWatch& watch_;
    };

private:
    BeforeOperation before_;
    int depth_ = 0;
    int connections_ = 0;
    int recordsets_ = 0;
};

/// The reference host, every operation of which is seen before it runs.
class WatchedEnvironment : public refhost::Traced<refhost::Environment> {
public:
    /// @param opener how its connections open their databases
    /// @param trace where to note what is asked of the databases, or nullptr; it outlives everything created here
    explicit WatchedEnvironment(BeforeOperation before, refhost::DatabaseOpener opener = refhost::OpenExisting(),
                                refhost::Trace* trace = nullptr);
    ~WatchedEnvironment() override;

    /// A login whose operations are seen too. `login` and the environment outlive it.
    std::unique_ptr<host::HostLogin> Watch(host::HostLogin& login);

    std::unique_ptr<host::DOMDocument> CreateDOMDocument() override;
    std::unique_ptr<host::Connection> CreateConnection() override;
    std::unique_ptr<host::Recordset> CreateRecordset() override;
    host::EaiHelper& GetEaiHelper() override;
    host::RsXmlHelper& GetRsXmlHelper() override;
    std::unique_ptr<host::EaiXmlConverter> CreateEaiXmlConverter() override;
    std::unique_ptr<host::IaVoucherService> CreateIaVoucherService() override;
    std::unique_ptr<host::ProvisionPreCheck> CreateProvisionPreCheck() override;
    std::unique_ptr<host::ZendaT> CreateZendaT() override;
    void ShowMessage(std::string_view text) override;

private:
    HostWatch watch_;
    std::unique_ptr<host::EaiHelper> eaiHelper_;
    std::unique_ptr<host::RsXmlHelper> rsXmlHelper_;
};

} // namespace test
