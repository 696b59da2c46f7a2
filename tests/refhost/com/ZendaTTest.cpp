// The cost-adjustment component of KovraHost.dll, and the translator of recordsets that it works with.
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

constexpr std::string_view objectIsClosed = "Operation is not allowed when the object is closed.";

/// A staged price of 26.5 for the item A, which cost 25 and of which 10 are in stock since 2022.
constexpr std::string_view staged = R"(
INSERT INTO inventory (cInvCode, cValueType, iInvRCost) VALUES (N'A', N'计划价法', 25)
GO
INSERT INTO Ia_subsidiary (dVouDate, cWhCode, cInvCode, iAInQuantity, iAInPrice) VALUES
('2022-12-31', N'03', N'A', 10, 250)
GO
INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'IA', N'cValueStyle', N'按存货核算')
GO
CREATE TABLE W (cWhCode nvarchar(10) NULL, cInvCode nvarchar(60) NOT NULL, bRandom int NULL,
iCJVACost decimal(30, 10) NULL, cFree1 nvarchar(20) NULL, cFree2 nvarchar(20) NULL, cFree3 nvarchar(20) NULL,
cFree4 nvarchar(20) NULL, cFree5 nvarchar(20) NULL, cFree6 nvarchar(20) NULL, cFree7 nvarchar(20) NULL,
cFree8 nvarchar(20) NULL, cFree9 nvarchar(20) NULL, cFree10 nvarchar(20) NULL)
GO
INSERT INTO W (cWhCode, cInvCode, bRandom, iCJVACost) VALUES ('', 'A', 0, 26.5)
)";
constexpr std::string_view head =
    "SELECT '' AS AutoId, '2023-01-15' AS dCJVDate, N'备注' AS cMemo, N'2023010001' AS cCode, -1 AS ID, '' AS cMaker, "
    "'5101' AS VT_ID, '22' AS VouchType";

class HostZendaT : public test::HostTest {
protected:
    HostZendaT()
        : login_(AccountLogin()),
          context_(server::ToObject(Make(L"KovraHost.IaVoucherService").Call(L"Context", Holder(login_)).Get())) {}

    std::pair<bool, std::string> AllowAdd() {
        VariantHolder message = Text("");
        VariantHolder context = Holder(context_);
        VariantHolder connection = Holder(connection_);
        const bool allowed =
            server::ToBoolean(companion_
                                  .Call(L"AllowAdd", VariantHolder::ByReference(message),
                                        VariantHolder::ByReference(context), VariantHolder::ByReference(connection))
                                  .Get());
        EXPECT_EQ(server::ToObject(context.Get()).Get(), context_.object().Get()) << "the context stays";
        return {allowed, server::ToText(message.Get())};
    }
    void OpenDBS(const DispatchObject& recordset, std::string_view sql) {
        VariantHolder target = Holder(recordset);
        VariantHolder connection = Holder(connection_);
        VariantHolder text = Text(sql);
        companion_.Call(L"OpenDBS", VariantHolder::ByReference(target), VariantHolder::ByReference(connection),
                        VariantHolder::ByReference(text));
    }
    void Update(const VariantHolder& context) {
        companion_.Call(L"Update", Text("W"), Text("W_Result"), context, Holder(connection_), Text("-1"),
                        VariantHolder(false));
    }
    XmlDocument ToXml(const DispatchObject& recordset) {
        return DocumentIn(helper_.Call(L"RecordsetToXml", Holder(recordset)));
    }
    XmlDocument Saved(std::string_view sql) { return ToXml(Recordset(connection_, sql)); }
    VariantHolder VouchData(const XmlDocument& document) { return helper_.Call(L"XmlToVouchData", Holder(document)); }
    std::string Number(const VariantHolder& data) {
        return server::ToText(
            companion_
                .Call(L"GetVouchNum", Holder(context_), Text("22"), data, VariantHolder(false), VariantHolder(true))
                .Get());
    }
    std::pair<bool, std::string> Save(const XmlDocument& headDocument, const XmlDocument& rows) {
        constexpr int mode = 2;
        VariantHolder message = Text("");
        const bool saved = server::ToBoolean(companion_
                                                 .Call(L"save", Holder(headDocument), Holder(rows), VariantHolder(mode),
                                                       VariantHolder::ByReference(message), Holder(connection_),
                                                       VariantHolder(true), Holder(context_))
                                                 .Get());
        return {saved, server::ToText(message.Get())};
    }
    std::pair<bool, std::string> Post(const XmlDocument& headDocument, const XmlDocument& rows) {
        VariantHolder message = Text("");
        const bool posted =
            server::ToBoolean(companion_
                                  .Call(L"DoAccount", Holder(headDocument), Holder(rows), Holder(context_),
                                        Holder(connection_), VariantHolder(true), VariantHolder::ByReference(message))
                                  .Get());
        return {posted, server::ToText(message.Get())};
    }
    host::Value MaxID() {
        return server::ToValue(companion_.Call(L"GetMaxID", Holder(connection_), VariantHolder(false)).Get());
    }

