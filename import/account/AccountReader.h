#pragma once

#include "host/Environment.h"
#include "host/HostLogin.h"
#include "import/file/Sha256.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace importing {

/// A value as text; Null and what was never set as the empty one, bytes as hexadecimal digits.
std::string TextOf(const host::Value& value);

/// Reads what an import needs to know of an account, and remembers what it read as one hash, by which a later run can
/// tell whether the account has changed.
class AccountReader {
public:
    /// Opens a connection of its own. @param login outlives the reader, as does `environment`. Throws host::Error.
    AccountReader(host::Environment& environment, host::HostLogin& login);

    host::Environment& environment() noexcept { return environment_; }
    host::Connection& connection() noexcept { return *connection_; }
    host::HostLogin& login() noexcept { return login_; }
    /// The login's accounting year, a number's digits.
    const std::string& year() const noexcept { return year_; }

    /// Calls `take` with the recordset on each row of the query. Throws host::Error.
    void Rows(std::string_view sql, const std::function<void(const host::Recordset& row)>& take);
    /// The first column of the first row as text; empty without a row. Throws host::Error.
    std::string First(std::string_view sql);
    /// Adds a text to what is remembered.
    void Remember(std::string_view text);
    /// The hash of everything read so far.
    std::string Fingerprint() const {
        Sha256 hash = hash_;
        return hash.Finish();
    }

private:
    host::Environment& environment_;
    host::HostLogin& login_;
    std::string year_;
    std::unique_ptr<host::Connection> connection_;
    Sha256 hash_;
};

} // namespace importing
