#pragma once

#include "refhost/eai/Login.h"

#include <string>

namespace cli {

/// The login of a login file, with what the file leaves to its surroundings made whole:
///
/// - In `QxDbName` and `cUserPassWord`, `${env:NAME}` stands for the value of an environment variable and
/// `${file:PATH}`
///   for the first line of a file, so that passwords need not stand in the login. In a connection string the value is
///   set in braces where it holds characters that part or enclose values there.
/// - The `Data Source` of the embedded account database, and a `PATH`, are looked for beside the login file when they
///   are relative.
///
/// @param environment see `refhost::Login`
/// Throws std::runtime_error, which names the file, for a file that cannot be read or is no login, and for a variable
/// or file that is not there.
refhost::Login ReadLogin(const std::string& path, host::Environment& environment);

/// The text of a login file with all that made whole, as an XML text.
std::string ReadLoginXml(const std::string& path, host::Environment& environment);

} // namespace cli
