// The entry points of an in-process server.
#include "server/inproc/Exports.h"

#include "server/inproc/Module.h"
#include "server/inproc/RunTime.h"

#include <algorithm>
#include <cwchar>
#include <string_view>

namespace {

template <class Action> HRESULT Attempt(const Action& action) noexcept {
    server::ForgetErrorObject();
    try {
        action();
        return S_OK;
    } catch (const server::RegistrationError& error) {
        server::SetErrorObject(host::Error(server::ErrorNumberOf(error.result), error.description));
        return error.result;
    } catch (...) {
        return server::SetErrorObject(server::CurrentError());
    }
}

HRESULT Install(server::Scope scope, server::ForeignNames foreign) noexcept {
    return Attempt([=] { server::Register(server::LibraryContents(), scope, foreign); });
}

HRESULT Uninstall(server::Scope scope) noexcept {
    return Attempt([=] { server::Unregister(server::LibraryContents(), scope); });
}

/// Whether `word` stands among the words of a command line, letter case ignored.
bool Says(const wchar_t* commandLine, std::wstring_view word) noexcept {
    constexpr std::wstring_view blanks = L" \t";
    std::wstring_view rest = commandLine ? commandLine : L"";
    while (!rest.empty()) {
        const std::wstring_view next = rest.substr(0, rest.find_first_of(blanks));
        if (next.size() == word.size() && _wcsnicmp(next.data(), word.data(), word.size()) == 0)
            return true;
        rest.remove_prefix(std::min(next.size() + 1, rest.size()));
    }
    return false;
}

} // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* processEnds) {
    if (reason == DLL_PROCESS_ATTACH)
        server::SetModuleHandle(instance);
    if (reason == DLL_PROCESS_DETACH && !processEnds)
        server::ReleaseRunTime();
    return TRUE;
}

HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** factory) {
    if (!factory)
        return E_POINTER;
    *factory = nullptr;
    for (const server::ClassEntry& entry : server::LibraryContents().classes) {
        if (*entry.classId == classId)
            return server::GetClassFactory(entry, interfaceId, factory);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT STDAPICALLTYPE DllCanUnloadNow() { return server::ModuleReference::CanUnload() ? S_OK : S_FALSE; }

HRESULT STDAPICALLTYPE DllRegisterServer() { return Install(server::Scope::machine, server::ForeignNames::leave); }

HRESULT STDAPICALLTYPE DllUnregisterServer() { return Uninstall(server::Scope::machine); }

/// The word "user" registers for the current user alone (`regsvr32 /n /i:user`), else for the machine. The word
/// "replace" takes names that another server holds.
HRESULT STDAPICALLTYPE DllInstall(BOOL install, const wchar_t* commandLine) {
    const auto scope = Says(commandLine, L"user") ? server::Scope::user : server::Scope::machine;
    if (!install)
        return Uninstall(scope);
    return Install(scope, Says(commandLine, L"replace") ? server::ForeignNames::replace : server::ForeignNames::leave);
}
}