    DispatchObject login_;
    DispatchObject context_;
    DispatchObject connection_ = Connection();
    DispatchObject companion_ = Make(L"ZendaTool.clsZendaT");
    DispatchObject helper_ = Make(L"KovraHost.RsXmlHelper");
};

} // namespace

TEST_F(HostZendaT, AllowsAddingUnlessLocked) {
    EXPECT_EQ(AllowAdd(), std::pair(true, std::string()));
    account_.Run("INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'IA', N'bPriceAdjLocked', N'1')");
    EXPECT_EQ(AllowAdd(), std::pair(false, std::string("期末处理正在进行，不能新增价格调整单")));
}

TEST_F(HostZendaT, OpensARecordsetAgainAndAgain) {
    const DispatchObject recordset = Recordset();
    OpenDBS(recordset, "SELECT N'第一' AS a");
    EXPECT_EQ(Field(recordset, "a"), host::Value("第一"));
    OpenDBS(recordset, "SELECT 2 AS b");
    EXPECT_EQ(Field(recordset, "b"), host::Value(2));
}

TEST_F(HostZendaT, CarriesTheDatabasesErrors) {
    ExpectError(-2147217865, "Invalid object name 'nothing'.", [&] { OpenDBS(Recordset(), "SELECT a FROM nothing"); });
    ExpectError(-2147217865, "Invalid object name 'dbo.W'.", [&] { Update(Holder(context_)); });
    connection_.Call(L"Close");
    ExpectError(3704, objectIsClosed, [&] { OpenDBS(Recordset(), "SELECT 1 AS n"); });
}

TEST_F(HostZendaT, NeedsItsObjects) {
    const XmlDocument document = Saved(head);
    ExpectError(91, objectNotSet, [&] { Number(VouchData(document)); }); // No connection so far.
    MaxID();
    EXPECT_EQ(Number(VouchData(document)), "2023010001");
    ExpectError(91, objectNotSet, [&] { Number(Nothing()); });
    ExpectError(13, typeMismatch, [&] { Number(Holder(helper_)); });
    ExpectError(13, typeMismatch, [&] { companion_.Call(L"GetDefaultTemplateID", Text("IA51"), Text("connection")); });
    ExpectError(91, objectNotSet, [&] { Update(Nothing()); });
}

TEST_F(HostZendaT, KeepsTheLatestConnectionThroughACallThatFails) {
    account_.Run("INSERT INTO CostJustVouch (ID, cCode) VALUES (1, N'2023010009')");
    const VariantHolder data = VouchData(Saved(head));
    MaxID();
    // Refused for its first argument, which is read after the connection.
    ExpectError(94, "无效使用 Null", [&] {
        companion_.Call(L"Update", VariantHolder(host::Value(host::Null{})), Text("W_Result"), Holder(context_),
                        Holder(Connection()), Text("-1"), VariantHolder(false));
    });
    EXPECT_EQ(Number(data), "2023010010");
}

TEST_F(HostZendaT, FillsTheResultTable) {
    account_.Run(staged);
    Update(Holder(context_));
    // 10 pieces, each 1.5 dearer.
    EXPECT_EQ(account_.Rows("SELECT cInvCode, iQuantity, iMoney, iCJVBCost, iCJVACost, iAdjustMoney FROM W_Result"),
              (Rows{R"({"cInvCode":"A","iQuantity":10.000000,"iMoney":250.0000,"iCJVBCost":25.0000000000,)"
                    R"("iCJVACost":26.5000000000,"iAdjustMoney":15.0000})"}));
}

TEST_F(HostZendaT, GivesTheDefaultTemplate) {
    const auto templateOf = [&](std::string_view card) {
        return server::ToValue(companion_.Call(L"GetDefaultTemplateID", Text(card), Holder(connection_)).Get());
    };
    EXPECT_EQ(templateOf("IA51"), host::Value(5101));
    EXPECT_TRUE(templateOf("IA99").IsEmpty());
}

