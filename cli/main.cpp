#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/Platform.h"
#include "host/Error.h"
#include "import/reading/UnreadableFile.h"

#include <exception>
#include <string>

namespace {

/// Runs a command; says on standard error what it cannot do.
int Guarded(const cli::Invocation& invocation, cli::Console& console) {
    try {
        return invocation.command(console);
    } catch (const host::Error& error) {
        console.Say(cli::Console::Tone::bad, std::to_string(error.number()) + ": ", error.description());
        return cli::exit_status::failed;
    } catch (const importing::UnreadableFile& error) {
        console.Say(cli::Console::Tone::bad, "kovra: ", importing::Words(error.note(), console.language()));
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
