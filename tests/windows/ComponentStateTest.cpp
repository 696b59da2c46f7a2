// What the host's components in KovraHost.dll keep from one call to the next.
#include "server/adapters/ProgIds.h"
#include "server/adapters/XmlDocument.h"
#include "server/com/DispatchObject.h"
#include "tests/support/TestAccount.h"
#include "tests/windows/ExpectError.h"
#include "tests/windows/RegisteredLibrary.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

namespace progid = server::progid;
using server::DispatchObject;
using server::VariantHolder;

class ComponentState : public testing::Test {
protected:
    VariantHolder OpenConnection() const {
        const DispatchObject connection = DispatchObject::Create(progid::connection);
        connection.Call(L"Open", VariantHolder(account_.connectionString()));
        return Holder(connection);
    }
    static VariantHolder Holder(const DispatchObject& object) { return VariantHolder(object.object().Get()); }
    static VariantHolder Nothing() { return VariantHolder(static_cast<IDispatch*>(nullptr)); }

    test::TestAccount account_;

private:
    test::RegisteredLibrary ado_{L"KovraTestAdo.dll"};
    test::RegisteredLibrary host_{L"KovraHost.dll"};
};

} // namespace

TEST_F(ComponentState, CompanionOutlivesTheArgumentsOfARefusedCall) {
    server::XmlDocument record;
    ASSERT_TRUE(record.LoadXML("<xml xmlns:rs=\"urn:schemas-microsoft-com:rowset\" xmlns:z=\"#RowsetSchema\">"
                               "<rs:data><z:row dCJVDate=\"2023-02-07\"/></rs:data></xml>"));
    const VariantHolder data =
        DispatchObject::Create(progid::rsXmlHelper)
            .Call(L"XmlToVouchData", VariantHolder(static_cast<IDispatch*>(record.document().Get())));
    const DispatchObject companion = DispatchObject::Create(progid::zendaT);
    const VariantHolder flag(false);
    companion.Call(L"GetMaxID", OpenConnection(), flag);
    test::ExpectError(94, "无效使用 Null", [&] {
        companion.Call(L"Update", VariantHolder(host::Value(host::Null{})), VariantHolder(std::string("R")), Nothing(),
                       OpenConnection(), VariantHolder(std::string("-1")), flag);
    });
    const VariantHolder number =
        companion.Call(L"GetVouchNum", Nothing(), VariantHolder(std::string("22")), data, flag, flag);
    EXPECT_EQ(server::ToText(number.Get()), "2023020001");
}

TEST_F(ComponentState, VoucherServiceKeepsTheLoginOfItsLatestInitialisation) {
    account_.Run("INSERT INTO VoucherTemplates (VT_ID, cVouchType, bDefault) VALUES (77, N'48', 1)");
    const DispatchObject service = DispatchObject::Create(progid::iaVoucherService);
    const auto initialise = [&](const std::string& loginXml) {
        const DispatchObject login = DispatchObject::Create(L"KovraHost.Login");
        login.Call(L"LoadXML", VariantHolder(loginXml));
        VariantHolder message{std::string_view()};
        return server::ToBoolean(
            service.Call(L"VoucherInit", Holder(login), VariantHolder::ByReference(message)).Get());
    };
    EXPECT_FALSE(initialise("<login QxDbName=\"Provider=Nobody\"/>"));
    EXPECT_TRUE(initialise(account_.LoginXml()));
    VariantHolder opened = Nothing();
    VariantHolder texts[] = {VariantHolder(std::string_view()), VariantHolder(std::string_view())};
    EXPECT_TRUE(server::ToBoolean(service
                                      .Call(L"GetDefaultTemplate", VariantHolder(std::string("48")),
                                            VariantHolder::ByReference(opened), VariantHolder::ByReference(texts[0]),
                                            VariantHolder::ByReference(texts[1]), VariantHolder(std::string_view()),
                                            VariantHolder(0))
                                      .Get()));
    EXPECT_TRUE(server::ToObject(opened.Get()));
}

TEST_F(ComponentState, HelperAppendsManyOutcomesInOrder) {
    const DispatchObject helper = DispatchObject::Create(progid::eaiHelper);
    server::XmlDocument result;
    ASSERT_TRUE(result.LoadXML("<qxinterface/>"));
    const VariantHolder document(static_cast<IDispatch*>(result.document().Get()));
    const VariantHolder none{std::string_view()};
    for (int i = 0; i < 1000; ++i) {
        helper.Call(L"AddResultItem", document, VariantHolder(std::to_string(i)), VariantHolder(101),
                    VariantHolder(std::string("no")), VariantHolder(i % 2), none, VariantHolder(std::to_string(i)),
                    none, none);
    }
    const host::DOMNodeList items = result.SelectNodes("/qxinterface/item");
    ASSERT_EQ(items.size(), 1000U);
    EXPECT_EQ(items[998]->Xml(), "<item key=\"998\" code=\"101\" dsc=\"no\" u2=\"998\"/>");
    EXPECT_EQ(items[999]->Xml(), "<item key=\"999\" code=\"101\" dsc=\"no\" flag=\"1\" u2=\"999\"/>");
}
