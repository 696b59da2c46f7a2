#include "server/TypeLibrary.h"

#include "server/inproc/Module.h"

namespace server {

ComPtr<ITypeInfo> LoadTypeInfo(REFIID interfaceId) {
    ComPtr<ITypeLib> library;
    ThrowIfFailed(LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, library.Put()));
    ComPtr<ITypeInfo> information;
    ThrowIfFailed(library->GetTypeInfoOfGuid(interfaceId, information.Put()));
    return information;
}

} // namespace server
