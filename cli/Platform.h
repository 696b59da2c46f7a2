#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// What the program asks of its platform; everything else in `cli/` is standard C++.
namespace cli::platform {

enum class Stream { input, output, error };

/// To be called before anything else: takes over the user's locale, for its encoding alone (numbers are written as
/// ever), and lets the standard streams carry bytes as they are.
void Start();

/// The words of the command line, the program's name first. In UTF-8 where the system has them in UTF-16, else as they
/// are, since they may name files.
std::vector<std::string> Arguments(int argc, const char* const* argv);

/// The language that the system speaks to its user, as "zh_CN"; empty where the environment's variables alone tell it.
std::string SystemLanguage();

/// Whether a person sits at the other end of a stream.
bool IsTerminal(Stream stream) noexcept;

/// Columns of the terminal at a stream; 80 where it does not tell.
std::size_t TerminalWidth(Stream stream) noexcept;

/// Whether the terminal at a stream takes escape sequences.
bool TakesEscapes(Stream stream) noexcept;

/// Writes a text (UTF-8) that people read: on a terminal in its encoding, else in the locale's. False, with the reason
/// in errno, when it does not take everything.
bool WriteText(Stream stream, std::string_view text);

/// A text from the command line in UTF-8; as it stands where it is not in the locale's encoding.
std::string FromLocale(std::string_view text);

/// From now on Ctrl-C and a request to terminate are noted and no longer end the program; a second one does.
void NoteInterruptions();
/// Whether one was noted.
bool Interrupted() noexcept;

/// Creates a file that only its owner can read and write. Throws std::system_error when it is there already or cannot
/// be written.
void CreatePrivateFile(const std::string& path, std::string_view text);

/// Creates a folder of its own under the system's temporary one, that only its owner can read, and returns its path.
/// Throws std::system_error.
std::string CreatePrivateFolder();

/// A file that outlives a crash: what was added is on disk.
class DurableFile {
public:
    /// Opens it for adding at its end; creates it unless it is there. Throws std::system_error.
    explicit DurableFile(const std::string& path);

    /// Adds `text` and waits until it is on disk. Throws std::system_error.
    void Add(std::string_view text);

private:
    struct Close {
        void operator()(std::FILE* file) const noexcept { std::fclose(file); }
    };
    std::string path_;
    std::unique_ptr<std::FILE, Close> file_;
};

} // namespace cli::platform
