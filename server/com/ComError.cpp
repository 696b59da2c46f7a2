#include "server/com/ComError.h"

#include "ModPub/RuntimeErrors.h"
#include "server/com/BString.h"
#include "server/com/ComPtr.h"
#include "server/com/RuntimeNumbers.h"
#include "server/com/Utf16.h"

#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace server {

namespace {

namespace en = host::error_number;

constexpr HRESULT controlBase = static_cast<HRESULT>(0x800A0000);
constexpr host::ErrorNumber lowWord = 0xFFFF;

/// The description of the thread's error information object, which is taken away; empty when there is none.
std::string TakeErrorDescription() {
    ComPtr<IErrorInfo> information;
    if (GetErrorInfo(0, information.Put()) != S_OK)
        return {};
    BString description;
    information->GetDescription(description.Put());
    return ToUtf8(description.View());
}

/// What the run-time says of an error of its own; empty for another number.
std::string_view RuntimeDescription(host::ErrorNumber number) noexcept {
    if (number == en::objectNotSet || number == en::invalidUseOfNull)
        return ModPub::RuntimeErrorDescription(number);
    return RuntimeNumberDescription(number);
}

host::Error ErrorOf(HRESULT result, std::string description) {
    const host::ErrorNumber number = ErrorNumberOf(result);
    if (description.empty())
        description = RuntimeDescription(number);
    if (description.empty())
        description = SystemDescription(result);
    if (description.empty())
        description = ModPub::RuntimeErrorDescription(number);
    return {number, std::move(description)};
}

} // namespace

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

host::ErrorNumber ErrorNumberOf(HRESULT result) noexcept {
    if (const std::optional<host::ErrorNumber> number = RuntimeNumberOf(result))
        return *number;
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
