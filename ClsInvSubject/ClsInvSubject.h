#pragma once

#include "ModPub/ImportState.h"
#include "ModPub/RequestFields.h"

#include <string>
#include <string_view>

namespace kovra {

struct InventorySetting;

/// Imports inventory account settings into `IA_HeadSet`: "ADD" inserts, "EDIT" updates or inserts, "EMPTY" deletes all.
class ClsInvSubject {
public:
    /// @param observer watches the import; nobody where it is nullptr
    explicit ClsInvSubject(host::Environment& environment, ModPub::ImportObserver* observer = nullptr)
        : state_(environment, observer) {}

    /// Imports one request; serves one call an instance.
    /// @param sXml the request, UTF-8
    /// @param login the caller's login
    /// @return the result document, an error result, or the empty text after "EMPTY". Never throws.
    std::string Transact(std::string_view sXml, host::HostLogin* login);

    /// The fields that it reads of a request.
    static ModPub::RequestFields Fields();

private:
    void ImportRow(const host::DOMNode& row);
    bool ValidateSetting(const std::string& key, const InventorySetting& setting);
    void SaveSetting(const std::string& key, const InventorySetting& setting);

    ModPub::ImportState state_;
};

} // namespace kovra
