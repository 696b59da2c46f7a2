#include "refhost/eai/EaiHelper.h"

#include "ModPub/RuntimeErrors.h"
#include "ModPub/XmlText.h"

namespace refhost {

std::string EaiHelper::GetAttr(host::DOMNode* element, std::string_view name) {
    return element == nullptr ? std::string() : element->GetAttribute(name).value_or(std::string());
}

std::string EaiHelper::GetChildText(const host::DOMNode* node, std::string_view name) {
    return node == nullptr ? std::string() : node->TextAt(name).value_or(std::string());
}

std::string EaiHelper::MakeErrorResult(std::string_view code, std::string_view message, std::string_view detail) {
    std::string result = "<error";
    ModPub::AppendXmlAttribute(result, "code", code);
    ModPub::AppendXmlAttribute(result, "dsc", message);
    if (!detail.empty())
        ModPub::AppendXmlAttribute(result, "detail", detail);
    return result.append("/>");
}

std::string EaiHelper::MakeResultDoc(std::string_view docid, std::string_view proc) {
    std::string result = "<qxinterface";
    ModPub::AppendXmlAttribute(result, "docid", docid);
    ModPub::AppendXmlAttribute(result, "proc", proc);
    return result.append("/>");
}

void EaiHelper::AddResultItem(host::DOMDocument& resultDocument, std::string_view key, long code,
                              std::string_view description) {
    AppendItem(resultDocument, key, code, description);
}

host::DOMNodePtr EaiHelper::AppendItem(host::DOMDocument& resultDocument, std::string_view key, long code,
                                       std::string_view description) {
    const host::DOMNodePtr root = resultDocument.DocumentElement();
    if (root == nullptr)
        ModPub::RaiseRuntimeError(host::error_number::objectNotSet);
    host::DOMNodePtr item = resultDocument.CreateElement("item");
    item->SetAttribute("key", key);
    item->SetAttribute("code", std::to_string(code));
    item->SetAttribute("dsc", description);
    root->AppendChild(*item);
    return item;
}

} // namespace refhost
