#pragma once

#include "host/EaiHelper.h"
#include "server/com/DispatchObject.h"

namespace server {

/// The host's integration helper.
class ComEaiHelper final : public host::EaiHelper {
public:
    /// Creates the helper. Throws error 429 when that cannot be done.
    ComEaiHelper();

    std::string GetAttr(host::DOMNode* element, std::string_view name) override;
    std::string GetChildText(const host::DOMNode* node, std::string_view name) override;
    std::string MakeErrorResult(std::string_view code, std::string_view message, std::string_view detail) override;
    std::string MakeResultDoc(std::string_view docid, std::string_view proc) override;
    void AddResultItem(host::DOMDocument& resultDocument, std::string_view key, long code,
                       std::string_view description) override;

private:
    DispatchObject helper_;
};

} // namespace server
