#include "cli/Platform.h"
#include "os/Files.h"
#include "os/WindowsApi.h"
#include "text/Utf16.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <system_error>
#include <type_traits>

#include <fcntl.h>
#include <io.h>
#include <sddl.h>
#include <shellapi.h>

namespace cli::platform {
namespace {

std::atomic<bool> interrupted = false;

BOOL WINAPI NoteInterruption(DWORD event) {
    const bool again = interrupted.exchange(true);
    if (event == CTRL_CLOSE_EVENT) {
        // A process whose console is closed is ended when this returns, and some seconds later in any case: until then
        // the import may come to its end.
        Sleep(INFINITE);
    }
    // The second one meets the system's own manner.
    return again ? FALSE : TRUE;
}

HANDLE HandleOf(Stream stream) noexcept {
    switch (stream) {
    case Stream::input:
        return GetStdHandle(STD_INPUT_HANDLE);
    case Stream::output:
        return GetStdHandle(STD_OUTPUT_HANDLE);
    case Stream::error:
        break;
    }
    return GetStdHandle(STD_ERROR_HANDLE);
}

struct LocalMemory {
    void operator()(void* memory) const noexcept { LocalFree(memory); }
};
struct OpenHandle {
    void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};

[[noreturn]] void Fail(const std::string& path, std::error_code reason) {
    throw std::system_error(reason, "'" + path + "'");
}
[[noreturn]] void FailBySystem(const std::string& path) {
    Fail(path, {static_cast<int>(GetLastError()), std::system_category()});
}
[[noreturn]] void FailByErrno(const std::string& path) { Fail(path, {errno, std::generic_category()}); }

/// Whom this process runs for, as security descriptors write it; empty when the system does not tell.
std::wstring UserSid() {
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) {
        return {};
    }
    const std::unique_ptr<std::remove_pointer_t<HANDLE>, OpenHandle> owned(token);
    alignas(TOKEN_USER) std::array<std::byte, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user;
    DWORD size = 0;
    wchar_t* text = nullptr;
    if (!GetTokenInformation(token, TokenUser, user.data(), static_cast<DWORD>(user.size()), &size) ||
        !ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, &text)) {
        return {};
    }
    const std::unique_ptr<wchar_t, LocalMemory> ownedText(text);
    return text;
}

bool WriteToConsole(HANDLE console, std::string_view text) {
    const std::wstring wide = text::ToUtf16<wchar_t>(text);
    // Consoles before Windows 8 take less than 64 KB at a time.
    constexpr std::size_t most = 8192;
    std::wstring_view rest = wide;
    while (!rest.empty()) {
        DWORD written = 0;
        if (!WriteConsoleW(console, rest.data(), static_cast<DWORD>(std::min(rest.size(), most)), &written, nullptr)) {
            errno = EIO;
            return false;
        }
        rest.remove_prefix(written);
    }
    return true;
}

/// A security descriptor that gives rights to the user alone, and takes none over from the folder.
/// @param path what it is for, as an error names it
std::unique_ptr<void, LocalMemory> RightsOfUser(const std::wstring& rights, const std::wstring& inherited,
                                                const std::string& path) {
    const std::wstring text = L"D:P(A;" + inherited + L";" + rights + L";;;" + UserSid() + L")";
    void* descriptor = nullptr;
    if (!ConvertStringSecurityDescriptorToSecurityDescriptorW(text.c_str(), SDDL_REVISION_1, &descriptor, nullptr)) {
        FailBySystem(path);
    }
    return std::unique_ptr<void, LocalMemory>(descriptor);
}

} // namespace

void Start() {
    for (std::FILE* const stream : {stdin, stdout, stderr}) {
        _setmode(_fileno(stream), _O_BINARY);
    }
}

