#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/Platform.h"
#include "host/Error.h"
#include "text/Fault.h"
#include "text/SystemWords.h"

#include <exception>
#include <string>
#include <system_error>

namespace {

/// What the system did not do, and why.
std::string WordsOf(const std::system_error& error, cli::Language language) {
    const text::Words reason = text::SystemWords(error.code());
    std::string words = error.what();
    // `what()` ends with the system's own text.
    if (language == cli::Language::chinese && words.ends_with(reason.english)) {
        words.replace(words.size() - reason.english.size(), reason.english.size(), reason.chinese);
    }
    return words;
}

/// Runs a command; says on standard error what it cannot do.
int Guarded(const cli::Invocation& invocation, cli::Console& console) {
    try {
        return invocation.command(console);
    } catch (const host::Error& error) {
        console.Say(cli::Console::Tone::bad, std::to_string(error.number()) + ": ", error.description());
        return cli::exit_status::failed;
    } catch (const text::Fault& fault) {
        const text::Words words = fault.words();
        console.Say(cli::Console::Tone::bad,
                    "kovra: ", console.language() == cli::Language::chinese ? words.chinese : words.english);
        return cli::exit_status::unusable;
    } catch (const std::system_error& error) {
        console.Say(cli::Console::Tone::bad, "kovra: ", WordsOf(error, console.language()));
        return cli::exit_status::unusable;
    } catch (const std::exception& error) {
        console.Say(cli::Console::Tone::bad, "kovra: ", error.what());
        return cli::exit_status::unusable;
    }
}

} // namespace

int main(int argc, char** argv) {
    cli::platform::Start();
    const cli::Invocation invocation = cli::ReadCommandLine(cli::platform::Arguments(argc, argv));
    if (!invocation.command) {
        return invocation.status;
    }
    cli::Console console(invocation.language);
    return Guarded(invocation, console);
}
