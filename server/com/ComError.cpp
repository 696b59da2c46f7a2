#include "server/com/ComError.h"

#include "ModPub/RuntimeErrors.h"
#include "server/com/BString.h"
#include "server/com/ComPtr.h"
#include "server/com/Utf16.h"

#include <new>
#include <string>
#include <utility>

namespace server {

namespace {

namespace en = host::error_number;

constexpr std::pair<HRESULT, host::ErrorNumber> runtimeNumbers[] = {
    {DISP_E_UNKNOWNNAME, en::noSuchMember},
    {DISP_E_MEMBERNOTFOUND, en::noSuchMember},
    {DISP_E_TYPEMISMATCH, en::typeMismatch},
    {E_NOINTERFACE, en::typeMismatch},
    {DISP_E_OVERFLOW, en::overflow},
    {E_OUTOFMEMORY, en::outOfMemory},
    {REGDB_E_CLASSNOTREG, en::cannotCreateObject},
    {CO_E_CLASSSTRING, en::cannotCreateObject},
    {CLASS_E_CLASSNOTAVAILABLE, en::cannotCreateObject},
    {CO_E_DLLNOTFOUND, en::cannotCreateObject},
};

constexpr HRESULT controlBase = static_cast<HRESULT>(0x800A0000);
constexpr host::ErrorNumber lowWord = 0xFFFF;

bool IsRuntimeNumber(host::ErrorNumber number) {
    for (const auto& [result, known] : runtimeNumbers) {
        if (known == number)
            return true;
    }
    return number == en::invalidCall || number == en::objectNotSet || number == en::invalidUseOfNull;
}

/// The description of the thread's error information object, which is taken away; empty when there is none.
std::string TakeErrorDescription() {
    ComPtr<IErrorInfo> information;
    if (GetErrorInfo(0, information.Put()) != S_OK)
        return {};
    BString description;
    information->GetDescription(description.Put());
    return ToUtf8(description.View());
}

std::string SystemDescription(HRESULT result) {
    wchar_t* text = nullptr;
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                       nullptr, static_cast<DWORD>(result), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring_view view(text ? text : L"", length);
    while (view.ends_with(L'\n') || view.ends_with(L'\r'))
        view.remove_suffix(1);
    std::string description = ToUtf8(view);
    LocalFree(text);
    return description;
}

host::Error ErrorOf(HRESULT result, std::string description) {
    const host::ErrorNumber number = ErrorNumberOf(result);
    if (description.empty() && !IsRuntimeNumber(number))
        description = SystemDescription(result);
    if (description.empty())
        description = ModPub::RuntimeErrorDescription(number);
    return {number, std::move(description)};
}

} // namespace

host::ErrorNumber ErrorNumberOf(HRESULT result) noexcept {
    for (const auto& [known, number] : runtimeNumbers) {
        if (known == result)
            return number;
    }
    return HRESULT_FACILITY(result) == FACILITY_CONTROL ? result & lowWord : static_cast<host::ErrorNumber>(result);
}

HRESULT HresultOf(host::ErrorNumber number) noexcept {
    return number >= 0 && number <= lowWord ? controlBase | number : static_cast<HRESULT>(number);
}

void ThrowIfFailed(HRESULT result) {
    if (FAILED(result))
        throw ErrorOf(result, TakeErrorDescription());
}

void ThrowException(EXCEPINFO& exception) {
    if (exception.pfnDeferredFillIn)
        exception.pfnDeferredFillIn(&exception);
    ForgetErrorObject();
    const BString source = BString::Adopt(exception.bstrSource);
    const BString description = BString::Adopt(exception.bstrDescription);
    const BString help = BString::Adopt(exception.bstrHelpFile);
    HRESULT result = exception.wCode != 0 ? HresultOf(exception.wCode) : exception.scode;
    // An object that does not say which error it raised failed all the same.
    if (SUCCEEDED(result))
        result = DISP_E_EXCEPTION;
    throw ErrorOf(result, ToUtf8(description.View()));
}

void RaiseObjectNotSet() { ModPub::RaiseRuntimeError(en::objectNotSet); }

void RaiseTypeMismatch() { ModPub::RaiseRuntimeError(en::typeMismatch); }

void ForgetErrorObject() noexcept { SetErrorInfo(0, nullptr); }

HRESULT SetErrorObject(const host::Error& error) noexcept {
    try {
        ComPtr<ICreateErrorInfo> create;
        ThrowIfFailed(CreateErrorInfo(create.Put()));
        BString description(ToUtf16(error.description()));
        BString source(L"Kovra");
        create->SetDescription(description.Get());
        create->SetSource(source.Get());
        SetErrorInfo(0, create.As<IErrorInfo>().Get());
    } catch (...) {
        // Without memory for the description the number alone has to do.
    }
    return HresultOf(error.number());
}

host::Error CurrentError() noexcept {
    try {
        throw;
    } catch (const host::Error& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return {en::outOfMemory, {}};
    } catch (const std::exception& error) {
        return {en::unspecified, error.what()};
    } catch (...) {
        return {en::unspecified, {}};
    }
}

} // namespace server
