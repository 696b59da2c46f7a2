#include "refhost/eai/EaiXmlConverter.h"

#include "refhost/Environment.h"
#include "tests/support/TestAccount.h"

#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

const std::string mappingText = "<mapping><head element='header'><field element='No' column='cCode'/>"
                                "<field element='cMemo'/><field element='dDate'/></head>"
                                "<body element='body' row='entry'><field element='cInvCode'/>"
                                "<field element='qty' column='IQUANTITY'/></body></mapping>";

class Converter : public testing::Test {
protected:
    Converter() {
        account.Run("CREATE TABLE Heads (cCode nvarchar(30), cMemo nvarchar(60), dDate datetime, bDone bit, "
                    "iCost decimal(9, 2), fRate float, cOther nvarchar(9))\nGO\n"
                    "CREATE TABLE Rows (cInvCode nvarchar(30), iQuantity float)");
        connection->Open(account.connectionString(), "", "", host::command_option::unspecified);
    }

    std::unique_ptr<host::Recordset> Open(std::string_view sql) {
        std::unique_ptr<host::Recordset> recordset = environment.CreateRecordset();
        recordset->SetCursorLocation(host::CursorLocation::client);
        recordset->Open(sql, *connection, host::CursorType::openStatic, host::LockType::readOnly,
                        host::command_option::unspecified);
        return recordset;
    }
    /// The records (`rs:data`) that filling a template of `sql` gives.
    std::string Fill(std::string_view row, std::string_view sql, bool head) {
        const std::unique_ptr<host::Recordset> columns = Open(sql);
        const std::unique_ptr<host::DOMDocument> document = environment.CreateDOMDocument();
        columns->Save(*document);
        const std::string schema = document->SelectSingleNode("/xml/s:Schema")->Xml();
        if (head) {
            converter.FillHead(row, "doc", *document, *columns, "M.Xml");
        } else {
            converter.FillBody(row, "doc", *document, *columns, "M.Xml");
        }
        EXPECT_EQ(document->SelectSingleNode("/xml/s:Schema")->Xml(), schema);
        const std::string xml = document->Xml();
        if (xml.find("<rs:data/>") != std::string::npos) {
            return {};
        }
        constexpr std::string_view begin = "<rs:data>";
        const std::size_t first = xml.find(begin) + begin.size();
        return xml.substr(first, xml.find("</rs:data>", first) - first);
    }
    std::string FillHead(std::string_view row) { return Fill(row, "select * from Heads where 1=2", true); }
    std::string FillBody(std::string_view row) { return Fill(row, "select * from Rows where 1=2", false); }
    /// What converting all records of `sql` into the element `d` gives.
    std::string ToXml(std::string_view sql, bool head) {
        const std::unique_ptr<host::DOMDocument> document = environment.CreateDOMDocument();
        EXPECT_TRUE(document->LoadXML("<d/>"));
        const std::unique_ptr<host::Recordset> records = Open(sql);
        const host::DOMNodePtr element = document->DocumentElement();
        if (head) {
            converter.HeadToXml(*document, *element, "M.Xml", *records);
        } else {
            converter.BodyToXml(*document, *element, "M.Xml", *records);
        }
        return document->Xml();
    }
    static std::string ErrorOf(const std::function<void()>& work) {
        try {
            work();
        } catch (const host::Error& error) {
            EXPECT_EQ(error.number(), -2147467259);
            return error.description();
        }
        return "no error";
    }

    test::TestAccount account;
    refhost::Environment environment;
    std::unique_ptr<host::Connection> connection = environment.CreateConnection();
    std::string text = mappingText;
    refhost::MappingStore mappings{environment, [this](const std::string&) { return std::optional(text); }};
    refhost::EaiXmlConverter converter{environment, mappings};
};

TEST_F(Converter, FillsTheHeadByTheMapping) {
    EXPECT_EQ(FillHead("<doc><header><No>7</No><cMemo>a</cMemo></header></doc>"), "<z:row cCode=\"7\" cMemo=\"a\"/>");
}

TEST_F(Converter, LeavesOutWhatTheMappingDoesNotKnow) {
    EXPECT_EQ(FillHead("<doc><header><no>1</no><cOther>x</cOther>text<!-- c --><No>7</No></header></doc>"),
              "<z:row cCode=\"7\"/>");
}

TEST_F(Converter, TellsMissingFromEmpty) {
    EXPECT_EQ(FillHead("<doc><header><No/></header></doc>"), "<z:row cCode=\"\"/>");
    EXPECT_EQ(FillHead("<doc><header/></doc>"), "<z:row/>");
}

TEST_F(Converter, TakesTheFirstOfSeveral) {
    EXPECT_EQ(FillHead("<doc><header><No>1</No><No>2</No></header><header><No>3</No></header></doc>"),
              "<z:row cCode=\"1\"/>");
}

TEST_F(Converter, DoesNotConvertTexts) {
    EXPECT_EQ(FillBody("<doc><body><entry><qty> abc </qty></entry></body></doc>"), "<z:row iQuantity=\" abc \"/>");
    const auto filled = environment.CreateDOMDocument();
    ASSERT_TRUE(filled->LoadXML(
        "<r xmlns:z='#RowsetSchema'>" +
        FillHead("<doc><header><cMemo>\"&lt;&amp;'>\n\t<b>跌价</b>&#13;&#x1F600;</cMemo></header></doc>") + "</r>"));
    EXPECT_EQ(filled->SelectSingleNode("//z:row")->GetAttribute("cMemo"), "\"<&'>\n\t跌价\r\U0001F600");
}

