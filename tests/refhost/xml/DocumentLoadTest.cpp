#include "refhost/xml/Document.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

using refhost::xml::Document;

/// The document's form after loading, or "refused".
std::string Reload(std::string_view xml) {
    Document document;
    return document.LoadXML(xml) ? document.Xml() : "refused";
}

TEST(DocumentLoad, EmptyDocumentHasNoRootAndNoText) {
    const Document document;
    EXPECT_EQ(document.DocumentElement(), nullptr);
    EXPECT_EQ(document.Xml(), "");
    EXPECT_EQ(document.SelectSingleNode("a"), nullptr);
}

TEST(DocumentLoad, IllFormedTextIsRefusedAndLeavesTheDocumentEmpty) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<a/>"));
    EXPECT_FALSE(document.LoadXML("<a><b></a>"));
    EXPECT_EQ(document.DocumentElement(), nullptr);
    EXPECT_EQ(document.Xml(), "");
    EXPECT_TRUE(document.LoadXML("<c/>"));
    EXPECT_EQ(document.Xml(), "<c/>");
}

TEST(DocumentLoad, TextThatStandsNowhereIsRefused) { EXPECT_EQ(Reload(std::string_view()), "refused"); }

TEST(DocumentLoad, ErrorNamesTheLine) {
    Document document;
    ASSERT_FALSE(document.LoadXML("<a>\n<b>\n</a>"));
    EXPECT_TRUE(document.LoadError().starts_with("line 3: ")) << document.LoadError();
    ASSERT_TRUE(document.LoadXML("<a/>"));
    EXPECT_EQ(document.LoadError(), "");
}

class RefusedText : public testing::TestWithParam<const char*> {};

TEST_P(RefusedText, IsRefused) { EXPECT_EQ(Reload(GetParam()), "refused"); }

INSTANTIATE_TEST_SUITE_P(DocumentLoad, RefusedText,
                         testing::Values("", " ", "text", "<a>", "</a>", "<a/><b/>", "<a/>text", "text<a/>", "<a x=1/>",
                                         "<a x/>", "<a x='1' x='2'/>", "<a x=\"<\"/>", "<a>&</a>", "<a>&nbsp;</a>",
                                         "<a>]]></a>", "<a><!-- -- --></a>", "<1a/>", "<a b='1'c='2'/>", "<A></a>",
                                         "<a>&#0;</a>", "<a>&#xD800;</a>", "<a>&#xFFFF;</a>", "<a>\x01</a>",
                                         "\n<?xml version=\"1.0\"?><a/>", "<?xml version=\"1.1\"?><a/>",
                                         "<?xml version=\"2.0\"?><a/>", "<?xml encoding=\"UTF-8\"?><a/>",
                                         "<?xml version=\"1.0\" standalone=\"maybe\"?><a/>", "<a><![CDATA[x]]</a>",
                                         "<a><?xml version=\"1.0\"?></a>"));

class NamespaceError : public testing::TestWithParam<const char*> {};

TEST_P(NamespaceError, IsRefused) { EXPECT_EQ(Reload(GetParam()), "refused"); }

INSTANTIATE_TEST_SUITE_P(DocumentLoad, NamespaceError,
                         testing::Values("<z:a/>", "<a z:b='1'/>", "<a><z:b xmlns:z='u'/><z:c/></a>",
                                         "<a:b:c xmlns:a='u'/>", "<:a/>", "<a: xmlns:a='u'/>", "<a xmlns:z=''/>",
                                         "<a xmlns:xmlns='u'/>", "<a xmlns:xml='u'/>",
                                         "<a xmlns:p='u' xmlns:q='u' p:x='1' q:x='2'/>", "<xmlns:a/>"));

TEST(DocumentLoad, NamespacesInScopeAreAccepted) {
    const std::string nested = "<z:a xmlns:z=\"u\"><z:b xmlns:z=\"v\" z:x=\"1\"/><z:c xml:lang=\"zh\"/></z:a>";
    EXPECT_EQ(Reload(nested), nested);
    const std::string sameLocalName = "<a xmlns:p=\"u\" xmlns:q=\"v\" p:x=\"1\" q:x=\"2\" x=\"3\"/>";
    EXPECT_EQ(Reload(sameLocalName), sameLocalName);
}

TEST(DocumentLoad, EncodingOfTheDeclarationIsIgnored) {
    for (const char* encoding : {"gb2312", "GBK", "UTF-16", "utf-8", "ISO-8859-1", "no-such-encoding"}) {
        Document document;
        ASSERT_TRUE(
            document.LoadXML("<?xml version=\"1.0\" encoding=\"" + std::string(encoding) + "\"?><a>仓库编码</a>"))
            << encoding << ": " << document.LoadError();
        EXPECT_EQ(document.DocumentElement()->Text(), "仓库编码") << encoding;
    }
}

TEST(DocumentLoad, ByteOrderMarkInFrontIsSkipped) {
    EXPECT_EQ(Reload("\xEF\xBB\xBF<?xml version=\"1.0\"?><a/>"), "<?xml version=\"1.0\"?><a/>");
    EXPECT_EQ(Reload("\xEF\xBB\xBF\xEF\xBB\xBF<a/>"), "refused");
}

TEST(DocumentLoad, BlankTextsAreDropped) {
    EXPECT_EQ(Reload("<a>\n  <b> \t\r\n</b>\n  <c>x</c>\n</a>\n"), "<a><b/><c>x</c></a>");
    EXPECT_EQ(Reload("<a> <!--c--> <?p d?> </a>"), "<a><!--c--><?p d?></a>");
    EXPECT_EQ(Reload("<a>x<b/> </a>"), "<a>x<b/></a>");
}

