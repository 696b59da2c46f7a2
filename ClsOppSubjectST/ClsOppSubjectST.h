#pragma once

#include "ModPub/ImportState.h"
#include "ModPub/RequestFields.h"

#include <string>
#include <string_view>

namespace kovra {

struct StandardCostSetting;

/// Imports opposite account settings for standard costing into `IA_OppHead`: operations as `ClsOppSubject`.
class ClsOppSubjectST {
public:
    /// @param observer watches the import; nobody where it is nullptr
    explicit ClsOppSubjectST(host::Environment& environment, ModPub::ImportObserver* observer = nullptr)
        : state_(environment, observer) {}

    /// Imports one request; serves one call an instance.
    /// @param sXml the request, UTF-8
    /// @param login the caller's login
    /// @return the result document or an error result, or the empty text after "EMPTY". Never throws.
    std::string Transact(std::string_view sXml, host::HostLogin* login);

    /// The fields that it reads of a request.
    static ModPub::RequestFields Fields();

private:
    void ImportRow(const host::DOMNode& row);
    bool CheckRow(const std::string& key, const StandardCostSetting& setting);
    void SaveRow(const std::string& key, const StandardCostSetting& setting);

    ModPub::ImportState state_;
};

} // namespace kovra
