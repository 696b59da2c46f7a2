#pragma once

#include "host/DOMDocument.h"
#include "host/Database.h"

#include <memory>
#include <string>

namespace kovra {

/// Name of the mapping that turns a request row into records.
inline constexpr std::string_view provisionMapping = "EaiProof.Xml";

/// The voucher type of provisions.
inline constexpr std::string_view provisionVouchType = "48";

/// One document on its way through the import.
struct ProvisionDoc {
    const host::DOMNode& row;
    /// Whether it replaces a document of its number.
    bool edit;
    std::string number;
    bool inTransaction = false;

    /// How most messages begin.
    std::string Label() const { return "单据号为" + number; }
};

/// A document's head and body in the host's record layout.
struct ProvisionRecords {
    std::unique_ptr<host::DOMDocument> head;
    std::unique_ptr<host::DOMDocument> body;
};

} // namespace kovra
