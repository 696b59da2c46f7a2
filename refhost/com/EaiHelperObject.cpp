#include "refhost/com/EaiHelperObject.h"

#include "refhost/com/ObjectArguments.h"

#include <string>

namespace refhost::com {

using server::Arguments;
using server::ToInt;
using server::ToText;
using server::VariantHolder;

VariantHolder EaiHelperObject::GetAttr(const Arguments& arguments) {
    return VariantHolder(helper_.GetAttr(NodeOf(arguments[0]).get(), ToText(arguments[1])));
}

VariantHolder EaiHelperObject::GetChildText(const Arguments& arguments) {
    return VariantHolder(helper_.GetChildText(NodeOf(arguments[0]).get(), ToText(arguments[1])));
}

VariantHolder EaiHelperObject::MakeErrorResult(const Arguments& arguments) {
    return VariantHolder(helper_.MakeErrorResult(ToText(arguments[0]), ToText(arguments[1]), ToText(arguments[2])));
}

VariantHolder EaiHelperObject::MakeResultDoc(const Arguments& arguments) {
    return VariantHolder(helper_.MakeResultDoc(ToText(arguments[0]), ToText(arguments[1])));
}

VariantHolder EaiHelperObject::AddResultItem(const Arguments& arguments) {
    constexpr std::size_t firstFurtherText = 5;
    server::XmlDocument document = DocumentOf(arguments[0]);
    const host::DOMNodePtr item =
        EaiHelper::AppendItem(document, ToText(arguments[1]), ToInt(arguments[2]), ToText(arguments[3]));
    if (const int flag = ToInt(arguments[4]); flag != 0)
        item->SetAttribute("flag", std::to_string(flag));
    for (std::size_t i = 0; i < 4; ++i) {
        if (const std::string text = ToText(arguments[firstFurtherText + i]); !text.empty())
            item->SetAttribute("u" + std::to_string(i + 1), text);
    }
    return {};
}

} // namespace refhost::com
