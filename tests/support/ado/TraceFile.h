#pragma once

#include "refhost/trace/HostCall.h"
#include "refhost/trace/Trace.h"

#include <memory>
#include <optional>

namespace test {

/// The trace in the file that the environment variable KOVRA_ADO_TRACE names, or nullptr when it names none. What is
/// there already stays; the file is closed when the last holder lets go.
std::shared_ptr<refhost::Trace> TraceFile();

/// Marks what is asked while it lives as asked by a host component, when one of KovraHost.dll is at work on this
/// thread.
class ComponentMark {
public:
    ComponentMark();

private:
    std::optional<refhost::HostCall> mark_;
};

} // namespace test
