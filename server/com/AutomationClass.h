#pragma once

#include "server/com/DispatchObject.h"

namespace server {

/// A class of automation objects, found by its name when the first object is made. What is known of one object's
/// members serves the others. Belongs to one apartment.
class AutomationClass {
public:
    /// @param progId a literal
    explicit AutomationClass(const wchar_t* progId) noexcept : progId_(progId) {}

    /// Throws error 429 when no object can be made; the class is found anew the next time.
    DispatchObject Create();

    /// An object that somebody else has made, most likely of this class.
    DispatchObject Known(ComPtr<IDispatch> object) const { return DispatchObject(std::move(object), members_); }

private:
    const wchar_t* progId_;
    ComPtr<IClassFactory> factory_;
    std::shared_ptr<MemberIds> members_ = std::make_shared<MemberIds>();
};

} // namespace server
