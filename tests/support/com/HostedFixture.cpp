#include "tests/support/com/HostedFixture.h"

#include "server/adapters/XmlDocument.h"
#include "tests/support/ScenarioFolder.h"

#include <algorithm>

namespace test {

using server::DispatchObject;
using server::VariantHolder;

DispatchObject Login(std::string_view xml) {
    DispatchObject login = DispatchObject::Create(L"KovraHost.Login");
    login.Call(L"LoadXML", VariantHolder(xml));
    return login;
}

std::string Comparable(const std::string& xml) {
    server::XmlDocument document;
    EXPECT_TRUE(document.LoadXML(xml)) << xml;
    for (const host::DOMNodePtr& item : document.SelectNodes("/*/item")) {
        constexpr std::string_view open = "<qxinterface";
        constexpr std::string_view close = "</qxinterface>";
        const std::string message = item->GetAttribute("dsc").value_or("");
        const std::size_t begin = message.find(open);
        if (begin == std::string::npos)
            continue;
        const std::size_t end = message.rfind(close) + close.size();
        const std::size_t rest = std::min(message.find_first_not_of("\r\n", end), message.size());
        item->SetAttribute("dsc", message.substr(0, begin) + Comparable(message.substr(begin, end - begin)) +
                                      message.substr(rest));
    }
    return document.Xml();
}

void ExpectResult(const std::filesystem::path& folder, const std::string& result) {
    if (ExpectsEmptyResult(folder, Documents::msxml))
        EXPECT_EQ(result, "");
    else
        EXPECT_EQ(Comparable(result), Comparable(ReadText(ExpectedFile(folder, ".xml", Documents::msxml))));
}

std::string Transact(const wchar_t* progId, const VariantHolder& request, const DispatchObject& login) {
    const DispatchObject instance = DispatchObject::Create(progId);
    const VariantHolder result = instance.Call(L"Transact", request, VariantHolder(login.object().Get()));
    EXPECT_EQ(V_VT(&result.Get()), VT_BSTR);
    return server::ToText(result.Get());
}

} // namespace test