std::vector<std::string> Arguments(int, const char* const*) {
    int count = 0;
    const std::unique_ptr<wchar_t*, LocalMemory> words(CommandLineToArgvW(GetCommandLineW(), &count));
    std::vector<std::string> arguments;
    for (int index = 0; words && index < count; ++index) {
        arguments.push_back(text::FromUtf16<wchar_t>(words.get()[index]));
    }
    return arguments;
}

std::string SystemLanguage() { return PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_CHINESE ? "zh" : ""; }

bool IsTerminal(Stream stream) noexcept {
    DWORD mode = 0;
    return GetConsoleMode(HandleOf(stream), &mode) != FALSE;
}

std::size_t TerminalWidth(Stream stream) noexcept {
    constexpr std::size_t usual = 80;
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (!GetConsoleScreenBufferInfo(HandleOf(stream), &info)) {
        return usual;
    }
    const int width = info.srWindow.Right - info.srWindow.Left + 1;
    return width > 0 ? static_cast<std::size_t>(width) : usual;
}

bool TakesEscapes(Stream stream) noexcept {
    DWORD mode = 0;
    return GetConsoleMode(HandleOf(stream), &mode) != FALSE &&
           SetConsoleMode(HandleOf(stream), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != FALSE;
}

bool WriteText(Stream stream, std::string_view text) {
    std::FILE* const file = stream == Stream::output ? stdout : stderr;
    if (IsTerminal(stream)) {
        return std::fflush(file) == 0 && WriteToConsole(HandleOf(stream), text);
    }
    return std::fwrite(text.data(), 1, text.size(), file) == text.size() && std::fflush(file) == 0;
}

std::string FromLocale(std::string_view text) { return std::string(text); }

void NoteInterruptions() { SetConsoleCtrlHandler(NoteInterruption, TRUE); }

bool Interrupted() noexcept { return interrupted; }

void CreatePrivateFile(const std::string& path, std::string_view text) {
    // To read, to write and to remove.
    const std::unique_ptr<void, LocalMemory> descriptor = RightsOfUser(L"FRFWSD", L"", path);
    SECURITY_ATTRIBUTES attributes{sizeof attributes, descriptor.get(), FALSE};
    const HANDLE created = CreateFileW(os::PathOf(path).c_str(), GENERIC_WRITE, 0, &attributes, CREATE_NEW,
                                       FILE_ATTRIBUTE_NORMAL, nullptr);
    if (created == INVALID_HANDLE_VALUE) {
        FailBySystem(path);
    }
    const std::unique_ptr<std::remove_pointer_t<HANDLE>, OpenHandle> file(created);
    DWORD written = 0;
    if (!WriteFile(created, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) ||
        written != text.size()) {
        FailBySystem(path);
    }
}

std::string CreatePrivateFolder() {
    std::random_device random;
    const std::string path = os::NameOf(std::filesystem::temp_directory_path() /
                                        ("kovra-" + std::to_string(random()) + std::to_string(random())));
    // Everything, in what is made inside it too.
    const std::unique_ptr<void, LocalMemory> descriptor = RightsOfUser(L"FA", L"OICI", path);
    SECURITY_ATTRIBUTES attributes{sizeof attributes, descriptor.get(), FALSE};
    if (!CreateDirectoryW(os::PathOf(path).c_str(), &attributes)) {
        FailBySystem(path);
    }
    return path;
}

DurableFile::DurableFile(const std::string& path) : path_(path), file_(os::OpenFile(path, "ab")) {
    if (!file_) {
        FailByErrno(path_);
    }
}

void DurableFile::Add(std::string_view text) {
    std::FILE* const file = file_.get();
    if (std::fwrite(text.data(), 1, text.size(), file) != text.size() || std::fflush(file) != 0) {
        FailByErrno(path_);
    }
    // A pipe or a console has nothing to wait for.
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
    if (GetFileType(handle) == FILE_TYPE_DISK && !FlushFileBuffers(handle)) {
        FailBySystem(path_);
    }
}

} // namespace cli::platform
