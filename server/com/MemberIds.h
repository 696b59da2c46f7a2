#pragma once

#include "server/com/Platform.h"

#include <string>
#include <utility>
#include <vector>

namespace server {

/// The numbers by which the members of one type of automation objects are called, each looked up once. They stay what
/// they are while an object lives, and objects that one class has made have the same. Objects that are implemented
/// differently from the latest one are of another type, whatever made them: their members are looked up anew. Objects
/// that can be given members while they live (`IDispatchEx`, as scripts' have it) number them each for itself: theirs
/// are looked up every time.
///
/// Belongs to the apartment of its objects; nothing is locked.
class MemberIds {
public:
    /// The number of `object`'s member `name`. Throws error 438 for a member that it lacks, which is asked for again.
    DISPID Of(IDispatch& object, const wchar_t* name);

private:
    /// The functions of the latest object.
    const void* implementation_ = nullptr;
    bool expandable_ = false;
    std::vector<std::pair<std::wstring, DISPID>> members_;
};

/// Asks `object` for the number of its member `name`.
HRESULT LookUp(IDispatch& object, const wchar_t* name, DISPID& id) noexcept;

} // namespace server
