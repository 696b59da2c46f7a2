#include "tests/support/com/ScriptedObject.h"

#include "server/com/UnknownObject.h"

#include <cwchar>

namespace test {

namespace {

using server::Arguments;
using server::ComPtr;
using server::VariantHolder;

/// Members of the object itself have these numbers; those of the object behind it begin elsewhere.
constexpr DISPID firstId = 0x4000'0000;

class ScriptedObject final : public server::UnknownObject<IDispatch> {
public:
    ScriptedObject(ScriptedMembers members, ComPtr<IDispatch> rest)
        : members_(std::move(members)), rest_(std::move(rest)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        const HRESULT own = UnknownObject::QueryInterface(id, object);
        return own == E_NOINTERFACE && rest_ ? rest_->QueryInterface(id, object) : own;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
        ids[0] = NumberOf(names[0]);
        if (ids[0] != DISPID_UNKNOWN)
            return S_OK;
        return rest_ ? rest_->GetIDsOfNames(id, names, count, locale, ids) : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override {
        if (member == DISPID_VALUE)
            member = NumberOf(L"");
        if (member < firstId && !rest_)
            return DISP_E_MEMBERNOTFOUND;
        if (member < firstId)
            return rest_->Invoke(member, id, locale, flags, parameters, result, exception, wrongArgument);
        try {
            VariantHolder value = members_[static_cast<std::size_t>(member - firstId)].second(Arguments(*parameters));
            if (result)
                value.DetachTo(result);
            return S_OK;
        } catch (...) {
            return server::AnswerException(exception);
        }
    }

private:
    DISPID NumberOf(const wchar_t* name) const {
        for (std::size_t i = 0; i < members_.size(); ++i) {
            if (_wcsicmp(name, members_[i].first.c_str()) == 0)
                return firstId + static_cast<DISPID>(i);
        }
        return DISPID_UNKNOWN;
    }

    ScriptedMembers members_;
    ComPtr<IDispatch> rest_;
};

class ScriptedFactory final : public server::UnknownObject<IClassFactory> {
public:
    explicit ScriptedFactory(std::function<ComPtr<IDispatch>()> create) : create_(std::move(create)) {}
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
        *object = nullptr;
        try {
            return create_()->QueryInterface(id, object);
        } catch (...) {
            return server::SetErrorObject(server::CurrentError());
        }
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    std::function<ComPtr<IDispatch>()> create_;
};

} // namespace

ComPtr<IDispatch> MakeObject(ScriptedMembers members, ComPtr<IDispatch> rest) {
    return ComPtr<IDispatch>::Adopt(new ScriptedObject(std::move(members), std::move(rest)));
}

ScriptedMember Returns(host::Value value) {
    return [value = std::move(value)](const Arguments&) { return VariantHolder(value); };
}

ScriptedMember Raises(host::ErrorNumber number, std::string description) {
    return [number, description = std::move(description)](const Arguments&) -> VariantHolder {
        throw host::Error(number, description);
    };
}

ReplacedClass::ReplacedClass(const wchar_t* progId, std::function<ComPtr<IDispatch>()> create) {
    CLSID classId{};
    server::ThrowIfFailed(CLSIDFromProgID(progId, &classId));
    server::ThrowIfFailed(
        CoGetClassObject(classId, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, original_.PutVoid()));
    const auto factory = ComPtr<IClassFactory>::Adopt(new ScriptedFactory(std::move(create)));
    server::ThrowIfFailed(
        CoRegisterClassObject(classId, factory.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registration_));
}

ReplacedClass::~ReplacedClass() { CoRevokeClassObject(registration_); }

ComPtr<IDispatch> ReplacedClass::Original() const {
    ComPtr<IDispatch> object;
    server::ThrowIfFailed(original_->CreateInstance(nullptr, IID_IDispatch, object.PutVoid()));
    return object;
}

} // namespace test
