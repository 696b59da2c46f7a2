#include "server/inproc/TypeLibrary.h"

#include "server/inproc/Module.h"

namespace server {

ComPtr<ITypeInfo> LoadTypeInfo(REFGUID id) {
    ComPtr<ITypeLib> library;
    ThrowIfFailed(LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, library.Put()));
    ComPtr<ITypeInfo> information;
    ThrowIfFailed(library->GetTypeInfoOfGuid(id, information.Put()));
    return information;
}

ComPtr<ITypeInfo> LoadDefaultInterface(REFCLSID classId) {
    const ComPtr<ITypeInfo> description = LoadTypeInfo(classId);
    HREFTYPE reference = 0;
    // Every class here has one interface.
    ThrowIfFailed(description->GetRefTypeOfImplType(0, &reference));
    ComPtr<ITypeInfo> information;
    ThrowIfFailed(description->GetRefTypeInfo(reference, information.Put()));
    return information;
}

} // namespace server
