#pragma once

#include "ModPub/ImportObserver.h"
#include "ModPub/RequestFields.h"
#include "host/Environment.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// One of the six classes, as the program runs it.
struct ImportClass {
    std::string_view name;
    /// What a row of a request is: a row, or a whole document.
    bool importsDocuments;
    /// The operations that it offers, as people are told them.
    std::string_view operations;
    /// Creates an instance, calls its `Transact` and releases it. Throws `host::Error` when the instance cannot be
    /// created.
    /// @param observer watches the import; nobody where it is nullptr
    std::string (*transact)(host::Environment& environment, std::string_view request, host::HostLogin* login,
                            ModPub::ImportObserver* observer);
    /// The fields that it reads of a request; nothing where mapping files of the user's own say what it reads.
    /// Throws `host::Error` when the program's own mapping cannot be read.
    std::optional<ModPub::RequestFields> (*fields)();
};

/// All classes, in the order in which the usage text names them.
const std::vector<ImportClass>& ImportClasses();

/// The names of all classes, separated by commas.
std::string ClassNames();

} // namespace cli
