#pragma once

#include "cli/Console.h"
#include "cli/ImportLog.h"

#include <string>
#include <string_view>

namespace cli {

/// Whether this platform has COM, and with it registered classes and `kovra doctor`.
#ifdef _WIN32
inline constexpr bool hasCom = true;
#else
inline constexpr bool hasCom = false;
#endif

/// What a client gets from the class that is registered under the name "Kovra.CLASS": the result of `Transact`. On
/// Windows alone. Throws `host::Error` when the class cannot be created, and as `ReadLogin`.
/// @param trace the file that the library is told to trace to, or empty
std::string TransactByRegistered(std::string_view className, const std::string& request, const std::string& login,
                                 const std::string& trace);

/// Tells `log` the outcomes that stand in the result of a request, as if it had watched them.
void ReadOutcomes(const std::string& request, const std::string& result, ImportLog& log);

struct DoctorArguments {
    /// The login whose account is opened; empty for none.
    std::string login;
};

/// Tells on standard output which of Kovra's and the ERP's classes are registered in which size, by which file and
/// version, what of them and of Windows' own components can be created, and whether the account opens. On Windows
/// alone. The status is `failed` where something that Kovra needs is missing.
int RunDoctor(const DoctorArguments& arguments, Console& console);

} // namespace cli
