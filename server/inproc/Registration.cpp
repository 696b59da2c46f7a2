#include "server/inproc/Registration.h"

#include "server/inproc/Module.h"

#include <string>

namespace server {

namespace {

#ifdef _WIN64
constexpr const wchar_t* platform = L"win64";
constexpr REGSAM otherSize = KEY_WOW64_32KEY;
#else
constexpr const wchar_t* platform = L"win32";
constexpr REGSAM otherSize = KEY_WOW64_64KEY;
#endif

HKEY Root(Scope scope) { return scope == Scope::machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER; }

std::wstring ClassesPath(const std::wstring& path) { return L"Software\\Classes\\" + path; }

std::wstring GuidText(const GUID& guid) {
    wchar_t text[40];
    const int length = StringFromGUID2(guid, text, static_cast<int>(std::size(text)));
    return {text, static_cast<std::size_t>(length) - 1};
}

void ThrowIfRefused(LSTATUS status) { ThrowIfFailed(HRESULT_FROM_WIN32(static_cast<unsigned long>(status))); }

/// Writes one value under the classes' key; `name` null is the key's default value.
void Write(Scope scope, const std::wstring& path, const wchar_t* name, const std::wstring& value) {
    ThrowIfRefused(RegSetKeyValueW(Root(scope), ClassesPath(path).c_str(), name, REG_SZ, value.c_str(),
                                   static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))));
}

/// Removes keys, and remembers the first that could not be removed.
class Removal {
public:
    explicit Removal(Scope scope) noexcept : scope_(scope) {}

    void Remove(const std::wstring& path) {
        const LSTATUS status = RegDeleteTreeW(Root(scope_), ClassesPath(path).c_str());
        if (first_ == ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND)
            first_ = status;
    }
    LSTATUS FirstFailure() const noexcept { return first_; }

private:
    Scope scope_;
    LSTATUS first_ = ERROR_SUCCESS;
};

std::wstring ClassPath(const ClassEntry& entry) { return L"CLSID\\" + GuidText(*entry.classId); }

/// Whether the library of the other size has registered the class too. To be asked when this one's key is gone: a
/// system of 32 bits has but one.
bool OtherSizeHas(const ClassEntry& entry, Scope scope) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(Root(scope), ClassesPath(ClassPath(entry)).c_str(), 0, KEY_READ | otherSize, &key) !=
        ERROR_SUCCESS)
        return false;
    RegCloseKey(key);
    return true;
}

void RegisterClass(const Registrant& registrant, const ClassEntry& entry, Scope scope, const std::wstring& file) {
    const std::wstring classPath = ClassPath(entry);
    Write(scope, entry.progId, nullptr, entry.progId);
    Write(scope, std::wstring(entry.progId) + L"\\CLSID", nullptr, GuidText(*entry.classId));
    Write(scope, classPath, nullptr, entry.progId);
    Write(scope, classPath + L"\\InprocServer32", nullptr, file);
    Write(scope, classPath + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    Write(scope, classPath + L"\\ProgID", nullptr, entry.progId);
    Write(scope, classPath + L"\\Programmable", nullptr, L"");
    if (registrant.typeLibrary)
        Write(scope, classPath + L"\\TypeLib", nullptr, GuidText(*registrant.typeLibrary));
}

std::wstring TypeLibraryPath(const Registrant& registrant) {
    return L"TypeLib\\" + GuidText(*registrant.typeLibrary) + L"\\" + registrant.typeLibraryVersion;
}
/// Where the file of this size stands, beside that of the other.
std::wstring TypeLibraryFilePath(const Registrant& registrant) {
    return TypeLibraryPath(registrant) + L"\\0\\" + platform;
}

void RegisterTypeLibrary(const Registrant& registrant, Scope scope, const std::wstring& file) {
    const std::wstring path = TypeLibraryPath(registrant);
    Write(scope, path, nullptr, registrant.typeLibraryName);
    Write(scope, TypeLibraryFilePath(registrant), nullptr, file);
    Write(scope, path + L"\\FLAGS", nullptr, L"0");
    Write(scope, path + L"\\HELPDIR", nullptr, file.substr(0, file.find_last_of(L'\\')));
}

std::wstring InterfacePath(const ClassEntry& entry) { return L"Interface\\" + GuidText(*entry.interfaceId); }

/// An interface is named after its class: `_ClsKovra` that of "Kovra.ClsKovra".
std::wstring InterfaceName(const ClassEntry& entry) {
    const std::wstring progId = entry.progId;
    return L"_" + progId.substr(progId.find(L'.') + 1);
}

void RegisterInterface(const Registrant& registrant, const ClassEntry& entry, Scope scope) {
    // OLE Automation's own marshaler.
    constexpr const wchar_t* marshaler = L"{00020424-0000-0000-C000-000000000046}";
    const std::wstring path = InterfacePath(entry);
    Write(scope, path, nullptr, InterfaceName(entry));
    Write(scope, path + L"\\ProxyStubClsid32", nullptr, marshaler);
    Write(scope, path + L"\\TypeLib", nullptr, GuidText(*registrant.typeLibrary));
    Write(scope, path + L"\\TypeLib", L"Version", registrant.typeLibraryVersion);
}

/// Takes away what `Register` writes. The libraries of both sizes share the classes' names and the type library's key:
/// what the other still needs stays. @return the first failure, or ERROR_SUCCESS
LSTATUS TakeAway(const Registrant& registrant, Scope scope) {
    Removal removal(scope);
    bool shared = false;
    for (const ClassEntry& entry : registrant.classes) {
        removal.Remove(ClassPath(entry));
        if (OtherSizeHas(entry, scope))
            shared = true;
        else
            removal.Remove(entry.progId);
    }
    for (const ClassEntry& entry : registrant.classes) {
        if (entry.interfaceId)
            removal.Remove(InterfacePath(entry));
    }
    if (registrant.typeLibrary)
        removal.Remove(shared ? TypeLibraryFilePath(registrant) : L"TypeLib\\" + GuidText(*registrant.typeLibrary));
    return removal.FirstFailure();
}

} // namespace

void Register(const Registrant& registrant, Scope scope) {
    const std::wstring file = ModulePath();
    try {
        for (const ClassEntry& entry : registrant.classes)
            RegisterClass(registrant, entry, scope, file);
        for (const ClassEntry& entry : registrant.classes) {
            if (entry.interfaceId)
                RegisterInterface(registrant, entry, scope);
        }
        if (registrant.typeLibrary)
            RegisterTypeLibrary(registrant, scope, file);
    } catch (...) {
        TakeAway(registrant, scope);
        throw;
    }
}

void Unregister(const Registrant& registrant, Scope scope) { ThrowIfRefused(TakeAway(registrant, scope)); }

} // namespace server
