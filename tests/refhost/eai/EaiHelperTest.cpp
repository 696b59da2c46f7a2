#include "refhost/eai/EaiHelper.h"

#include "host/Error.h"
#include "refhost/xml/Document.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using refhost::EaiHelper;
using refhost::xml::Document;

TEST(EaiHelper, ResultDocumentCarriesDocidAndProc) {
    EXPECT_EQ(EaiHelper().MakeResultDoc("D1", "ADD"), "<qxinterface docid=\"D1\" proc=\"ADD\"/>");
    EXPECT_EQ(EaiHelper().MakeResultDoc("", ""), "<qxinterface docid=\"\" proc=\"\"/>");
    EXPECT_EQ(EaiHelper().MakeResultDoc("\"<&>\n", "仓'"),
              "<qxinterface docid=\"&quot;&lt;&amp;&gt;&#xA;\" proc=\"仓'\"/>");
}

TEST(EaiHelper, ErrorResultCarriesCodeAndMessage) {
    EXPECT_EQ(EaiHelper().MakeErrorResult("101", "qxinterface结点不存在", ""),
              "<error code=\"101\" dsc=\"qxinterface结点不存在\"/>");
}

TEST(EaiHelper, ErrorResultCarriesADetailOnlyWhenThereIsOne) {
    EXPECT_EQ(EaiHelper().MakeErrorResult("-2147217900", "near '<'.", "a & b"),
              "<error code=\"-2147217900\" dsc=\"near '&lt;'.\" detail=\"a &amp; b\"/>");
}

TEST(EaiHelper, TextsSurviveTheRoundTrip) {
    const std::string text = "a\"b'c<d>e&f\tg\nh\ri\r\n仓库\xF0\xA0\x80\x80]]>";
    Document document;
    ASSERT_TRUE(document.LoadXML(EaiHelper().MakeErrorResult(text, text, text)));
    for (const char* name : {"code", "dsc", "detail"})
        EXPECT_EQ(document.DocumentElement()->GetAttribute(name), text);
}

TEST(EaiHelper, OutcomesAreItemsInOrder) {
    EaiHelper helper;
    Document result;
    ASSERT_TRUE(result.LoadXML(helper.MakeResultDoc("1", "add")));
    helper.AddResultItem(result, "仓库编码：01", 0, "ok");
    helper.AddResultItem(result, "", 999, "\"bad\" <row>");
    helper.AddResultItem(result, "k", -2147467259, "");
    EXPECT_EQ(result.Xml(), "<qxinterface docid=\"1\" proc=\"add\"><item key=\"仓库编码：01\" code=\"0\" dsc=\"ok\"/>"
                            "<item key=\"\" code=\"999\" dsc=\"&quot;bad&quot; &lt;row&gt;\"/>"
                            "<item key=\"k\" code=\"-2147467259\" dsc=\"\"/></qxinterface>");
}

TEST(EaiHelper, OutcomeNeedsARoot) {
    EaiHelper helper;
    Document empty;
    try {
        helper.AddResultItem(empty, "", 0, "ok");
        FAIL() << "no error";
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), 91);
        EXPECT_EQ(error.description(), "对象变量或 With 块变量未设置");
    }
}

TEST(EaiHelper, MissingAttributeReadsAsTheEmptyText) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<a roottag=\"row\" empty=\"\"/>"));
    const host::DOMNodePtr root = document.DocumentElement();
    EXPECT_EQ(EaiHelper().GetAttr(root.get(), "roottag"), "row");
    EXPECT_EQ(EaiHelper().GetAttr(root.get(), "empty"), "");
    EXPECT_EQ(EaiHelper().GetAttr(root.get(), "docid"), "");
    EXPECT_EQ(EaiHelper().GetAttr(nullptr, "roottag"), "");
}

TEST(EaiHelper, MissingChildReadsAsTheEmptyText) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<a><b> 1<c>2</c></b><b>second</b><e/></a>"));
    const host::DOMNodePtr root = document.DocumentElement();
    EXPECT_EQ(EaiHelper().GetChildText(root.get(), "b"), " 12");
    EXPECT_EQ(EaiHelper().GetChildText(root.get(), "e"), "");
    EXPECT_EQ(EaiHelper().GetChildText(root.get(), "c"), "");
    EXPECT_EQ(EaiHelper().GetChildText(nullptr, "b"), "");
}

} // namespace
