#include "refhost/Environment.h"
#include "refhost/eai/Login.h"
#include "refhost/trace/Traced.h"
#include "tests/support/TestAccount.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ProvisionComponents : public testing::Test {
protected:
    ProvisionComponents() { connection->Open(account.connectionString(), "", "", host::command_option::unspecified); }

    /// Records with the columns of `table` and these `z:row` elements.
    std::unique_ptr<host::DOMDocument> Records(const std::string& table, const std::string& rows) {
        const std::unique_ptr<host::Recordset> columns = environment.CreateRecordset();
        columns->Open("select *,convert(varchar(30),'') as cwhname,1 as bEai from " + table + " where 1=2", *connection,
                      host::CursorType::openStatic, host::LockType::readOnly, host::command_option::unspecified);
        std::unique_ptr<host::DOMDocument> document = environment.CreateDOMDocument();
        columns->Save(*document);
        std::string xml = document->Xml();
        const std::string empty = "<rs:data/>";
        xml.replace(xml.find(empty), empty.size(), "<rs:data>" + rows + "</rs:data>");
        EXPECT_TRUE(document->LoadXML(xml));
        return document;
    }
    /// Saves and gives the message and the result document.
    std::pair<std::string, std::string> Save(const std::string& headRows, const std::string& bodyRows,
                                             const std::string& type = "48") {
        const auto head = Records("IA_DecReady", headRows);
        const auto body = Records("IA_DecReadys", bodyRows);
        const auto result = environment.CreateDOMDocument();
        std::string message;
        environment.CreateIaVoucherService()->SaveVoucher(type, *head, *body, message, *connection, *result);
        return {message, result->Xml()};
    }
    std::vector<std::string> Heads() const { return account.Rows("select ID, cDecCode from IA_DecReady order by ID"); }
    std::vector<std::string> Bodies() const {
        return account.Rows("select ID, cInvCode, iQuantity, iThisPrice from IA_DecReadys order by AutoID");
    }

    test::TestAccount account;
    refhost::Trace trace{(account.folder() / "trace.jsonl").string()};
    refhost::Traced<refhost::Environment> environment{&trace};
    refhost::Login login{account.LoginXml(), environment};
    std::unique_ptr<host::Connection> connection = environment.CreateConnection();
};

const std::string head = "<z:row cDecCode=\"D1\"/>";

