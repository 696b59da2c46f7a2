#pragma once

#include "ModPub/ImportState.h"

#include <string>
#include <string_view>

namespace kovra {

/// Imports price-decline provision documents: "ADD" saves new ones, "EDIT" replaces.
class ClsKovraProof {
public:
    explicit ClsKovraProof(host::Environment& environment) : state_(environment) {}

    /// Imports one request; serves one call an instance.
    /// @param sXml the request, UTF-8
    /// @param login the caller's login
    /// @return the result document or an error result. Never throws.
    std::string Transact(std::string_view sXml, host::HostLogin* login);

private:
    void ImportRow(const host::DOMNode& row);

    ModPub::ImportState state_;
};

} // namespace kovra
