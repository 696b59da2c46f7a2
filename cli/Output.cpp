#include "cli/Output.h"

#include "cli/Platform.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace cli {
namespace {

void Check(bool written) {
    if (!written) {
        throw std::system_error(errno, std::generic_category(), "standard output");
    }
}

} // namespace

void WriteOutput(std::string_view text) {
    Check(std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0);
}

void WriteForPeople(std::string_view text) { Check(platform::WriteText(platform::Stream::output, text)); }

std::size_t OutputWidth() {
    return platform::IsTerminal(platform::Stream::output) ? platform::TerminalWidth(platform::Stream::output) : 0;
}

} // namespace cli
