#pragma once

#include "ClsKovraProof/ClsKovraProof.h"
#include "refhost/eai/Login.h"
#include "refhost/trace/Trace.h"
#include "tests/support/FaultyEnvironment.h"
#include "tests/support/TestAccount.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace test {

/// What a test puts in place of a host component's operation; an empty one leaves the reference host's.
struct ComponentScript {
    using FillRecords = std::function<void(host::DOMDocument& records)>;

    FillRecords afterFillHead;
    FillRecords afterFillBody;
    std::function<bool(std::string& message)> voucherInit;
    std::function<bool(std::string_view voucherType, std::unique_ptr<host::Recordset>& found, std::string& message)>
        getDefaultTemplate;
    std::function<void(std::string_view voucherType, host::DOMDocument& head, host::DOMDocument& body,
                       std::string& message, host::DOMDocument& result)>
        saveVoucher;
    std::function<bool(std::string& message)> preCheck;
    std::function<void()> headToXml;
};

/// The reference host with faults and scripted components.
class ScriptedEnvironment : public FaultyEnvironment {
public:
    ScriptedEnvironment(const Faults& faults, const ComponentScript& script, refhost::Trace* trace)
        : FaultyEnvironment(faults, trace), script_(script) {}

    std::unique_ptr<host::EaiXmlConverter> CreateEaiXmlConverter() override;
    std::unique_ptr<host::IaVoucherService> CreateIaVoucherService() override;
    std::unique_ptr<host::ProvisionPreCheck> CreateProvisionPreCheck() override;

private:
    const ComponentScript& script_;
};

/// Runs the class on an account of its own and tells what it returned and asked of the database.
class ProofFixture : public testing::Test {
protected:
    struct Outcome {
        std::string result;
        /// What the class itself asked for after the connection was opened, as trace lines.
        std::vector<std::string> statements;
    };

    /// A request with these rows (elements `doc`).
    static std::string Request(std::string_view proc, std::string_view rows);
    /// One row; the type "48" stands in the header already.
    static std::string Doc(std::string_view number, std::string_view bodyRows, std::string_view moreHeader = {});
    /// The result document of `Request` with these items.
    static std::string Result(std::string_view proc, std::string_view items);
    static std::string Item(std::string_view key, int code, std::string_view description);

    Outcome Transact(std::string_view request);
    Outcome Transact(std::string_view request, host::HostLogin& login);
    /// Runs `use` on an instance whose connection `Transact` has opened.
    std::vector<std::string>
    WithOpenInstance(const std::function<void(kovra::ClsKovraProof&, host::Environment&)>& use);

    TestAccount account;
    std::string loginMore;
    Faults faults;
    ComponentScript script;

private:
    std::vector<std::string> Traced(const std::function<void(host::Environment&)>& run);
};

/// Trace lines, as they are written for an operation that succeeds.
std::string OpenLine(std::string_view sql, int cursor, int lock, int location);
std::string ExecuteLine(std::string_view sql);
std::string TransactionLine(std::string_view operation);
/// The line of the operation that fails with `number`.
std::string Failed(std::string line, int number);

/// Statements of every imported document, in order.
std::string NumberLookup(std::string_view number);
extern const std::string headTemplate;
extern const std::string bodyTemplate;

} // namespace test
