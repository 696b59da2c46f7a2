#include "server/adapters/ComEaiHelper.h"

#include "server/adapters/ObjectArguments.h"
#include "server/adapters/ProgIds.h"

namespace server {

ComEaiHelper::ComEaiHelper() : helper_(DispatchObject::Create(progid::eaiHelper)) {}

std::string ComEaiHelper::GetAttr(host::DOMNode* element, std::string_view name) {
    return ToText(helper_.Call(L"GetAttr", ObjectReference(element), VariantHolder(name)).Get());
}

std::string ComEaiHelper::GetChildText(const host::DOMNode* node, std::string_view name) {
    return ToText(helper_.Call(L"GetChildText", ByValue(node), VariantHolder(name)).Get());
}

std::string ComEaiHelper::MakeErrorResult(std::string_view code, std::string_view message, std::string_view detail) {
    return ToText(
        helper_.Call(L"MakeErrorResult", VariantHolder(code), VariantHolder(message), UnreadReference(detail)).Get());
}

std::string ComEaiHelper::MakeResultDoc(std::string_view docid, std::string_view proc) {
    return ToText(helper_.Call(L"MakeResultDoc", VariantHolder(docid), UnreadReference(proc)).Get());
}

void ComEaiHelper::AddResultItem(host::DOMDocument& resultDocument, std::string_view key, long code,
                                 std::string_view description) {
    constexpr int noFlag = 0;
    constexpr std::string_view empty;
    helper_.Call(L"AddResultItem", ObjectReference(resultDocument), VariantHolder(key),
                 VariantHolder(static_cast<int>(code)), VariantHolder(description), VariantHolder(noFlag),
                 UnreadReference(empty), UnreadReference(empty), UnreadReference(empty), UnreadReference(empty));
}

} // namespace server
