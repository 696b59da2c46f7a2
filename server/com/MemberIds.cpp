#include "server/com/MemberIds.h"

#include "server/com/ComError.h"
#include "server/com/ComPtr.h"

#include <algorithm>

#include <dispex.h>

namespace server {

namespace {

bool IsExpandable(IDispatch& object) noexcept {
    ComPtr<IDispatchEx> expandable;
    return SUCCEEDED(object.QueryInterface(__uuidof(IDispatchEx), expandable.PutVoid()));
}

} // namespace

DISPID MemberIds::Of(IDispatch& object, const wchar_t* name) {
    // An object begins with the address of its functions (COM's binary standard).
    const void* const implementation = *reinterpret_cast<const void* const*>(&object);
    if (implementation != implementation_) {
        const bool expandable = IsExpandable(object);
        members_.clear();
        implementation_ = implementation;
        expandable_ = expandable;
    }
    const auto known = std::ranges::find(members_, std::wstring_view(name),
                                         [](const auto& member) { return std::wstring_view(member.first); });
    if (known != members_.end())
        return known->second;
    DISPID id = DISPID_UNKNOWN;
    ThrowIfFailed(LookUp(object, name, id));
    // Looking up may have brought a call that met objects of another type.
    if (implementation == implementation_ && !expandable_)
        members_.emplace_back(name, id);
    return id;
}

HRESULT LookUp(IDispatch& object, const wchar_t* name, DISPID& id) noexcept {
    // The parameter is not const for historical reasons; no object writes to it.
    auto* names = const_cast<wchar_t*>(name);
    return object.GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
}

} // namespace server
