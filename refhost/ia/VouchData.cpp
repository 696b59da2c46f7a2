#include "refhost/ia/VouchData.h"

namespace refhost {

VouchData::VouchData(host::Environment& environment, const host::DOMDocument& document)
    : document_(environment.CreateDOMDocument()) {
    document_->LoadXML(document.Xml());
}

std::string VouchData::Text(std::string_view field) const {
    const host::DOMNodePtr head = document_->SelectSingleNode("//rs:data/z:row");
    return head ? head->GetAttribute(field).value_or("") : std::string();
}

} // namespace refhost
