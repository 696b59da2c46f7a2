// The integration helper and the converter of KovraHost.dll.
#include "tests/support/com/ExpectError.h"
#include "tests/support/com/HostFixture.h"

#include <optional>
#include <utility>
#include <vector>

namespace {

using server::DispatchObject;
using server::VariantHolder;
using server::XmlDocument;
using test::ExpectError;
using test::objectNotSet;
using test::typeMismatch;

class HostEaiHelper : public test::HostTest {
protected:
    std::string Attr(const VariantHolder& element, std::string_view name) {
        return server::ToText(helper_.Call(L"GetAttr", element, Text(name)).Get());
    }
    std::string ChildText(const VariantHolder& node, std::string_view name) {
        return server::ToText(helper_.Call(L"GetChildText", node, Text(name)).Get());
    }
    void AddItem(const VariantHolder& document, std::string_view key, int code, std::string_view description, int flag,
                 std::string_view u1, std::string_view u2, std::string_view u3, std::string_view u4) {
        helper_.Call(L"AddResultItem", document, Text(key), VariantHolder(code), Text(description), VariantHolder(flag),
                     Text(u1), Text(u2), Text(u3), Text(u4));
    }

    DispatchObject helper_ = Make(L"KovraHost.EaiHelper");
};

class HostEaiXmlConverter : public test::HostTest {
protected:
    /// A template of a query without rows, saved into a document.
    std::pair<DispatchObject, XmlDocument> Template(std::string_view sql) {
        constexpr int persistXml = 1;
        DispatchObject columns = Recordset(connection_, sql);
        XmlDocument document;
        columns.Call(L"Save", Holder(document), VariantHolder(persistXml));
        return {std::move(columns), std::move(document)};
    }
    void Fill(const wchar_t* operation, std::string_view row, const XmlDocument& records, const DispatchObject& columns,
              std::string_view mapping = "EaiProof.Xml") {
        converter_.Call(operation, Text(row), Text("document"), Holder(records), Holder(columns), Text(mapping),
                        Nothing());
    }
    void Write(const wchar_t* operation, const VariantHolder& element, const DispatchObject& records) {
        VariantHolder target(server::ToObject(element.Get()).Get());
        VariantHolder notExamined[2];
        converter_.Call(operation, VariantHolder::ByReference(target), Text("StoreInOutXmlRs.Xml"), Holder(records),
                        VariantHolder::VariantReference(notExamined[0]),
                        VariantHolder::VariantReference(notExamined[1]));
        EXPECT_EQ(V_VT(&notExamined[0].Get()), VT_EMPTY);
        EXPECT_EQ(V_VT(&notExamined[1].Get()), VT_EMPTY);
    }

    DispatchObject connection_ = Connection();
    DispatchObject converter_ = Make(L"KovraHost.EaiXmlConverter");
};

constexpr std::string_view provision =
    "<document><header><Deccode>D1</Deccode><vouchtype>48</vouchtype><cMemo/><unknown>x</unknown></header>"
    "<body><entry><cInvCode>A&amp;B</cInvCode><iThisPrice>1.50</iThisPrice></entry>"
    "<entry><cInvCode>存货</cInvCode></entry></body></document>";
constexpr std::string_view headTemplate = "Select *,convert(varchar(30),'') as cdepname,convert(varchar(30),'') as "
                                          "cpersonname,1 as bEai From ia_decready Where 1=2";
constexpr std::string_view bodyTemplate = "Select *,convert(varchar(30),'') as cwhname From ia_decreadys Where 1=2";

} // namespace

TEST_F(HostEaiHelper, ReadsAttributes) {
    const XmlDocument document = Document("<qxinterface roottag=\"行\" docid=\"\"/>");
    VariantHolder root = Holder(*document.DocumentElement());
    EXPECT_EQ(Attr(root, "roottag"), "行");
    EXPECT_EQ(Attr(root, "docid"), "");
    EXPECT_EQ(Attr(root, "proc"), "");
    EXPECT_EQ(Attr(VariantHolder::ByReference(root), "roottag"), "行");
    EXPECT_EQ(Attr(VariantHolder::VariantReference(root), "roottag"), "行");
    EXPECT_EQ(Attr(Nothing(), "roottag"), "");
    ExpectError(13, typeMismatch, [&] { Attr(Text("<a/>"), "roottag"); });
    ExpectError(13, typeMismatch, [&] { Attr(Holder(helper_), "roottag"); });
}