TEST_F(ProvisionComponents, SavesHeadAndRowsUnderTheNextNumber) {
    account.Run("INSERT INTO IA_DecReady (ID, cDecCode) VALUES (41, N'D0')");
    EXPECT_EQ(Save("<z:row cDecCode=\"D'1\" cVouchType=\"48\" VT_ID=\"4801\" dVeriDate=\"\" bEai=\"1\" ID=\"5\"/>",
                   "<z:row AutoID=\"9\" cInvCode=\"A\" iQuantity=\"1.5\" cwhname=\"x\"/><z:row cInvCode=\"\"/>"),
              std::pair(std::string(), std::string()));
    EXPECT_THAT(account.Rows("select ID, cDecCode, cVouchType, VT_ID, dVeriDate from IA_DecReady where ID>41"),
                ElementsAre(R"({"ID":42,"cDecCode":"D'1","cVouchType":"48","VT_ID":4801,"dVeriDate":null})"));
    EXPECT_THAT(Bodies(), ElementsAre(R"({"ID":42,"cInvCode":"A","iQuantity":1.5,"iThisPrice":null})",
                                      R"({"ID":42,"cInvCode":null,"iQuantity":null,"iThisPrice":null})"));
}

TEST_F(ProvisionComponents, DoesNotSaveWithoutHead) {
    EXPECT_EQ(Save("", "<z:row cInvCode=\"A\"/>").first, "没有单据头，不能保存。");
    EXPECT_THAT(Bodies(), IsEmpty());
}

TEST_F(ProvisionComponents, DoesNotSaveOtherTypes) {
    EXPECT_EQ(Save(head, "", "49").first, "单据类型49不能保存。");
    EXPECT_THAT(Heads(), IsEmpty());
}

TEST_F(ProvisionComponents, ListsRowsBeyondTheStockOfTheirWarehouse) {
    account.Run("INSERT INTO CurrentStock (cWhCode, cInvCode, iQuantity) VALUES (N'01', N'A', 2), (N'01', N'A', 1), "
                "(N'02', N'A', 10), (N'01', N'B', NULL)");
    const auto [message, result] =
        Save(head, "<z:row cWhCode=\"01\" cInvCode=\"A\" iQuantity=\"3\"/>"
                   "<z:row cWhCode=\"01\" cInvCode=\"A\" iQuantity=\"3.01\"/>"
                   "<z:row cWhCode=\"03\" cInvCode=\"A\" iQuantity=\"99\"/>"
                   "<z:row cInvCode=\"A\" iQuantity=\"13\"/><z:row cInvCode=\"A\" iQuantity=\"14\"/>"
                   "<z:row cWhCode=\"01\" cInvCode=\"B\" iQuantity=\"99\"/><z:row cInvCode=\"C'\" iQuantity=\"99\"/>"
                   "<z:row cWhCode=\"01\" cInvCode=\"A\"/><z:row cWhCode=\"01\" cInvCode=\"A\" iQuantity=\"\"/>");
    EXPECT_EQ(message, "");
    EXPECT_EQ(result, "<result xmlns:z=\"#RowsetSchema\"><zeroout><z:row cinvcode=\"A\"/><z:row cinvcode=\"A\"/>"
                      "</zeroout></result>");
    EXPECT_THAT(Heads(), IsEmpty());
    EXPECT_THAT(Bodies(), IsEmpty());
}

TEST_F(ProvisionComponents, ListsRowsBeyondTheBudgetOfTheirProject) {
    account.Run("INSERT INTO ItemBudget (cItem_class, cItemCode, iBudget) VALUES (N'97', N'P1', 10), "
                "(N'97', N'P2', NULL), (N'98', N'P1', 1)");
    const auto [message, result] =
        Save(head, "<z:row cInvCode=\"A\" cItem_class=\"97\" cItemCode=\"P1\" iThisPrice=\"10\"/>"
                   "<z:row cInvCode=\"B&amp;\" cItem_class=\"97\" cItemCode=\"P1\" iThisPrice=\"10.01\"/>"
                   "<z:row cInvCode=\"C\" cItem_class=\"97\" cItemCode=\"P2\" iThisPrice=\"99\"/>"
                   "<z:row cInvCode=\"D\" cItem_class=\"97\" cItemCode=\"P3\" iThisPrice=\"99\"/>"
                   "<z:row cInvCode=\"E\" cItem_class=\"97\" cItemCode=\"P1\"/>"
                   "<z:row cInvCode=\"F\" iThisPrice=\"99\"/>");
    EXPECT_EQ(message, "");
    EXPECT_EQ(result, "<result xmlns:z=\"#RowsetSchema\"><itemcheck><z:row cinvcode=\"B&amp;\"/></itemcheck></result>");
    EXPECT_THAT(Heads(), IsEmpty());
}

TEST_F(ProvisionComponents, ListsBothInOneResult) {
    account.Run("INSERT INTO CurrentStock (cInvCode, iQuantity) VALUES (N'A', 1)\nGO\n"
                "INSERT INTO ItemBudget (cItem_class, cItemCode, iBudget) VALUES (N'97', N'P1', 10)");
    EXPECT_EQ(
        Save(head, "<z:row cInvCode=\"A\" iQuantity=\"2\" cItem_class=\"97\" cItemCode=\"P1\" iThisPrice=\"11\"/>")
            .second,
        "<result xmlns:z=\"#RowsetSchema\"><zeroout><z:row cinvcode=\"A\"/></zeroout>"
        "<itemcheck><z:row cinvcode=\"A\"/></itemcheck></result>");
}

TEST_F(ProvisionComponents, SaysWhichNumberIsNone) {
    EXPECT_EQ(Save(head, "<z:row cInvCode=\"A\" iThisPrice=\"abc\"/>").first, "列iThisPrice的值abc不是数值。");
}

/// A type that is missing would give another column's to those behind it.
TEST_F(ProvisionComponents, DoesNotSaveRecordsWhoseSchemaLacksAType) {
    const auto records = environment.CreateDOMDocument();
    ASSERT_TRUE(records->LoadXML(
        "<xml xmlns:s=\"uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882\""
        " xmlns:dt=\"uuid:C2F41010-65B3-11d1-A29F-00AA00C14882\""
        " xmlns:rs=\"urn:schemas-microsoft-com:rowset\" xmlns:z=\"#RowsetSchema\"><s:Schema id=\"RowsetSchema\">"
        "<s:ElementType name=\"row\"><s:AttributeType name=\"cDecCode\"/></s:ElementType></s:Schema>"
        "<rs:data><z:row cDecCode=\"D1\"/></rs:data></xml>"));
    const auto result = environment.CreateDOMDocument();
    std::string message;
    environment.CreateIaVoucherService()->SaveVoucher("48", *records, *records, message, *connection, *result);
    EXPECT_EQ(message, "记录集的架构不完整。");
    EXPECT_THAT(Heads(), IsEmpty());
}

TEST_F(ProvisionComponents, ReportsAnErrorOfTheDatabaseAsMessage) {
    EXPECT_EQ(Save("<z:row cDecCode=\"1234567890123456789012345678901\"/>", "").first,
              "String or binary data would be truncated.");
    EXPECT_THAT(Heads(), IsEmpty());
}

TEST_F(ProvisionComponents, OpensTheDefaultTemplateOfAType) {
    account.Run("INSERT INTO VoucherTemplates (VT_ID, cVouchType, bDefault) VALUES (4802, N'48', 0), (4901, N'49', 0)");
    const auto service = environment.CreateIaVoucherService();
    std::string message = "as it was";
    std::string further;
    std::unique_ptr<host::Recordset> found;
    ASSERT_TRUE(service->VoucherInit(login, message));
    ASSERT_TRUE(service->GetDefaultTemplate("48", found, message, further));
    EXPECT_EQ(found->FieldValue("VT_ID"), host::Value(4801));
    EXPECT_EQ(found->RecordCount(), 1);
    for (const char* type : {"49", "", "'"}) {
        EXPECT_FALSE(service->GetDefaultTemplate(type, found, message, further)) << type;
        EXPECT_TRUE(found->AtEOF() && found->AtBOF());
    }
    EXPECT_EQ(message, "as it was");
}

TEST_F(ProvisionComponents, NeedsALoginForATemplate) {
    std::unique_ptr<host::Recordset> found;
    std::string text;
    try {
        environment.CreateIaVoucherService()->GetDefaultTemplate("48", found, text, text);
        FAIL() << "no error";
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), 91);
    }
}

