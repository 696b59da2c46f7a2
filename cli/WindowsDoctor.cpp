// `kovra doctor`: what is registered on this machine, and what of it works.
#include "cli/Classes.h"
#include "cli/Commands.h"
#include "cli/Host.h"
#include "cli/Output.h"
#include "cli/Registered.h"
#include "cli/Table.h"
#include "os/Files.h"
#include "os/WindowsApi.h"
#include "server/adapters/ProgIds.h"
#include "server/com/ComError.h"
#include "server/com/ComPtr.h"
#include "server/com/Utf16.h"
#include "text/ConnectionString.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace cli {
namespace {

namespace progid = server::progid;
using server::ToUtf16;
using server::ToUtf8;

constexpr bool is64 = sizeof(void*) == 8;

/// Whether the system knows programs of both sizes, each with classes of its own in the registry.
bool HasBothSizes() {
    BOOL on64 = FALSE;
    return is64 || (IsWow64Process(GetCurrentProcess(), &on64) != 0 && on64 != 0);
}

/// The names of classes and their applications, which both sizes share.
constexpr REGSAM shared = 0;
/// What the registry has for one size alone.
constexpr REGSAM OfSize(bool of64) { return of64 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY; }

/// A text value below HKEY_CLASSES_ROOT; nothing when there is none.
/// @param name the value's, or null for the key's own
std::optional<std::wstring> ClassesValue(const std::wstring& key, REGSAM view, const wchar_t* name = nullptr) {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, KEY_READ | view, &opened) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    std::wstring text(32768, L'\0');
    auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    const LSTATUS status = RegGetValueW(opened, nullptr, name, RRF_RT_REG_SZ, nullptr, text.data(), &size);
    RegCloseKey(opened);
    return status == ERROR_SUCCESS ? std::optional<std::wstring>(text.c_str()) : std::nullopt;
}

/// Whether the system runs the class, as it is registered in one size, in a process of its own: the surrogate.
bool HasSurrogate(const std::wstring& id, bool of64) {
    const std::optional<std::wstring> application = ClassesValue(L"CLSID\\" + id, OfSize(of64), L"AppID");
    return application && ClassesValue(L"AppID\\" + *application, shared, L"DllSurrogate");
}

/// `file` with `folder` in place of the system's folder, where it lies there.
std::wstring InPlaceOfSystemFolder(const std::wstring& file, const std::wstring& folder) {
    std::wstring system(MAX_PATH, L'\0');
    system.resize(GetSystemDirectoryW(system.data(), MAX_PATH));
    const bool inSystem = !system.empty() && file.size() > system.size() && file[system.size()] == L'\\' &&
                          CompareStringOrdinal(file.data(), static_cast<int>(system.size()), system.data(),
                                               static_cast<int>(system.size()), TRUE) == CSTR_EQUAL;
    return inSystem ? folder + file.substr(system.size()) : file;
}

/// Where a file lies that the registry of one size names, as this process reaches it. Programs of 32 bits on a system
/// of 64 mean another folder by the system's, and reach the system's by another name.
std::wstring ReachedAs(const std::wstring& file, bool of64) {
    std::wstring folder(MAX_PATH, L'\0');
    folder.resize(GetSystemWow64DirectoryW(folder.data(), MAX_PATH));
    if (folder.empty() || (of64 && is64)) {
        return file;
    }
    return InPlaceOfSystemFolder(file, of64 ? folder.substr(0, folder.rfind(L'\\')) + L"\\Sysnative" : folder);
}

/// The version in a file's resources, as "0.2.0.0"; empty when it has none.
std::string VersionOf(const std::wstring& file) {
    DWORD unused = 0;
    std::vector<std::byte> block(GetFileVersionInfoSizeW(file.c_str(), &unused));
    void* found = nullptr;
    UINT length = 0;
    if (block.empty() || !GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(block.size()), block.data()) ||
        !VerQueryValueW(block.data(), L"\\", &found, &length)) {
        return {};
    }
    const auto& info = *static_cast<const VS_FIXEDFILEINFO*>(found);
    return fmt::format("{}.{}.{}.{}", HIWORD(info.dwFileVersionMS), LOWORD(info.dwFileVersionMS),
                       HIWORD(info.dwFileVersionLS), LOWORD(info.dwFileVersionLS));
}

/// Every class that Kovra is or needs, by the names that they are created by.
std::vector<std::wstring> Names() {
    std::vector<std::wstring> names;
    for (const ImportClass& importClass : ImportClasses()) {
        names.push_back(L"Kovra." + ToUtf16(importClass.name));
    }
    for (const wchar_t* name :
         {progid::domDocument, progid::connection, progid::recordset, progid::eaiHelper, progid::eaiXmlConverter,
          progid::iaVoucherService, progid::provisionPreCheck, progid::rsXmlHelper, progid::zendaT}) {
        names.emplace_back(name);
    }
    return names;
}

