#pragma once

#include "host/DOMDocument.h"
#include "host/EaiHelper.h"

namespace refhost {

/// The integration helper of the reference host.
///
/// Result document: `<qxinterface docid="D" proc="P"/>`, each outcome an `<item key="K" code="C" dsc="D"/>` below it.
/// Error result: `<error code="C" dsc="M" detail="T"/>`, `detail` only when it is not empty.
class EaiHelper final : public host::EaiHelper {
public:
    std::string GetAttr(host::DOMNode* element, std::string_view name) override;
    std::string GetChildText(const host::DOMNode* node, std::string_view name) override;
    std::string MakeErrorResult(std::string_view code, std::string_view message, std::string_view detail) override;
    std::string MakeResultDoc(std::string_view docid, std::string_view proc) override;
    /// Throws 91 when the document has no root element.
    void AddResultItem(host::DOMDocument& resultDocument, std::string_view key, long code,
                       std::string_view description) override;

    /// `AddResultItem`. @return the new `item`, for further attributes
    static host::DOMNodePtr AppendItem(host::DOMDocument& resultDocument, std::string_view key, long code,
                                       std::string_view description);
};

} // namespace refhost
