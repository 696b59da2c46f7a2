#pragma once

#include "refhost/Environment.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace test {

/// The places where a test makes an operation of the outside fail: each hook runs before the operation and fails it
/// by throwing. An empty hook does nothing.
struct Faults {
    /// Before each statement, of a class or of a host component.
    std::function<void(std::string_view sql)> statement = {};
    /// Before "BeginTrans", "CommitTrans", "RollbackTrans".
    std::function<void(std::string_view operation)> transaction = {};
    /// Before each operation of `EaiHelper`, by its name.
    std::function<void(std::string_view operation)> eaiHelper = {};
    /// Before a document is created.
    std::function<void()> document = {};
};

/// The reference host with faults.
class FaultyEnvironment : public refhost::Environment {
public:
    explicit FaultyEnvironment(Faults faults, refhost::Trace* trace = nullptr);
    ~FaultyEnvironment() override;

    std::unique_ptr<host::DOMDocument> CreateDOMDocument() override;
    host::EaiHelper& GetEaiHelper() override;

private:
    std::shared_ptr<const Faults> faults_;
    std::unique_ptr<host::EaiHelper> eaiHelper_;

    FaultyEnvironment(std::shared_ptr<const Faults> faults, refhost::Trace* trace);
};

} // namespace test
