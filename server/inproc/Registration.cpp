#include "server/inproc/Registration.h"

#include "server/inproc/Module.h"

#include <string>

namespace server {

namespace {

#ifdef _WIN64
constexpr const wchar_t* platform = L"win64";
#else
constexpr const wchar_t* platform = L"win32";
#endif

HKEY Root(Scope scope) { return scope == Scope::machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER; }

std::wstring ClassesPath(const std::wstring& path) { return L"Software\\Classes\\" + path; }

std::wstring GuidText(const GUID& guid) {
    wchar_t text[40];
    const int length = StringFromGUID2(guid, text, static_cast<int>(std::size(text)));
    return {text, static_cast<std::size_t>(length) - 1};
}

/// Writes one value under the classes' key; `name` null is the key's default value.
void Write(Scope scope, const std::wstring& path, const wchar_t* name, const std::wstring& value) {
    const LSTATUS status = RegSetKeyValueW(Root(scope), ClassesPath(path).c_str(), name, REG_SZ, value.c_str(),
                                           static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    ThrowIfFailed(HRESULT_FROM_WIN32(static_cast<unsigned long>(status)));
}

void Remove(Scope scope, const std::wstring& path) { RegDeleteTreeW(Root(scope), ClassesPath(path).c_str()); }

void RegisterClass(const Registrant& registrant, const ClassEntry& entry, Scope scope, const std::wstring& file) {
    const std::wstring classId = GuidText(*entry.classId);
    const std::wstring classPath = L"CLSID\\" + classId;
    Write(scope, entry.progId, nullptr, entry.progId);
    Write(scope, std::wstring(entry.progId) + L"\\CLSID", nullptr, classId);
    Write(scope, classPath, nullptr, entry.progId);
    Write(scope, classPath + L"\\InprocServer32", nullptr, file);
    Write(scope, classPath + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    Write(scope, classPath + L"\\ProgID", nullptr, entry.progId);
    Write(scope, classPath + L"\\Programmable", nullptr, L"");
    if (registrant.typeLibrary)
        Write(scope, classPath + L"\\TypeLib", nullptr, GuidText(*registrant.typeLibrary));
}

void RegisterTypeLibrary(const Registrant& registrant, Scope scope, const std::wstring& file) {
    const std::wstring path = L"TypeLib\\" + GuidText(*registrant.typeLibrary) + L"\\" + registrant.typeLibraryVersion;
    Write(scope, path, nullptr, registrant.typeLibraryName);
    Write(scope, path + L"\\0\\" + platform, nullptr, file);
    Write(scope, path + L"\\FLAGS", nullptr, L"0");
    Write(scope, path + L"\\HELPDIR", nullptr, file.substr(0, file.find_last_of(L'\\')));
}

void RegisterInterface(const Registrant& registrant, const InterfaceEntry& entry, Scope scope) {
    // OLE Automation's own marshaler.
    constexpr const wchar_t* marshaler = L"{00020424-0000-0000-C000-000000000046}";
    const std::wstring path = L"Interface\\" + GuidText(*entry.interfaceId);
    Write(scope, path, nullptr, entry.name);
    Write(scope, path + L"\\ProxyStubClsid32", nullptr, marshaler);
    Write(scope, path + L"\\TypeLib", nullptr, GuidText(*registrant.typeLibrary));
    Write(scope, path + L"\\TypeLib", L"Version", registrant.typeLibraryVersion);
}

} // namespace

void Register(const Registrant& registrant, Scope scope) {
    const std::wstring file = ModulePath();
    try {
        for (const ClassEntry& entry : registrant.classes)
            RegisterClass(registrant, entry, scope, file);
        for (const InterfaceEntry& entry : registrant.interfaces)
            RegisterInterface(registrant, entry, scope);
        if (registrant.typeLibrary)
            RegisterTypeLibrary(registrant, scope, file);
    } catch (...) {
        Unregister(registrant, scope);
        throw;
    }
}

void Unregister(const Registrant& registrant, Scope scope) {
    for (const ClassEntry& entry : registrant.classes) {
        Remove(scope, entry.progId);
        Remove(scope, L"CLSID\\" + GuidText(*entry.classId));
    }
    for (const InterfaceEntry& entry : registrant.interfaces)
        Remove(scope, L"Interface\\" + GuidText(*entry.interfaceId));
    if (registrant.typeLibrary)
        Remove(scope, L"TypeLib\\" + GuidText(*registrant.typeLibrary));
}

} // namespace server
