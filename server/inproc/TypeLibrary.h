#pragma once

#include "server/com/ComPtr.h"
#include "server/com/Platform.h"

namespace server {

/// The description of a class or an interface in this library's embedded type library. Throws when it cannot be loaded.
ComPtr<ITypeInfo> LoadTypeInfo(REFGUID id);

/// The description of the default interface of a class. Throws when it cannot be loaded.
ComPtr<ITypeInfo> LoadDefaultInterface(REFCLSID classId);

} // namespace server
