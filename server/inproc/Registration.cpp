#include "server/inproc/Registration.h"

#include "server/com/Utf16.h"
#include "server/inproc/Module.h"

#include <iterator>
#include <optional>
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

/// Beside a replaced name's class: the class that the name stood for.
constexpr const wchar_t* replacedClass = L"Replaced";

std::wstring GuidText(const GUID& guid) {
    wchar_t text[40];
    const int length = StringFromGUID2(guid, text, static_cast<int>(std::size(text)));
    return {text, static_cast<std::size_t>(length) - 1};
}

/// Identifiers and paths are the same in every letter case.
bool Same(const std::wstring& a, const std::wstring& b) noexcept {
    return CompareStringOrdinal(a.c_str(), -1, b.c_str(), -1, TRUE) == CSTR_EQUAL;
}

std::wstring ClassPath(const ClassEntry& entry) { return L"CLSID\\" + GuidText(*entry.classId); }
std::wstring NamedClassPath(const ClassEntry& entry) { return std::wstring(entry.progId) + L"\\CLSID"; }
std::wstring ServerPath(const ClassEntry& entry) { return ClassPath(entry) + L"\\InprocServer32"; }
std::wstring InterfacePath(const ClassEntry& entry) { return L"Interface\\" + GuidText(*entry.interfaceId); }
std::wstring ApplicationPath(const Registrant& registrant) { return L"AppID\\" + GuidText(*registrant.application); }
std::wstring TypeLibraryPath(const Registrant& registrant) { return L"TypeLib\\" + GuidText(*registrant.typeLibrary); }
std::wstring VersionPath(const Registrant& registrant) {
    return TypeLibraryPath(registrant) + L"\\" + registrant.typeLibraryVersion;
}
/// Where the type library's file of this size stands, beside that of the other.
std::wstring FilePath(const Registrant& registrant) { return VersionPath(registrant) + L"\\0\\" + platform; }

/// The class that a name stands for when it is another server's; empty when it is not.
std::wstring ForeignClass(const ClassesRegistry& registry, const ClassEntry& entry) {
    std::wstring named = registry.Read(NamedClassPath(entry));
    return Same(named, GuidText(*entry.classId)) ? std::wstring() : named;
}

void RefuseForeignName(const ClassEntry& entry, Scope scope) {
    // What the user registers hides what the machine has.
    for (const Scope held : {scope, Scope::machine}) {
        if (const std::wstring foreign = ForeignClass(ClassesRegistry(held), entry); !foreign.empty()) {
            throw RegistrationError{HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS),
                                    ToUtf8(entry.progId) + "已由另一组件" + ToUtf8(foreign) +
                                        "占用；要替换它，请用 regsvr32 /n /i:replace 注册。"};
        }
    }
}

void RegisterName(ClassesRegistry& registry, const ClassEntry& entry) {
    if (const std::wstring foreign = ForeignClass(registry, entry); !foreign.empty())
        registry.Write(NamedClassPath(entry), replacedClass, foreign);
    else
        registry.Write(entry.progId, nullptr, entry.progId);
    registry.Write(NamedClassPath(entry), nullptr, GuidText(*entry.classId));
}

void RegisterClass(ClassesRegistry& registry, const Registrant& registrant, const ClassEntry& entry,
                   const std::wstring& file) {
    const std::wstring path = ClassPath(entry);
    registry.Write(path, nullptr, entry.progId);
    registry.Write(ServerPath(entry), nullptr, file);
    registry.Write(ServerPath(entry), L"ThreadingModel", L"Apartment");
    registry.Write(path + L"\\ProgID", nullptr, entry.progId);
    registry.Write(path + L"\\Programmable", nullptr, L"");
    if (registrant.typeLibrary)
        registry.Write(path + L"\\TypeLib", nullptr, GuidText(*registrant.typeLibrary));
    if (registrant.application)
        registry.Write(path, L"AppID", GuidText(*registrant.application));
}

/// An interface is named after its class: `_ClsKovra` that of "Kovra.ClsKovra".
std::wstring InterfaceName(const ClassEntry& entry) {
    const std::wstring progId = entry.progId;
    return L"_" + progId.substr(progId.find(L'.') + 1);
}

void RegisterInterface(ClassesRegistry& registry, const Registrant& registrant, const ClassEntry& entry) {
    // OLE Automation's own marshaler.
    constexpr const wchar_t* marshaler = L"{00020424-0000-0000-C000-000000000046}";
    const std::wstring path = InterfacePath(entry);
    registry.Write(path, nullptr, InterfaceName(entry));
    registry.Write(path + L"\\ProxyStubClsid32", nullptr, marshaler);
    registry.Write(path + L"\\TypeLib", nullptr, GuidText(*registrant.typeLibrary));
    registry.Write(path + L"\\TypeLib", L"Version", registrant.typeLibraryVersion);
}

