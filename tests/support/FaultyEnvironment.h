#pragma once

#include "tests/support/WatchedHost.h"

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

/// The reference host with faults. Statements fail below its connections, so that a trace notes them.
class FaultyEnvironment : public WatchedEnvironment {
public:
    explicit FaultyEnvironment(Faults faults, refhost::Trace* trace = nullptr);

private:
    FaultyEnvironment(const std::shared_ptr<const Faults>& faults, refhost::Trace* trace);
};

} // namespace test
