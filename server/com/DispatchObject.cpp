#include "server/com/DispatchObject.h"

#include "server/com/AutomationClass.h"
#include "server/com/Changes.h"

#include <exception>

namespace server {

namespace {

/// Throws when a call failed. Whether it did or not, no error object of its own stays behind to describe a later one.
void EndCall(HRESULT status, EXCEPINFO& exception) {
    NoteChange();
    if (status == DISP_E_EXCEPTION)
        ThrowException(exception);
    ThrowIfFailed(status);
    ForgetErrorObject();
}

} // namespace

DispatchObject DispatchObject::Create(const wchar_t* progId) { return AutomationClass(progId).Create(); }

bool DispatchObject::Offers(const wchar_t* member) const noexcept {
    DISPID id = DISPID_UNKNOWN;
    const bool offered = object_ && SUCCEEDED(LookUp(*object_.Get(), member, id));
    ForgetErrorObject();
    return offered;
}

DISPID DispatchObject::Id(const wchar_t* name) const {
    if (!object_)
        RaiseObjectNotSet();
    if (!members_)
        members_ = std::make_shared<MemberIds>();
    const std::shared_ptr<MemberIds> members = members_;
    return members->Of(*object_.Get(), name);
}

VariantHolder DispatchObject::Invoke(const wchar_t* name, WORD flags, VARIANT* reversed, std::size_t count) const {
    // Held here too: the call may bring another one that puts a new object in this place.
    const ComPtr<IDispatch> object = object_;
    NoteChange();
    const DISPID id = Id(name);
    DISPPARAMS parameters{reversed, nullptr, static_cast<UINT>(count), 0};
    VariantHolder result;
    EXCEPINFO exception{};
    const HRESULT status =
        object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result.Put(), &exception, nullptr);
    EndCall(status, exception);
    return result;
}

VariantHolder DispatchObject::CallWith(const wchar_t* name, VARIANT* reversed, std::size_t count,
                                       std::span<Reference* const> references) const {
    VariantHolder result;
    std::exception_ptr failure;
    const auto attempt = [&failure](auto&& action) {
        try {
            action();
        } catch (...) {
            if (!failure)
                failure = std::current_exception();
        }
    };
    attempt([&] { result = Invoke(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, reversed, count); });
    for (Reference* const reference : references)
        attempt([&] { reference->TakeBack(); });
    if (failure)
        std::rethrow_exception(failure);
    return result;
}

void DispatchObject::Put(const wchar_t* name, const VariantHolder& value) const {
    const ComPtr<IDispatch> object = object_;
    NoteChange();
    const DISPID id = Id(name);
    VARIANT argument = value.Get();
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{&argument, &put, 1, 1};
    EXCEPINFO exception{};
    const HRESULT status = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters, nullptr,
                                          &exception, nullptr);
    EndCall(status, exception);
}

} // namespace server