TEST_F(Converter, FillsARecordForEachRowOfTheBody) {
    EXPECT_EQ(
        FillBody("<doc><entry><cInvCode>no</cInvCode></entry><body><entry><cInvCode>A</cInvCode><qty>1</qty></entry>"
                 "<other/><entry/><entry><qty/></entry></body></doc>"),
        "<z:row cInvCode=\"A\" iQuantity=\"1\"/><z:row/><z:row iQuantity=\"\"/>");
}

TEST_F(Converter, AddsNoRecordWithoutElements) {
    EXPECT_EQ(FillHead("<doc/>"), "");
    EXPECT_EQ(FillBody("<doc/>"), "");
    EXPECT_EQ(FillBody("<doc><body/></doc>"), "");
}

TEST_F(Converter, AddsRecordsBehindThoseThatAreThere) {
    account.Run("INSERT INTO Rows (cInvCode) VALUES (N'old')");
    EXPECT_EQ(Fill("<doc><body><entry><cInvCode>new</cInvCode></entry></body></doc>", "select * from Rows", false),
              "<z:row cInvCode=\"old\"/><z:row cInvCode=\"new\"/>");
}

TEST_F(Converter, WritesTheHeadInTheMappingsOrder) {
    account.Run(
        "INSERT INTO Heads (dDate, cMemo, cCode, cOther) VALUES ('2023-01-02', N'<跌价> & \"x\" ', N'7', N'o')");
    EXPECT_EQ(ToXml("select * from Heads", true),
              "<d><header><No>7</No><cMemo>&lt;跌价&gt; &amp; \"x\" </cMemo><dDate>2023-01-02</dDate></header></d>");
}

TEST_F(Converter, WritesNoElementForNull) {
    account.Run("INSERT INTO Heads (cMemo) VALUES (N'')");
    EXPECT_EQ(ToXml("select * from Heads", true), "<d><header><cMemo/></header></d>");
}

TEST_F(Converter, WritesARowElementForEachRecordOfTheBody) {
    account.Run("INSERT INTO Rows (cInvCode, iQuantity) VALUES (N'A', 1.5), (NULL, NULL), (N'B', -2)");
    EXPECT_EQ(ToXml("select * from Rows", false), "<d><body><entry><cInvCode>A</cInvCode><qty>1.5</qty></entry><entry/>"
                                                  "<entry><cInvCode>B</cInvCode><qty>-2</qty></entry></body></d>");
    EXPECT_EQ(ToXml("select * from Rows where 1=2", false), "<d><body/></d>");
}

TEST_F(Converter, WritesValuesAsTexts) {
    text = "<mapping><head element='h'><field element='dDate'/><field element='bDone'/><field element='iCost'/>"
           "<field element='fRate'/></head><body element='b' row='r'/></mapping>";
    account.Run("INSERT INTO Heads (dDate, bDone, iCost, fRate) VALUES ('2023-01-02 03:04:05', 1, 12.50, 0.1)");
    EXPECT_EQ(ToXml("select * from Heads", true),
              "<d><h><dDate>2023-01-02 03:04:05</dDate><bDone>1</bDone><iCost>12.5</iCost><fRate>0.1</fRate></h></d>");
}

TEST_F(Converter, RefusesAMappingOfAColumnThatTheRecordDoesNotHave) {
    text = "<mapping><head element='header'><field element='No' column='cNumber'/></head>"
           "<body element='body' row='entry'><field element='nothing'/></body></mapping>";
    EXPECT_EQ(ErrorOf([this] { FillHead("<doc/>"); }), "映射文件M.Xml无效：记录中没有列cNumber。");
    EXPECT_EQ(ErrorOf([this] { FillBody("<doc/>"); }), "映射文件M.Xml无效：记录中没有列nothing。");
    EXPECT_EQ(ErrorOf([this] { ToXml("select * from Heads", true); }), "映射文件M.Xml无效：记录中没有列cNumber。");
    EXPECT_EQ(ErrorOf([this] { ToXml("select * from Rows", false); }), "映射文件M.Xml无效：记录中没有列nothing。");
}

TEST_F(Converter, TellsAnErrorOfTheRecordFromAMissingColumn) {
    const std::unique_ptr<host::Recordset> columns = Open("select * from Heads");
    columns->Close();
    const std::unique_ptr<host::DOMDocument> document = environment.CreateDOMDocument();
    try {
        converter.FillHead("<doc/>", "doc", *document, *columns, "M.Xml");
        ADD_FAILURE() << "no error";
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), 3704) << error.description();
    }
}

TEST_F(Converter, RefusesABrokenMapping) {
    text = "<mapping>";
    EXPECT_EQ(ErrorOf([this] { FillHead("<doc/>"); }), "映射文件M.Xml无效：不是格式正确的XML。");
}

TEST_F(Converter, RefusesWhatIsNoDocumentOrNoTemplate) {
    EXPECT_EQ(ErrorOf([this] { FillHead("<doc"); }), "单据不是格式正确的XML。");
    const std::unique_ptr<host::DOMDocument> other = environment.CreateDOMDocument();
    ASSERT_TRUE(other->LoadXML("<xml/>"));
    const std::unique_ptr<host::Recordset> columns = Open("select * from Heads");
    EXPECT_EQ(ErrorOf([&] { converter.FillHead("<doc><header/></doc>", "doc", *other, *columns, "M.Xml"); }),
              "模板不是保存为XML的记录集。");
}

} // namespace
