#pragma once

#include "host/DOMDocument.h"

#include <string>

namespace kovra {

/// The fields of one request row, each the text of the child element of its name, empty when there is none.
struct InventorySetting {
    std::string cWhCode;
    std::string cInvCCode;
    std::string cInvCode;
    std::string cInvHead;
    std::string cDifHead;
    std::string cOutHead;
    std::string cEnDispHead;
    std::string czyHead;

    static InventorySetting Read(const host::DOMNode& row);

    /// The text that names the row in its outcomes.
    std::string Key() const;
};

} // namespace kovra
