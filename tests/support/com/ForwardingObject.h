#pragma once

#include "server/com/ComPtr.h"
#include "server/com/UnknownObject.h"

#include <utility>

namespace test {

/// Stands in front of an automation object and does as that does: what those are made of that look on.
class ForwardingObject : public server::UnknownObject<IDispatch> {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        const HRESULT own = UnknownObject::QueryInterface(id, object);
        return own == E_NOINTERFACE ? object_->QueryInterface(id, object) : own;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return object_->GetTypeInfoCount(count); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** information) override {
        return object_->GetTypeInfo(index, locale, information);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
        return object_->GetIDsOfNames(id, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override {
        return object_->Invoke(member, id, locale, flags, parameters, result, exception, wrongArgument);
    }

protected:
    explicit ForwardingObject(server::ComPtr<IDispatch> object) : object_(std::move(object)) {}

private:
    server::ComPtr<IDispatch> object_;
};

} // namespace test
