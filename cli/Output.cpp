#include "cli/Output.h"

#include "cli/Platform.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace cli {

void WriteOutput(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0) {
        throw std::system_error(errno, std::generic_category(), "standard output");
    }
}

void WriteForPeople(std::string_view text) { WriteOutput(platform::ToLocale(text)); }

} // namespace cli
