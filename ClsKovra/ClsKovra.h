#pragma once

#include "ModPub/ImportState.h"

#include <string>
#include <string_view>

namespace kovra {

/// Imports opening balances into `Ia_subsidiary`: "ADD" and "EDIT" both append.
class ClsKovra {
public:
    explicit ClsKovra(host::Environment& environment) : state_(environment) {}

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