void RegisterTypeLibrary(ClassesRegistry& registry, const Registrant& registrant, const std::wstring& file) {
    const std::wstring path = VersionPath(registrant);
    registry.Write(path, nullptr, registrant.typeLibraryName);
    registry.Write(FilePath(registrant), nullptr, file);
    registry.Write(path + L"\\FLAGS", nullptr, L"0");
    registry.Write(path + L"\\HELPDIR", nullptr, file.substr(0, file.find_last_of(L'\\')));
}

/// An empty surrogate is the system's own.
void RegisterApplication(ClassesRegistry& registry, const Registrant& registrant) {
    registry.Write(ApplicationPath(registrant), nullptr, registrant.typeLibraryName);
    registry.Write(ApplicationPath(registrant), L"DllSurrogate", L"");
}

void UnregisterName(ClassesRegistry& registry, const ClassEntry& entry) {
    if (!ForeignClass(registry, entry).empty())
        return;
    if (const std::wstring former = registry.Read(NamedClassPath(entry), replacedClass); !former.empty()) {
        registry.Write(NamedClassPath(entry), nullptr, former);
        registry.RemoveValue(NamedClassPath(entry), replacedClass);
    } else {
        registry.RemoveKey(entry.progId);
    }
}

/// Takes the class away where it names `file`. @return whether it is registered still, by another file or by the
/// library of the other size
bool UnregisterClass(ClassesRegistry& registry, const ClassEntry& entry, const std::wstring& file) {
    const std::wstring path = ClassPath(entry);
    if (Same(registry.Read(ServerPath(entry)), file))
        registry.RemoveKey(path);
    // A system of 32 bits has but one size.
    if (registry.Exists(path) || registry.Exists(path, otherSize))
        return true;
    UnregisterName(registry, entry);
    return false;
}

void UnregisterTypeLibrary(ClassesRegistry& registry, const Registrant& registrant, const std::wstring& file) {
    if (Same(registry.Read(FilePath(registrant)), file))
        registry.RemoveKey(FilePath(registrant));
    if (registry.HasKeys(VersionPath(registrant) + L"\\0"))
        return;
    registry.RemoveKey(VersionPath(registrant));
    if (!registry.HasKeys(TypeLibraryPath(registrant)))
        registry.RemoveKey(TypeLibraryPath(registrant));
}

/// An interface goes with the last file that describes it to this size.
void UnregisterInterface(ClassesRegistry& registry, const Registrant& registrant, const ClassEntry& entry) {
    const std::wstring described = InterfacePath(entry) + L"\\TypeLib";
    if (!registry.Exists(FilePath(registrant)) && Same(registry.Read(described), GuidText(*registrant.typeLibrary)) &&
        registry.Read(described, L"Version") == registrant.typeLibraryVersion)
        registry.RemoveKey(InterfacePath(entry));
}

} // namespace

void Register(const Registrant& registrant, Scope scope, ForeignNames foreign) {
    const std::wstring file = ModulePath();
    if (foreign == ForeignNames::leave) {
        for (const ClassEntry& entry : registrant.classes)
            RefuseForeignName(entry, scope);
    }
    ClassesRegistry registry(scope);
    try {
        for (const ClassEntry& entry : registrant.classes) {
            RegisterName(registry, entry);
            RegisterClass(registry, registrant, entry, file);
            if (entry.interfaceId)
                RegisterInterface(registry, registrant, entry);
        }
        if (registrant.typeLibrary)
            RegisterTypeLibrary(registry, registrant, file);
        if (registrant.application)
            RegisterApplication(registry, registrant);
    } catch (...) {
        registry.GiveBack();
        throw;
    }
}

void Unregister(const Registrant& registrant, Scope scope) {
    const std::wstring file = ModulePath();
    ClassesRegistry registry(scope);
    std::optional<RegistrationError> first;
    const auto attempt = [&first](auto&& action) {
        try {
            action();
        } catch (const RegistrationError& error) {
            if (!first)
                first = error;
        }
    };
    bool used = false;
    for (const ClassEntry& entry : registrant.classes)
        attempt([&] { used = UnregisterClass(registry, entry, file) || used; });
    if (registrant.typeLibrary)
        attempt([&] { UnregisterTypeLibrary(registry, registrant, file); });
    for (const ClassEntry& entry : registrant.classes) {
        if (entry.interfaceId)
            attempt([&] { UnregisterInterface(registry, registrant, entry); });
    }
    if (registrant.application && !used)
        attempt([&] { registry.RemoveKey(ApplicationPath(registrant)); });
    if (first)
        throw *first;
}

} // namespace server
