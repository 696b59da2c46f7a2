#pragma once

#include "cli/ImportLog.h"
#include "cli/Platform.h"
#include "text/Json.h"

#include <string>
#include <string_view>

namespace cli {

/// A file that holds each outcome from the moment on at which it happened, one JSON object a line:
///
///     {"begin":"ClsInvSubject","request":"settings.xml"}
///     {"row":1,"key":"…","code":0,"dsc":"ok"}
///     {"end":"done"}
///
/// Each is on the disk, and so is what it tells of: whoever fills the file has the database wait for its disk with each
/// commit. Documents that are written in one transaction are there once the end is "done".
///
/// What the file held before stays. The end is "done", "interrupted", "undone" (everything was rolled back) or
/// "refused" (the request as a whole); a file without it tells of an import that was cut off.
class Journal {
public:
    /// Throws std::system_error when the file cannot be written; so do the members.
    Journal(const std::string& path, std::string_view className, std::string_view request);

    void Add(const LoggedOutcome& outcome);
    void End(std::string_view how);

private:
    platform::DurableFile file_;
};

/// Writes one outcome as members of the object that is open.
void WriteMembers(text::JsonWriter& json, const LoggedOutcome& outcome);

} // namespace cli
