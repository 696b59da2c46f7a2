// The voucher components of KovraHost.dll.
#include "tests/support/com/ExpectError.h"
#include "tests/support/com/HostFixture.h"

#include <string>
#include <utility>
#include <vector>

namespace {

using server::DispatchObject;
using server::VariantHolder;
using server::XmlDocument;
using test::ExpectError;
using test::objectNotSet;
using test::typeMismatch;

using Rows = std::vector<std::string>;

class HostVoucher : public test::HostTest {
protected:
    /// What a Boolean operation of a login and a message answers, and the message afterwards.
    static std::pair<bool, std::string> Ask(const DispatchObject& component, const wchar_t* operation,
                                            const DispatchObject& login, std::string_view message = {}) {
        VariantHolder text = Text(message);
        const bool answer =
            server::ToBoolean(component.Call(operation, Holder(login), VariantHolder::ByReference(text)).Get());
        return {answer, server::ToText(text.Get())};
    }
    /// The answer for a type's default template, and the recordset.
    std::pair<bool, DispatchObject> Template(std::string_view type) {
        VariantHolder recordset = Nothing();
        VariantHolder message = Text("as it was");
        VariantHolder further = Text("");
        const bool found =
            server::ToBoolean(service_
                                  .Call(L"GetDefaultTemplate", Text(type), VariantHolder::ByReference(recordset),
                                        VariantHolder::ByReference(message), VariantHolder::ByReference(further),
                                        Text(""), VariantHolder(0))
                                  .Get());
        EXPECT_EQ(server::ToText(message.Get()), "as it was");
        return {found, DispatchObject(server::ToObject(recordset.Get()))};
    }
    /// The message of a save, and its result document.
    std::pair<std::string, XmlDocument> Save(std::string_view type, std::string_view headRows,
                                             std::string_view bodyRows) {
        VariantHolder message = Text("");
        VariantHolder connection = Holder(connection_);
        XmlDocument result;
        VariantHolder resultDocument = Holder(result);
        constexpr int flag = 0;
        service_.Call(L"SaveVoucher", Text(type), Holder(Records("IA_DecReady", headRows)),
                      Holder(Records("IA_DecReadys", bodyRows)), VariantHolder::ByReference(message),
                      VariantHolder::ByReference(connection), VariantHolder::ByReference(resultDocument),
                      VariantHolder(flag));
        return {server::ToText(message.Get()), std::move(result)};
    }

    DispatchObject connection_ = Connection();
    DispatchObject service_ = Make(L"KovraHost.IaVoucherService");

private:
    /// Records of a table with these `z:row` elements.
    XmlDocument Records(const std::string& table, std::string_view rows) {
        constexpr int persistXml = 1;
        XmlDocument document;
        Recordset(connection_, "select * from " + table + " where 1=2")
            .Call(L"Save", Holder(document), VariantHolder(persistXml));
        std::string xml = document.Xml();
        constexpr std::string_view empty = "<rs:data/>";
        xml.replace(xml.find(empty), empty.size(), "<rs:data>" + std::string(rows) + "</rs:data>");
        EXPECT_TRUE(document.LoadXML(xml)) << xml;
        return document;
    }
};

} // namespace

TEST_F(HostVoucher, ContextCarriesTheLogin) {
    const DispatchObject login = AccountLogin();
    const DispatchObject context(server::ToObject(service_.Call(L"Context", Holder(login)).Get()));
    EXPECT_EQ(server::ToObject(context.Get(L"Login").Get()).Get(), login.object().Get());
    const DispatchObject empty(server::ToObject(service_.Call(L"Context", Nothing()).Get()));
    EXPECT_FALSE(server::ToObject(empty.Get(L"Login").Get()));
}

TEST_F(HostVoucher, InitTakesALoginWhoseAccountOpens) {
    EXPECT_EQ(Ask(service_, L"VoucherInit", AccountLogin(), "as it was"), std::pair(true, std::string("as it was")));
    EXPECT_EQ(Ask(service_, L"VoucherInit", test::Login("<login QxDbName=\"Provider=None\"/>")),
              std::pair(false, std::string("Provider cannot be found. It may not be properly installed.")));
    EXPECT_EQ(Ask(service_, L"VoucherInit", test::Login("<login/>")),
              std::pair(false, std::string("对象不支持该属性或方法")));
    EXPECT_EQ(Ask(service_, L"VoucherInit", DispatchObject()), std::pair(false, std::string(objectNotSet)));
    ExpectError(13, typeMismatch, [&] { service_.Call(L"VoucherInit", Text("login"), Text("")); });
}