TEST_F(HostZendaT, SavesNumbersAndPostsAVoucher) {
    account_.Run(staged);
    Update(Holder(context_));
    const XmlDocument headDocument = Saved(head);
    EXPECT_EQ(Number(VouchData(headDocument)), "2023010001");
    const XmlDocument rows = Saved("SELECT 'A' AS editprop, W_Result.* FROM W_Result");
    EXPECT_EQ(Save(headDocument, rows), std::pair(true, std::string()));
    EXPECT_EQ(MaxID(), host::Value(1));
    EXPECT_EQ(Number(VouchData(headDocument)), "2023010002");
    EXPECT_EQ(account_.Rows("SELECT ID, cCode, dCJVDate, cMaker, cAccounter, cMemo, VT_ID, VouchType "
                            "FROM CostJustVouch"),
              (Rows{R"({"ID":1,"cCode":"2023010001","dCJVDate":"2023-01-15","cMaker":null,"cAccounter":null,)"
                    R"("cMemo":"备注","VT_ID":5101,"VouchType":"22"})"}));
    EXPECT_EQ(account_.Rows("SELECT ID, cInvCode, iQuantity, iCJVACost, iAdjustMoney FROM CostJustVouchs"),
              (Rows{R"({"ID":1,"cInvCode":"A","iQuantity":10,"iCJVACost":26.5000000000,"iAdjustMoney":15.0000})"}));

    const XmlDocument savedHead = Saved("SELECT AutoId, ID, cCode FROM CostJustVouch");
    EXPECT_EQ(Post(savedHead, rows), std::pair(true, std::string()));
    EXPECT_EQ(account_.Rows("SELECT cAccounter, dAccountDate FROM CostJustVouch"),
              (Rows{R"({"cAccounter":"王会计","dAccountDate":"2023-01-15"})"}));
    EXPECT_EQ(account_.Rows("SELECT cVouCode, cInvCode, iAInPrice FROM Ia_subsidiary WHERE cVouType = N'22'"),
              (Rows{R"({"cVouCode":"2023010001","cInvCode":"A","iAInPrice":15})"}));
    EXPECT_EQ(Post(savedHead, rows), std::pair(false, std::string("单据已经记账，不能重复记账")));
}

TEST_F(HostZendaT, SaysWhyItDoesNotSave) {
    const XmlDocument none = Saved("SELECT ID FROM CostJustVouch");
    EXPECT_EQ(Save(Saved(head), none), std::pair(false, std::string("单据没有明细行，不能保存")));
    EXPECT_EQ(Post(none, none), std::pair(false, std::string("单据不存在，不能记账")));
    EXPECT_EQ(account_.Rows("SELECT ID FROM CostJustVouch"), Rows());
    EXPECT_EQ(MaxID(), host::Value(host::Null{}));
}

TEST_F(HostZendaT, TranslatesRecordsets) {
    const XmlDocument document = Saved("SELECT N'仓库' AS a, NULL AS b UNION ALL SELECT N'&<', 2");
    const host::DOMNodeList rows = document.SelectNodes("//rs:data/z:row");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0]->GetAttribute("a"), "仓库");
    EXPECT_EQ(rows[0]->GetAttribute("b"), std::nullopt);
    EXPECT_EQ(rows[1]->GetAttribute("a"), "&<");
    EXPECT_EQ(rows[1]->GetAttribute("b"), "2");
    ExpectError(3704, objectIsClosed, [&] { ToXml(Recordset()); });
    ExpectError(91, objectNotSet, [&] { ToXml(DispatchObject()); });
}

TEST_F(HostZendaT, VouchDataHoldsTheHeadOfItsOwn) {
    const XmlDocument document = Saved("SELECT 'first' AS cCode UNION ALL SELECT 'second'");
    const DispatchObject data(server::ToObject(VouchData(document).Get()));
    document.SelectSingleNode("//rs:data/z:row")->SetAttribute("cCode", "changed");
    EXPECT_EQ(server::ToText(data.Call(L"Text", Text("cCode")).Get()), "first");
    EXPECT_EQ(server::ToText(data.Call(L"Text", Text("cMemo")).Get()), "");
    ExpectError(91, objectNotSet, [&] { helper_.Call(L"XmlToVouchData", Nothing()); });
    ExpectError(13, typeMismatch, [&] { helper_.Call(L"XmlToVouchData", Text("<xml/>")); });
}
