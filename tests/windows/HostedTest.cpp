#include "tests/windows/HostedTest.h"

namespace test {

using server::DispatchObject;
using server::VariantHolder;

DispatchObject Login(std::string_view xml) {
    DispatchObject login = DispatchObject::Create(L"KovraHost.Login");
    login.Call(L"LoadXML", VariantHolder(xml));
    return login;
}

std::string Transact(const wchar_t* progId, const VariantHolder& request, const DispatchObject& login) {
    const DispatchObject instance = DispatchObject::Create(progId);
    const VariantHolder result = instance.Call(L"Transact", request, VariantHolder(login.object().Get()));
    EXPECT_EQ(V_VT(&result.Get()), VT_BSTR);
    return server::ToText(result.Get());
}

} // namespace test
