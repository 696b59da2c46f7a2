#pragma once

#include "server/com/ComPtr.h"

#include <map>
#include <string>

namespace test {

/// What was asked of automation objects, by "Type.Member".
struct CallCounts {
    std::map<std::wstring, int> lookUps;
    std::map<std::wstring, int> calls;
    /// Calls of components that have not returned yet.
    int withinComponents = 0;
};

/// Stands in front of `object` and counts into `counts`, which outlives it. The objects that a member hands out are
/// counted as of a type with the member's name.
server::ComPtr<IDispatch> Counted(server::ComPtr<IDispatch> object, std::wstring type, CallCounts& counts);

/// The same of a component that works on counted objects itself: what it asks of them, and of other components, is not
/// counted, and what it hands out is not counted by being handed out.
server::ComPtr<IDispatch> CountedComponent(server::ComPtr<IDispatch> object, std::wstring type, CallCounts& counts);

} // namespace test