TEST_F(HostEaiHelper, ReadsTheTextOfAChild) {
    const XmlDocument document = Document("<row><cWhCode>01</cWhCode><cMemo>a<b>仓库</b></cMemo><cFree1/></row>");
    const VariantHolder row = Holder(*document.DocumentElement());
    EXPECT_EQ(ChildText(row, "cWhCode"), "01");
    EXPECT_EQ(ChildText(row, "cMemo"), "a仓库");
    EXPECT_EQ(ChildText(row, "cFree1"), "");
    EXPECT_EQ(ChildText(row, "cFree2"), "");
    EXPECT_EQ(ChildText(Nothing(), "cWhCode"), "");
}

TEST_F(HostEaiHelper, MakesResults) {
    VariantHolder detail = Text("");
    EXPECT_EQ(server::ToText(helper_
                                 .Call(L"MakeErrorResult", Text("102"), Text("12月份已结账,不能导入科目设置"),
                                       VariantHolder::ByReference(detail))
                                 .Get()),
              "<error code=\"102\" dsc=\"12月份已结账,不能导入科目设置\"/>");
    EXPECT_EQ(server::ToText(helper_.Call(L"MakeErrorResult", Text("5"), Text("a<\"b\""), Text("d")).Get()),
              "<error code=\"5\" dsc=\"a&lt;&quot;b&quot;\" detail=\"d\"/>");
    VariantHolder operation = Text("ADD");
    EXPECT_EQ(server::ToText(helper_.Call(L"MakeResultDoc", Text("D&1"), VariantHolder::ByReference(operation)).Get()),
              "<qxinterface docid=\"D&amp;1\" proc=\"ADD\"/>");
}

TEST_F(HostEaiHelper, AddsOutcomes) {
    const XmlDocument document = Document("<qxinterface docid=\"D\" proc=\"ADD\"/>");
    AddItem(Holder(document), "仓库编码：01", 0, "ok", 0, "", "", "", "");
    AddItem(Holder(document), "", 999, "line\nbreak", 3, "first", "", "third", "");
    AddItem(Holder(document), "last", 101, "no", 0, "", "", "", "");
    const host::DOMNodeList items = document.SelectNodes("/qxinterface/item");
    ASSERT_EQ(items.size(), 3U);
    using Attributes = std::vector<std::optional<std::string>>;
    const auto attributes = [](const host::DOMNode& item) {
        Attributes all;
        for (const char* name : {"key", "code", "dsc", "flag", "u1", "u2", "u3", "u4"})
            all.push_back(item.GetAttribute(name));
        return all;
    };
    constexpr std::nullopt_t no = std::nullopt;
    EXPECT_EQ(attributes(*items[0]), (Attributes{"仓库编码：01", "0", "ok", no, no, no, no, no}));
    EXPECT_EQ(attributes(*items[1]), (Attributes{"", "999", "line\nbreak", "3", "first", no, "third", no}));
    EXPECT_EQ(attributes(*items[2]), (Attributes{"last", "101", "no", no, no, no, no, no}));
    EXPECT_EQ(items[1]->AttributeAt(0), "") << "the key comes first";
    EXPECT_EQ(items[1]->AttributeAt(3), "3") << "the flag follows the description";
}

TEST_F(HostEaiHelper, AddsManyOutcomesInOrder) {
    const XmlDocument document = Document("<qxinterface/>");
    for (int i = 0; i < 1000; ++i)
        AddItem(Holder(document), std::to_string(i), 101, "no", i % 2, "", std::to_string(i), "", "");
    const host::DOMNodeList items = document.SelectNodes("/qxinterface/item");
    ASSERT_EQ(items.size(), 1000U);
    EXPECT_EQ(items[998]->Xml(), "<item key=\"998\" code=\"101\" dsc=\"no\" u2=\"998\"/>");
    EXPECT_EQ(items[999]->Xml(), "<item key=\"999\" code=\"101\" dsc=\"no\" flag=\"1\" u2=\"999\"/>");
}

TEST_F(HostEaiHelper, NeedsADocumentForAnOutcome) {
    ExpectError(91, objectNotSet, [&] { AddItem(Nothing(), "", 0, "ok", 0, "", "", "", ""); });
    ExpectError(91, objectNotSet, [&] { AddItem(Holder(XmlDocument()), "", 0, "ok", 0, "", "", "", ""); });
    ExpectError(13, typeMismatch, [&] { AddItem(Holder(helper_), "", 0, "ok", 0, "", "", "", ""); });
    const XmlDocument document = Document("<a/>");
    ExpectError(13, typeMismatch,
                [&] { AddItem(Holder(*document.DocumentElement()), "", 0, "ok", 0, "", "", "", ""); });
}

