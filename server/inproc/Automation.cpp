#include "server/inproc/Automation.h"

#include "server/com/BString.h"
#include "server/com/Utf16.h"

#include <algorithm>
#include <cwchar>

namespace server {

const VARIANT* Arguments::Find(std::size_t index) const noexcept {
    // The named ones come first; behind them the others, the last one first.
    const std::size_t named = std::min(parameters_.cNamedArgs, parameters_.cArgs);
    const std::size_t positional = count() - named;
    if (index < positional)
        return &parameters_.rgvarg[count() - 1 - index];
    for (std::size_t i = 0; i < named; ++i) {
        const DISPID name = parameters_.rgdispidNamedArgs[i];
        // The new value of a property has a name of its own.
        if (name == DISPID_PROPERTYPUT ? index == positional : name >= 0 && static_cast<std::size_t>(name) == index)
            return &parameters_.rgvarg[i];
    }
    return nullptr;
}

bool Arguments::Has(std::size_t index) const noexcept {
    const VARIANT* argument = Find(index);
    if (!argument)
        return false;
    if (V_VT(argument) == (VT_BYREF | VT_VARIANT))
        argument = V_VARIANTREF(argument);
    return V_VT(argument) != VT_ERROR || V_ERROR(argument) != DISP_E_PARAMNOTFOUND;
}

void Arguments::Return(std::size_t index, const VariantHolder& value) const {
    VARIANT argument = (*this)[index];
    VARIANT source = value.Get();
    if (V_VT(&argument) == (VT_BYREF | VT_VARIANT)) {
        VARIANT* target = V_VARIANTREF(&argument);
        if (!(V_VT(target) & VT_BYREF)) {
            ThrowIfFailed(VariantCopy(target, &source));
            return;
        }
        argument = *target;
    }
    if (!(V_VT(&argument) & VT_BYREF))
        return;
    const auto type = static_cast<VARTYPE>(V_VT(&argument) & ~VT_BYREF);
    VariantHolder converted;
    ThrowIfFailed(VariantChangeType(converted.Put(), &source, 0, type));
    VARIANT content{};
    converted.DetachTo(&content);
    switch (type) {
    case VT_BSTR:
        BString::Adopt(*V_BSTRREF(&argument));
        *V_BSTRREF(&argument) = V_BSTR(&content);
        break;
    case VT_DISPATCH:
        ComPtr<IDispatch>::Adopt(*V_DISPATCHREF(&argument));
        *V_DISPATCHREF(&argument) = V_DISPATCH(&content);
        break;
    case VT_BOOL:
        *V_BOOLREF(&argument) = V_BOOL(&content);
        break;
    case VT_I2:
        *V_I2REF(&argument) = V_I2(&content);
        break;
    case VT_I4:
        *V_I4REF(&argument) = V_I4(&content);
        break;
    case VT_R8:
        *V_R8REF(&argument) = V_R8(&content);
        break;
    case VT_DATE:
        *V_DATEREF(&argument) = V_DATE(&content);
        break;
    default:
        VariantClear(&content);
        RaiseTypeMismatch();
    }
}

int FindName(const wchar_t* name, const wchar_t* const* names, std::size_t stride, std::size_t count) noexcept {
    const auto* at = reinterpret_cast<const std::byte*>(names);
    for (std::size_t i = 0; i < count; ++i, at += stride) {
        if (_wcsicmp(name, *reinterpret_cast<const wchar_t* const*>(at)) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

HRESULT CheckNamedArguments(const DISPPARAMS& parameters, WORD flags, std::size_t parameterCount,
                            UINT* wrong) noexcept {
    if (parameters.cNamedArgs > parameters.cArgs)
        return DISP_E_BADPARAMCOUNT;
    const DISPID positional = static_cast<DISPID>(parameters.cArgs - parameters.cNamedArgs);
    const DISPID* const names = parameters.rgdispidNamedArgs;
    for (UINT i = 0; i < parameters.cNamedArgs; ++i) {
        const bool newValue =
            names[i] == DISPID_PROPERTYPUT && i == 0 && (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
        const bool known = names[i] >= positional && static_cast<std::size_t>(names[i]) < parameterCount;
        if (!newValue && (!known || std::find(names, names + i, names[i]) != names + i)) {
            if (wrong)
                *wrong = i;
            return DISP_E_PARAMNOTFOUND;
        }
    }
    return S_OK;
}

HRESULT AnswerException(EXCEPINFO* exception) noexcept {
    const host::Error error = CurrentError();
    if (!exception)
        return SetErrorObject(error);
    *exception = {};
    exception->scode = HresultOf(error.number());
    try {
        exception->bstrSource = BString(L"Kovra").Detach();
        exception->bstrDescription = BString(ToUtf16(error.description())).Detach();
    } catch (const std::bad_alloc&) {
        // Without memory for the texts the number alone has to do.
    }
    return DISP_E_EXCEPTION;
}

} // namespace server