TEST(DocumentLoad, OtherTextStandsExactlyAsItIs) {
    EXPECT_EQ(Reload("<a>  x \n y\t </a>"), "<a>  x \n y\t </a>");
    EXPECT_EQ(Reload("<a>\xE3\x80\x80</a>"), "<a>\xE3\x80\x80</a>") << "an ideographic blank is no white space";
    EXPECT_EQ(Reload("<a>\xC2\xA0</a>"), "<a>\xC2\xA0</a>");
}

TEST(DocumentLoad, LineEndsBecomeLineFeeds) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<a>x\r\ny\rz</a>"));
    EXPECT_EQ(document.DocumentElement()->Text(), "x\ny\nz");
}

TEST(DocumentLoad, SpacePreserveKeepsBlankTexts) {
    EXPECT_EQ(Reload("<a xml:space=\"preserve\"> <b> </b> </a>"), "<a xml:space=\"preserve\"> <b> </b> </a>");
    EXPECT_EQ(Reload("<a><b xml:space=\"preserve\"> </b> <c> </c></a>"), "<a><b xml:space=\"preserve\"> </b><c/></a>");
    EXPECT_EQ(Reload("<a xml:space=\"preserve\"><b xml:space=\"default\"> </b> </a>"),
              "<a xml:space=\"preserve\"><b xml:space=\"default\"/> </a>");
}

TEST(DocumentLoad, CdataSectionsStayEvenWhenBlank) {
    EXPECT_EQ(Reload("<a><![CDATA[<&>]]></a>"), "<a><![CDATA[<&>]]></a>");
    EXPECT_EQ(Reload("<a><![CDATA[ ]]></a>"), "<a><![CDATA[ ]]></a>");
    Document document;
    ASSERT_TRUE(document.LoadXML("<a>x<![CDATA[<y>]]>z</a>"));
    EXPECT_EQ(document.DocumentElement()->Text(), "x<y>z");
    EXPECT_EQ(document.DocumentElement()->ChildNodes().size(), 3U);
}

TEST(DocumentLoad, CommentsAndInstructionsAreNodesButNoText) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<!--top--><a>x<!--c-->y<?p d?>z</a><?end?>"));
    EXPECT_EQ(document.DocumentElement()->Text(), "xyz");
    EXPECT_EQ(document.Xml(), "<!--top--><a>x<!--c-->y<?p d?>z</a><?end?>");
    const host::DOMNodeList children = document.DocumentElement()->ChildNodes();
    ASSERT_EQ(children.size(), 5U);
    EXPECT_EQ(children[1]->NodeName(), "#comment");
    EXPECT_EQ(children[1]->Text(), "c");
    EXPECT_EQ(children[3]->NodeName(), "p");
    EXPECT_EQ(children[3]->Text(), "d");
    std::string visited;
    document.DocumentElement()->VisitChildren([&](const host::DOMNode& child) { visited += child.NodeName() + ","; });
    EXPECT_EQ(visited, "#text,#comment,#text,p,#text,");
    children[0]->VisitChildren([](const host::DOMNode&) { FAIL() << "a text has no children"; });
}

TEST(DocumentLoad, InstructionsHaveTheNamesThatElementsHave) {
    EXPECT_EQ(Reload("<a\u07D6/>"), "<a\u07D6/>");
    EXPECT_EQ(Reload("<a><?j\u07D6 i?></a>"), "<a><?j\u07D6 i?></a>");
}

TEST(DocumentLoad, CharacterReferencesAreRead) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<a b=\"&#10;&#x4ED3;\">&lt;&gt;&amp;&quot;&apos;&#24211;&#x20000;</a>"));
    EXPECT_EQ(document.DocumentElement()->Text(), "<>&\"'库\xF0\xA0\x80\x80");
    EXPECT_EQ(document.DocumentElement()->GetAttribute("b"), "\n仓");
}

TEST(DocumentLoad, InternalEntitiesExpandAndTheDocumentTypeIsNotKept) {
    EXPECT_EQ(Reload("<!DOCTYPE a [<!ENTITY e \"x<b>y</b>\"><!ENTITY f \"[&e;]\"><!-- c --><?p d?>]>"
                     "<a q=\"&g;\"/>"),
              "refused")
        << "an entity that nobody declares";
    EXPECT_EQ(Reload("<!DOCTYPE a [<!ENTITY e \"x<b>y</b>\"><!ENTITY f \"[&e;]\"><!ENTITY g 'z'><!-- c --><?p d?>]>"
                     "<a q=\"&g;&g;\">&f;&f;&e;</a>"),
              "<a q=\"zz\">[x<b>y</b>][x<b>y</b>]x<b>y</b></a>");
    EXPECT_EQ(Reload("<!DOCTYPE a [<!ELEMENT a ANY><!ATTLIST a b CDATA #IMPLIED>]><a b=\"1\"/>"), "<a b=\"1\"/>");
}

TEST(DocumentLoad, EntityAndItsNeighboursMakeOneText) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<!DOCTYPE a [<!ENTITY e ' '>]><a>x&e;y</a>"));
    EXPECT_EQ(document.DocumentElement()->Text(), "x y");
    EXPECT_EQ(document.DocumentElement()->ChildNodes().size(), 1U);
}

TEST(DocumentLoad, NonAsciiNamesAreAccepted) {
    const std::string xml = "<仓库 编码=\"01\"><存货>x</存货></仓库>";
    Document document;
    ASSERT_TRUE(document.LoadXML(xml));
    EXPECT_EQ(document.Xml(), xml);
    EXPECT_EQ(document.DocumentElement()->SelectSingleNode("存货")->Text(), "x");
    EXPECT_EQ(document.DocumentElement()->GetAttribute("编码"), "01");
}

} // namespace
