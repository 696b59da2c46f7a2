#pragma once

#include "server/com/ComPtr.h"
#include "server/com/Platform.h"

namespace server {

/// The description of an interface in this library's embedded type library. Throws when it cannot be loaded.
ComPtr<ITypeInfo> LoadTypeInfo(REFIID interfaceId);

} // namespace server
