#include "server/inproc/ClassFactory.h"

#include "server/com/UnknownObject.h"
#include "server/inproc/Module.h"

#include <new>

namespace server {

namespace {

class ClassFactory final : public UnknownObject<IClassFactory> {
public:
    explicit ClassFactory(const ClassEntry& entry) noexcept : entry_(entry) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        if (!object)
            return E_POINTER;
        *object = nullptr;
        if (outer)
            return CLASS_E_NOAGGREGATION;
        try {
            return entry_.create()->QueryInterface(id, object);
        } catch (...) {
            return SetErrorObject(CurrentError());
        }
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        ModuleReference::Lock(lock != FALSE);
        return S_OK;
    }

private:
    const ClassEntry& entry_;
    ModuleReference module_;
};

} // namespace

HRESULT GetClassFactory(const ClassEntry& entry, REFIID interfaceId, void** factory) noexcept {
    auto* made = new (std::nothrow) ClassFactory(entry);
    if (!made)
        return E_OUTOFMEMORY;
    const ComPtr<IClassFactory> held = ComPtr<IClassFactory>::Adopt(made);
    return held->QueryInterface(interfaceId, factory);
}

} // namespace server
