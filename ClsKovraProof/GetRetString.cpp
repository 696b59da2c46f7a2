#include "ClsKovraProof/ClsKovraProof.h"

namespace kovra {
namespace {

/// Names the items listed under the first element that `path` selects.
void AppendListed(std::string& message, const host::DOMDocument& document, std::string_view path,
                  std::string_view before, std::string_view after) {
    const host::DOMNodePtr list = document.SelectSingleNode(path);
    if (!list) {
        return;
    }
    for (const host::DOMNodePtr& row : list->SelectNodes("z:row")) {
        message.append(before).append(row->GetAttribute("cinvcode").value_or("")).append(after);
    }
}

} // namespace

std::string ClsKovraProof::GetRetString(const host::DOMDocument& Dom) {
    std::string message;
    AppendListed(message, Dom, "//zeroout", "存货", "现存量不足;");
    AppendListed(message, Dom, "//itemcheck", "存货[", "]项目预算检查失败;");
    return message;
}

host::Value ClsKovraProof::VerifyDomH(const host::DOMDocument*, const void*) { return {}; }

} // namespace kovra
