#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace text {

/// The value of `key` in a connection string ("Key=Value;Key=Value"), letter case of keys ignored; a value may stand
/// between braces or quotes. Nothing when the key is absent.
std::optional<std::string> ConnectionStringValue(std::string_view connectionString, std::string_view key);

/// The connection string with the first value of `key` replaced by `value`, as it stands; unchanged when the key is
/// absent.
std::string WithConnectionStringValue(std::string_view connectionString, std::string_view key, std::string_view value);

/// The connection string with the values of `Pwd` and `Password` replaced by "***".
std::string MaskPasswords(std::string_view connectionString);

} // namespace text