TEST_F(ProvisionComponents, RefusesALoginWhoseAccountCannotBeOpened) {
    refhost::Login lost("<login QxDbName=\"Provider=None\"/>", environment);
    std::string message;
    EXPECT_FALSE(environment.CreateIaVoucherService()->VoucherInit(lost, message));
    EXPECT_EQ(message, "Provider cannot be found. It may not be properly installed.");
    EXPECT_TRUE(environment.CreateIaVoucherService()->VoucherInit(login, message));
}

TEST_F(ProvisionComponents, RefusesAClosedMonth) {
    account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 1, 0), (2023, 2, 1), (2022, 1, 1)");
    std::string message;
    EXPECT_TRUE(environment.CreateProvisionPreCheck()->Check(login, message));
    EXPECT_EQ(message, "");
    account.Run("UPDATE GL_mend SET bflag_IA=1 WHERE iyear=2023 AND iperiod=1");
    EXPECT_FALSE(environment.CreateProvisionPreCheck()->Check(login, message));
    EXPECT_EQ(message, "2023年1月已结账，不能录入跌价准备单。");
}

TEST_F(ProvisionComponents, TakesAMonthThatIsNotThereForOpen) {
    std::string message;
    EXPECT_TRUE(environment.CreateProvisionPreCheck()->Check(login, message));
}

TEST_F(ProvisionComponents, ShareOneConnectionAndMarkWhatTheyAsk) {
    std::string message;
    std::string further;
    std::unique_ptr<host::Recordset> found;
    for (int document = 0; document < 2; ++document) {
        const auto service = environment.CreateIaVoucherService();
        ASSERT_TRUE(service->VoucherInit(login, message));
        ASSERT_TRUE(service->GetDefaultTemplate("48", found, message, further));
        ASSERT_TRUE(environment.CreateProvisionPreCheck()->Check(login, message));
    }
    Save(head, "<z:row cInvCode=\"A\" iQuantity=\"1\"/>");
    trace.Flush();
    const std::vector<std::string> lines = test::ReadLines(account.folder() / "trace.jsonl");
    const auto marked = [](const std::string& line) { return line.find("\"host\":true") != std::string::npos; };
    // The test's own: its connection and the two templates.
    EXPECT_EQ(std::ranges::count_if(lines, [&](const std::string& line) { return !marked(line); }), 3);
    EXPECT_EQ(
        std::ranges::count_if(
            lines, [&](const std::string& line) { return marked(line) && line.starts_with(R"({"op":"Connect")"); }),
        1);
}

} // namespace
