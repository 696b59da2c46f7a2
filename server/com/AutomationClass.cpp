#include "server/com/AutomationClass.h"

#include "ModPub/RuntimeErrors.h"
#include "server/com/Changes.h"

namespace server {

DispatchObject AutomationClass::Create() {
    NoteChange();
    // Held here too: making an object may bring another call that makes one.
    ComPtr<IClassFactory> factory = factory_;
    HRESULT result = S_OK;
    if (!factory) {
        CLSID classId{};
        result = CLSIDFromProgID(progId_, &classId);
        if (SUCCEEDED(result))
            result = CoGetClassObject(classId, CLSCTX_SERVER, nullptr, IID_IClassFactory, factory.PutVoid());
    }
    ComPtr<IDispatch> object;
    if (SUCCEEDED(result))
        result = factory->CreateInstance(nullptr, IID_IDispatch, object.PutVoid());
    if (FAILED(result)) {
        factory_ = {};
        ForgetErrorObject();
        ModPub::RaiseRuntimeError(host::error_number::cannotCreateObject);
    }
    factory_ = std::move(factory);
    return DispatchObject(std::move(object), members_);
}

} // namespace server
