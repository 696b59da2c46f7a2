#include "server/adapters/ComEaiHelper.h"

#include "server/adapters/ProgIds.h"
#include "server/adapters/XmlDocument.h"
#include "server/adapters/XmlNode.h"

namespace server {

ComEaiHelper::ComEaiHelper() : helper_(DispatchObject::Create(progid::eaiHelper)) {}

std::string ComEaiHelper::GetAttr(const host::DOMNode* element, std::string_view name) {
    VariantHolder node(static_cast<IDispatch*>(ComNode(element).Get()));
    return ToText(helper_.Call(L"GetAttr", VariantHolder::ByReference(node), VariantHolder(name)).Get());
}

std::string ComEaiHelper::GetChildText(const host::DOMNode* node, std::string_view name) {
    const VariantHolder parent(static_cast<IDispatch*>(ComNode(node).Get()));
    return ToText(helper_.Call(L"GetChildText", parent, VariantHolder(name)).Get());
}

std::string ComEaiHelper::MakeErrorResult(std::string_view code, std::string_view message, std::string_view detail) {
    VariantHolder details(detail);
    return ToText(
        helper_
            .Call(L"MakeErrorResult", VariantHolder(code), VariantHolder(message), VariantHolder::ByReference(details))
            .Get());
}

std::string ComEaiHelper::MakeResultDoc(std::string_view docid, std::string_view proc) {
    VariantHolder operation(proc);
    return ToText(helper_.Call(L"MakeResultDoc", VariantHolder(docid), VariantHolder::ByReference(operation)).Get());
}

void ComEaiHelper::AddResultItem(host::DOMDocument& resultDocument, std::string_view key, long code,
                                 std::string_view description) {
    constexpr int noFlag = 0;
    VariantHolder document(static_cast<IDispatch*>(ComDocument(resultDocument).Get()));
    VariantHolder further[4] = {VariantHolder(std::string_view()), VariantHolder(std::string_view()),
                                VariantHolder(std::string_view()), VariantHolder(std::string_view())};
    helper_.Call(L"AddResultItem", VariantHolder::ByReference(document), VariantHolder(key),
                 VariantHolder(static_cast<int>(code)), VariantHolder(description), VariantHolder(noFlag),
                 VariantHolder::ByReference(further[0]), VariantHolder::ByReference(further[1]),
                 VariantHolder::ByReference(further[2]), VariantHolder::ByReference(further[3]));
}

} // namespace server