TEST_F(HostVoucher, GivesTheDefaultTemplateOfAType) {
    ExpectError(91, objectNotSet, [&] { Template("48"); });
    ASSERT_TRUE(Ask(service_, L"VoucherInit", AccountLogin()).first);
    const auto [found, recordset] = Template("48");
    EXPECT_TRUE(found);
    EXPECT_EQ(Field(recordset, "VT_ID"), host::Value(4801));
    const auto [foundOther, none] = Template("49");
    EXPECT_FALSE(foundOther);
    EXPECT_TRUE(server::ToBoolean(none.Get(L"EOF").Get()));
    EXPECT_TRUE(server::ToBoolean(none.Get(L"BOF").Get()));
}

TEST_F(HostVoucher, SavesAProvision) {
    account_.Run("INSERT INTO IA_DecReady (ID, cDecCode) VALUES (41, N'D0')");
    const auto [message, result] = Save("48", "<z:row cDecCode=\"D1\" cVouchType=\"48\" VT_ID=\"4801\"/>",
                                        "<z:row cInvCode=\"存货\" iThisPrice=\"1.5\"/>");
    EXPECT_EQ(message, "");
    EXPECT_EQ(result.DocumentElement(), nullptr);
    EXPECT_EQ(account_.Rows("select ID, cDecCode, cVouchType, VT_ID from IA_DecReady where ID>41"),
              (Rows{R"({"ID":42,"cDecCode":"D1","cVouchType":"48","VT_ID":4801})"}));
    EXPECT_EQ(account_.Rows("select ID, cInvCode, iThisPrice from IA_DecReadys"),
              (Rows{R"({"ID":42,"cInvCode":"存货","iThisPrice":1.5})"}));
}

TEST_F(HostVoucher, ListsInTheResultDocumentWhatKeepsItFromSaving) {
    account_.Run("INSERT INTO CurrentStock (cWhCode, cInvCode, iQuantity) VALUES (N'01', N'A', 2)\nGO\n"
                 "INSERT INTO ItemBudget (cItem_class, cItemCode, iBudget) VALUES (N'97', N'P1', 10)");
    const auto [message, result] =
        Save("48", "<z:row cDecCode=\"D1\"/>",
             "<z:row cInvCode=\"A\" iQuantity=\"3\"/>"
             "<z:row cInvCode=\"B\" cItem_class=\"97\" cItemCode=\"P1\" iThisPrice=\"10.01\"/>");
    EXPECT_EQ(message, "");
    const host::DOMNodePtr stock = result.SelectSingleNode("//zeroout/z:row");
    const host::DOMNodePtr budget = result.SelectSingleNode("//itemcheck/z:row");
    ASSERT_NE(stock, nullptr);
    ASSERT_NE(budget, nullptr);
    EXPECT_EQ(stock->GetAttribute("cinvcode"), "A");
    EXPECT_EQ(budget->GetAttribute("cinvcode"), "B");
    EXPECT_EQ(result.SelectNodes("//z:row").size(), 2U);
    EXPECT_EQ(account_.Rows("select ID from IA_DecReady"), Rows());
}

TEST_F(HostVoucher, SaysWhyItDoesNotSave) {
    EXPECT_EQ(Save("49", "<z:row cDecCode=\"D1\"/>", "").first, "单据类型49不能保存。");
    EXPECT_EQ(Save("48", "", "").first, "没有单据头，不能保存。");
    EXPECT_EQ(Save("48", "<z:row cDecCode=\"1234567890123456789012345678901\"/>", "").first,
              "String or binary data would be truncated.");
    EXPECT_EQ(account_.Rows("select ID from IA_DecReady"), Rows());
}

TEST_F(HostVoucher, PreCheckRefusesAClosedMonth) {
    const DispatchObject check = Make(L"KovraHost.ProvisionPreCheck");
    account_.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 1, 0), (2023, 2, 1), (2022, 1, 1)");
    EXPECT_EQ(Ask(check, L"Check", AccountLogin()), std::pair(true, std::string()));
    account_.Run("UPDATE GL_mend SET bflag_IA=1 WHERE iyear=2023 AND iperiod=1");
    EXPECT_EQ(Ask(check, L"Check", AccountLogin()),
              std::pair(false, std::string("2023年1月已结账，不能录入跌价准备单。")));
    ExpectError(438, "对象不支持该属性或方法", [&] { Ask(check, L"Check", test::Login("<login/>")); });
    ExpectError(91, objectNotSet, [&] { Ask(check, L"Check", DispatchObject()); });
}