class Examination {
public:
    explicit Examination(const DoctorTexts& texts) : texts_(texts) {}

    /// Adds a row for each size that the class is registered in, or one that says that it is not.
    void Add(const std::wstring& progId, Table& table) {
        const std::optional<std::wstring> id = ClassesValue(progId + L"\\CLSID", shared);
        bool registered = false;
        bool here = false;
        for (const bool of64 : {true, false}) {
            if (of64 != is64 && !bothSizes_) {
                continue;
            }
            const std::optional<std::wstring> file =
                id ? ClassesValue(L"CLSID\\" + *id + L"\\InprocServer32", OfSize(of64)) : std::nullopt;
            if (!file) {
                continue;
            }
            registered = true;
            here = here || of64 == is64;
            const std::wstring reached = ReachedAs(*file, of64);
            table.AddRow({ToUtf8(progId), std::string(of64 ? texts_.bits64 : texts_.bits32), VersionOf(reached),
                          of64 == is64 ? Creation(*id, reached) : CreationInOtherSize(*id, of64),
                          ToUtf8(of64 ? *file : reached)});
        }
        if (!registered) {
            table.AddRow({ToUtf8(progId), "", "", std::string(texts_.notRegistered), ""});
        }
        missing_ += here ? 0 : 1;
        inOtherSize_ = inOtherSize_ || (registered && !here);
    }

    std::size_t missing() const noexcept { return missing_; }
    bool inOtherSize() const noexcept { return inOtherSize_; }

private:
    /// Whether an instance can be made, in this process as a client makes it.
    std::string Creation(const std::wstring& id, const std::wstring& file) {
        const HRESULT result = Create(id, CLSCTX_SERVER);
        if (SUCCEEDED(result)) {
            return std::string(texts_.created);
        }
        ++missing_;
        std::error_code unknown;
        const bool gone = std::filesystem::path(file).is_absolute() && !std::filesystem::exists(file, unknown);
        return gone ? std::string(texts_.fileMissing) : Because(texts_.notCreated, result);
    }

    /// Whether an instance can be made in a process of the other size, where the registration names one.
    std::string CreationInOtherSize(const std::wstring& id, bool of64) const {
        if (!HasSurrogate(id, of64)) {
            return std::string(texts_.otherSize);
        }
        const HRESULT result =
            Create(id, CLSCTX_LOCAL_SERVER | (of64 ? CLSCTX_ACTIVATE_64_BIT_SERVER : CLSCTX_ACTIVATE_32_BIT_SERVER));
        return SUCCEEDED(result) ? std::string(texts_.createdApart) : Because(texts_.notCreatedApart, result);
    }

    static HRESULT Create(const std::wstring& id, DWORD context) {
        CLSID classId{};
        const HRESULT result = CLSIDFromString(id.c_str(), &classId);
        server::ComPtr<IDispatch> instance;
        return FAILED(result) ? result : CoCreateInstance(classId, nullptr, context, IID_IDispatch, instance.PutVoid());
    }

    static std::string Because(std::string_view text, HRESULT result) {
        return Fill(text, fmt::format("0x{:08X}", static_cast<std::uint32_t>(result)),
                    server::SystemDescription(result));
    }

    const DoctorTexts& texts_;
    bool bothSizes_ = HasBothSizes();
    std::size_t missing_ = 0;
    bool inOtherSize_ = false;
};

/// Opens the account through ADO. @return whether it opens
bool TellAccount(Host& host, const std::string& login, const DoctorTexts& texts) {
    try {
        const std::string connectionString = host.ReadLogin(login).ConnectionString();
        const std::unique_ptr<host::Connection> connection = host.environment().CreateConnection();
        connection->Open(connectionString, "", "", host::command_option::unspecified);
        WriteForPeople(Fill(texts.accountOpens, text::MaskPasswords(connectionString)) + "\n");
        return true;
    } catch (const host::Error& error) {
        WriteForPeople(Fill(texts.accountFails, error.number(), error.description()) + "\n");
        return false;
    }
}

} // namespace

int RunDoctor(const DoctorArguments& arguments, Console& console) {
    const DoctorTexts& texts = console.messages().doctor;
    const std::unique_ptr<Host> host = OpenHost("com", nullptr);
    Table table({texts.classHeading, texts.sizeHeading, texts.versionHeading, texts.stateHeading, texts.fileHeading});
    Examination examination(texts);
    for (const std::wstring& name : Names()) {
        examination.Add(name, table);
    }
    WriteForPeople(table.Text(OutputWidth()) + "\n");
    const bool opens = arguments.login.empty() || TellAccount(*host, arguments.login, texts);
    WriteForPeople(
        (examination.missing() == 0 ? std::string(texts.healthy) : Fill(texts.missing, examination.missing())) + "\n");
    if (examination.inOtherSize()) {
        WriteForPeople(std::string(texts.askOtherSize) + "\n");
    }
    return examination.missing() == 0 && opens ? exit_status::done : exit_status::failed;
}

} // namespace cli
