#include "ClsKovra/SetChildText.h"

#include "ModPub/RuntimeErrors.h"

namespace kovra {

void SetChildText(const host::DOMNode& row, std::string_view name, std::string_view value) {
    const host::DOMNodePtr child = row.SelectSingleNode(name);
    if (!child) {
        ModPub::RaiseRuntimeError(host::error_number::objectNotSet);
    }
    child->SetText(value);
}

} // namespace kovra
