#include "cli/Platform.h"
#include "os/Encoding.h"
#include "os/PosixEncoding.h"

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <langinfo.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cli::platform {
namespace {

volatile std::sig_atomic_t interrupted = 0;

int Descriptor(Stream stream) noexcept {
    switch (stream) {
    case Stream::input:
        return STDIN_FILENO;
    case Stream::output:
        return STDOUT_FILENO;
    case Stream::error:
        break;
    }
    return STDERR_FILENO;
}

[[noreturn]] void Fail(const std::string& path) {
    throw std::system_error(errno, std::generic_category(), "'" + path + "'");
}

/// The locale's encoding; empty where texts need no conversion. The locale "C" says nothing of its terminal.
std::string ForeignEncoding() {
    const std::string_view encoding = nl_langinfo(CODESET);
    return encoding == "UTF-8" || encoding == "ANSI_X3.4-1968" ? std::string() : std::string(encoding);
}

} // namespace

void Start() { std::setlocale(LC_CTYPE, ""); }

std::vector<std::string> Arguments(int argc, const char* const* argv) { return {argv, argv + argc}; }

std::string SystemLanguage() { return {}; }

bool IsTerminal(Stream stream) noexcept { return isatty(Descriptor(stream)) == 1; }

std::size_t TerminalWidth(Stream stream) noexcept {
    constexpr std::size_t usual = 80;
    winsize size{};
    return ioctl(Descriptor(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : usual;
}

bool TakesEscapes(Stream stream) noexcept {
    const char* const terminal = std::getenv("TERM");
    return IsTerminal(stream) && terminal != nullptr && std::string_view(terminal) != "dumb";
}

bool WriteText(Stream stream, std::string_view text) {
    std::FILE* const file = stream == Stream::output ? stdout : stderr;
    const std::string encoding = ForeignEncoding();
    const std::string bytes = encoding.empty() ? std::string(text) : os::Encode(text, encoding);
    return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fflush(file) == 0;
}

std::string FromLocale(std::string_view text) {
    const std::string encoding = ForeignEncoding();
    if (encoding.empty()) {
        return std::string(text);
    }
    std::optional<os::Decoded> decoded = os::Decode(text, encoding);
    return decoded && decoded->read == text.size() ? std::move(decoded->text) : std::string(text);
}

void NoteInterruptions() {
    struct sigaction action {};
    action.sa_handler = [](int) { interrupted = 1; };
    // The second one meets the system's own manner, and calls that it cut short go on.
    action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

bool Interrupted() noexcept { return interrupted != 0; }

void CreatePrivateFile(const std::string& path, std::string_view text) {
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0) {
        Fail(path);
    }
    std::FILE* const file = fdopen(descriptor, "wb");
    const bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    if (std::fclose(file) != 0 || !written) {
        Fail(path);
    }
}

std::string CreatePrivateFolder() {
    std::string path = (std::filesystem::temp_directory_path() / "kovra-XXXXXX").string();
    if (mkdtemp(path.data()) == nullptr) {
        Fail(path);
    }
    return path;
}

DurableFile::DurableFile(const std::string& path) : path_(path), file_(std::fopen(path.c_str(), "ab")) {
    if (!file_) {
        Fail(path_);
    }
}

void DurableFile::Add(std::string_view text) {
    std::FILE* const file = file_.get();
    if (std::fwrite(text.data(), 1, text.size(), file) != text.size() || std::fflush(file) != 0) {
        Fail(path_);
    }
    // A pipe or a terminal has nothing to wait for.
    if (fdatasync(fileno(file)) != 0 && errno != EINVAL && errno != EROFS) {
        Fail(path_);
    }
}

} // namespace cli::platform
