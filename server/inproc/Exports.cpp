// The entry points of an in-process server.
#include "server/inproc/Exports.h"

#include "server/inproc/Module.h"

#include <cwchar>

namespace {

HRESULT Attempt(void (*action)(const server::Registrant&, server::Scope), server::Scope scope) noexcept {
    try {
        action(server::LibraryContents(), scope);
        return S_OK;
    } catch (...) {
        return server::SetErrorObject(server::CurrentError());
    }
}

} // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH)
        server::SetModuleHandle(instance);
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

HRESULT STDAPICALLTYPE DllRegisterServer() { return Attempt(server::Register, server::Scope::machine); }

HRESULT STDAPICALLTYPE DllUnregisterServer() { return Attempt(server::Unregister, server::Scope::machine); }

/// "user" registers for the current user alone (`regsvr32 /n /i:user`), everything else for the machine.
HRESULT STDAPICALLTYPE DllInstall(BOOL install, const wchar_t* commandLine) {
    const bool user = commandLine && _wcsicmp(commandLine, L"user") == 0;
    return Attempt(install ? server::Register : server::Unregister,
                   user ? server::Scope::user : server::Scope::machine);
}
}