TEST_F(HostEaiXmlConverter, FillsHeadRecords) {
    const auto [columns, records] = Template(headTemplate);
    Fill(L"FillHead", provision, records, columns);
    const host::DOMNodeList rows = records.SelectNodes("//rs:data/z:row");
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0]->GetAttribute("cDecCode"), "D1");
    EXPECT_EQ(rows[0]->GetAttribute("cVouchType"), "48");
    EXPECT_EQ(rows[0]->GetAttribute("cMemo"), "");
    EXPECT_EQ(rows[0]->GetAttribute("cMaker"), std::nullopt);
    EXPECT_EQ(rows[0]->GetAttribute("unknown"), std::nullopt);
}

TEST_F(HostEaiXmlConverter, FillsBodyRecords) {
    const auto [columns, records] = Template(bodyTemplate);
    Fill(L"FillBody", provision, records, columns);
    const host::DOMNodeList rows = records.SelectNodes("//rs:data/z:row");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0]->GetAttribute("cInvCode"), "A&B");
    EXPECT_EQ(rows[0]->GetAttribute("iThisPrice"), "1.50");
    EXPECT_EQ(rows[1]->GetAttribute("cInvCode"), "存货");
    EXPECT_EQ(rows[1]->GetAttribute("iThisPrice"), std::nullopt);
}

TEST_F(HostEaiXmlConverter, RaisesWhatItCannotFill) {
    const auto [columns, records] = Template(headTemplate);
    ExpectError(-2147467259, "单据不是格式正确的XML。", [&] { Fill(L"FillHead", "<a>", records, columns); });
    ExpectError(-2147467259, "映射文件Other.Xml无效：没有这个文件。",
                [&] { Fill(L"FillHead", provision, records, columns, "Other.Xml"); });
    ExpectError(-2147467259, "映射文件StoreInOutXmlRs.Xml无效：记录中没有列ID。", [&] {
        const DispatchObject others = Recordset(connection_, "SELECT cCode FROM rdrecord WHERE 1=2");
        Fill(L"FillHead", provision, records, others, "StoreInOutXmlRs.Xml");
    });
    ExpectError(13, typeMismatch, [&] {
        converter_.Call(L"FillHead", Text(provision), Text("document"), Text("text"), Holder(columns),
                        Text("EaiProof.Xml"), Nothing());
    });
}

TEST_F(HostEaiXmlConverter, WritesHeadAndBodyIntoAnElement) {
    account_.Run("INSERT INTO rdrecord (ID, bRdFlag, cCode, cWhCode, dDate, cDefine14) VALUES "
                 "(7, 1, N'R1', N'01', '2023-01-05', N'路1号')\nGO\n"
                 "INSERT INTO rdrecords (ID, cInvCode, iQuantity) VALUES (7, N'A', 1.5), (7, N'B', NULL), "
                 "(8, N'C', 1)");
    const XmlDocument document = Document("<envelope/>");
    const host::DOMNodePtr element = document.DocumentElement();
    Write(L"HeadToXml", Holder(*element), Recordset(connection_, "select * from rdrecord"));
    Write(L"BodyToXml", Holder(*element), Recordset(connection_, "select * from rdrecords where id=7 order by AutoID"));

    ASSERT_EQ(element->ChildNodes().size(), 2U);
    const host::DOMNodePtr head = document.SelectSingleNode("/envelope/header");
    ASSERT_NE(head, nullptr);
    for (const auto& [name, text] :
         {std::pair("ID", "7"), std::pair("bRdFlag", "1"), std::pair("cCode", "R1"), std::pair("cWhCode", "01"),
          std::pair("dDate", "2023-01-05"), std::pair("cDefine14", "路1号")}) {
        const host::DOMNodePtr field = head->SelectSingleNode(name);
        ASSERT_NE(field, nullptr) << name;
        EXPECT_EQ(field->Text(), text) << name;
    }
    EXPECT_EQ(head->SelectSingleNode("cMemo"), nullptr) << "Null gives no element";
    const host::DOMNodeList entries = document.SelectNodes("/envelope/body/entry");
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0]->SelectSingleNode("cInvCode")->Text(), "A");
    EXPECT_EQ(entries[0]->SelectSingleNode("iQuantity")->Text(), "1.5");
    EXPECT_EQ(entries[1]->SelectSingleNode("cInvCode")->Text(), "B");
    EXPECT_EQ(entries[1]->SelectSingleNode("iQuantity"), nullptr);
}

TEST_F(HostEaiXmlConverter, WritesIntoElementsAlone) {
    const DispatchObject records = Recordset(connection_, "select * from rdrecord");
    const XmlDocument document = Document("<envelope/>");
    ExpectError(91, objectNotSet, [&] { Write(L"HeadToXml", Nothing(), records); });
    ExpectError(13, typeMismatch, [&] { Write(L"HeadToXml", Holder(document), records); });
    ExpectError(13, typeMismatch, [&] { Write(L"BodyToXml", Holder(converter_), records); });
}
