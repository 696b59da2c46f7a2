#include "host/Error.h"
#include "refhost/xml/Document.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

using refhost::xml::Document;

/// A loaded document; the test fails when the text is refused.
class Loaded {
public:
    explicit Loaded(const std::string& xml) { EXPECT_TRUE(document_.LoadXML(xml)) << document_.LoadError(); }

    std::string Xml() const { return document_.Xml(); }
    host::DOMNodePtr Root() const { return document_.DocumentElement(); }
    host::DOMNodePtr SelectSingleNode(std::string_view path) const { return document_.SelectSingleNode(path); }
    host::DOMNodePtr CreateElement(std::string_view name) { return document_.CreateElement(name); }

private:
    Document document_;
};

TEST(DocumentXml, NothingIsAddedBetweenNodes) {
    EXPECT_EQ(Loaded("<a>\r\n <b>1</b>\r\n <c>2</c>\r\n</a>\r\n").Xml(), "<a><b>1</b><c>2</c></a>");
}

TEST(DocumentXml, AttributesAreInDoubleQuotesAndKeepTheirOrder) {
    EXPECT_EQ(Loaded("<a z='1'  y = '\"' x=\"'\" xmlns:p='u' b='2'/>").Xml(),
              "<a z=\"1\" y=\"&quot;\" x=\"'\" xmlns:p=\"u\" b=\"2\"/>");
}

TEST(DocumentXml, ElementWithoutContentIsWrittenShort) {
    EXPECT_EQ(Loaded("<a><b></b><c /></a>").Xml(), "<a><b/><c/></a>");
}

TEST(DocumentXml, DeclarationOnlyWhenTheTextHadOneAndWithoutItsEncoding) {
    EXPECT_EQ(Loaded("<a/>").Xml(), "<a/>");
    EXPECT_EQ(Loaded("<?xml version='1.0' encoding='gb2312'?>\n<a/>").Xml(), "<?xml version=\"1.0\"?><a/>");
    EXPECT_EQ(Loaded("<?xml version=\"1.0\" encoding=\"gb2312\" standalone=\"yes\"?><a/>").Xml(),
              "<?xml version=\"1.0\" standalone=\"yes\"?><a/>");
    EXPECT_EQ(Loaded("<?xml version=\"1.0\" standalone=\"no\"?><a/>").Xml(),
              "<?xml version=\"1.0\" standalone=\"no\"?><a/>");
}

TEST(DocumentXml, MarkupCharactersAreEscaped) {
    EXPECT_EQ(Loaded("<a b=\"&lt;&gt;&amp;&quot;&apos;\">&lt;&gt;&amp;&quot;&apos;</a>").Xml(),
              "<a b=\"&lt;&gt;&amp;&quot;'\">&lt;&gt;&amp;\"'</a>");
}

TEST(DocumentXml, NonAsciiCharactersStandAsTheyAre) {
    const std::string xml = "<a b=\"仓库编码：01\">存货\xF0\xA0\x80\x80é</a>";
    EXPECT_EQ(Loaded(xml).Xml(), xml);
}

TEST(DocumentXml, LineBreaksAndTabsInAttributesSurviveARoundTrip) {
    const std::string value = "a\tb\nc\rd\r\ne";
    Document document;
    ASSERT_TRUE(document.LoadXML("<a/>"));
    document.DocumentElement()->SetAttribute("b", value);
    EXPECT_EQ(document.Xml(), "<a b=\"a&#x9;b&#xA;c&#xD;d&#xD;&#xA;e\"/>");
    EXPECT_EQ(Loaded(document.Xml()).Root()->GetAttribute("b"), value);
}

TEST(DocumentXml, CarriageReturnsInTextSurviveARoundTrip) {
    const std::string value = "a\tb\nc\rd\r\ne";
    Document document;
    ASSERT_TRUE(document.LoadXML("<a/>"));
    document.DocumentElement()->SetText(value);
    EXPECT_EQ(document.Xml(), "<a>a\tb\nc&#xD;d&#xD;\ne</a>");
    EXPECT_EQ(Loaded(document.Xml()).Root()->Text(), value);
}

TEST(DocumentXml, CharactersThatXmlCannotHoldAreReplaced) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<a/>"));
    document.DocumentElement()->SetAttribute("b", std::string("x\0y\x1F", 4));
    EXPECT_EQ(document.Xml(), "<a b=\"x\xEF\xBF\xBDy\xEF\xBF\xBD\"/>");
}

TEST(DocumentXml, NodeIsWrittenAlone) {
    const Loaded document("<?xml version=\"1.0\"?><a xmlns:z=\"u\"><z:b c=\"1\">x<d/></z:b><e/>t&amp;</a>");
    EXPECT_EQ(document.SelectSingleNode("//z:b")->Xml(), "<z:b xmlns:z=\"u\" c=\"1\">x<d/></z:b>");
    EXPECT_EQ(document.SelectSingleNode("//e")->Xml(), "<e/>");
    EXPECT_EQ(document.Root()->ChildNodes().back()->Xml(), "t&amp;");
    EXPECT_EQ(document.SelectSingleNode("//z:b/@c")->Xml(), "c=\"1\"");
}

TEST(DocumentXml, RoundTripChangesNothing) {
    const std::string xml =
        "<?xml version=\"1.0\"?><!--c--><?p d?><r xmlns=\"d\" xmlns:z=\"u\" z:a=\"&#xA;\">x<![CDATA[<]]>"
        "<z:e/> y <f>&lt;</f></r><!--e-->";
    const std::string once = Loaded(xml).Xml();
    EXPECT_EQ(once, xml);
    EXPECT_EQ(Loaded(once).Xml(), xml);
}

TEST(DocumentText, IncludesTheTextOfAllDescendants) {
    EXPECT_EQ(Loaded("<a>1<b>2<c>3</c></b>\n<d><![CDATA[4]]></d>5</a>").Root()->Text(), "12345");
    EXPECT_EQ(Loaded("<a/>").Root()->Text(), "");
}

TEST(DocumentText, SettingReplacesAllContent) {
    const Loaded document("<a x=\"1\">1<b>2</b><!--c--></a>");
    document.Root()->SetText("<&>");
    EXPECT_EQ(document.Xml(), "<a x=\"1\">&lt;&amp;&gt;</a>");
    document.Root()->SetText("shorter");
    EXPECT_EQ(document.Root()->Text(), "shorter");
    document.Root()->SetText("and a longer text than before");
    EXPECT_EQ(document.Root()->Text(), "and a longer text than before");
}

TEST(DocumentText, SettingTheEmptyTextLeavesNoContent) {
    const Loaded document("<a x=\"1\">1<b>2</b></a>");
    document.Root()->SetText("");
    EXPECT_EQ(document.Xml(), "<a x=\"1\"/>");
    EXPECT_TRUE(document.Root()->ChildNodes().empty());
}

TEST(DocumentText, OfTextNodesAndAttributesCanBeSet) {
    const Loaded document("<a b=\"1\">x<c/><![CDATA[y]]></a>");
    document.Root()->ChildNodes()[0]->SetText("long text");
    document.Root()->ChildNodes()[2]->SetText("z");
    document.SelectSingleNode("a/@b")->SetText("2&");
    EXPECT_EQ(document.Xml(), "<a b=\"2&amp;\">long text<c/><![CDATA[z]]></a>");
}

TEST(DocumentNode, NamesAndKinds) {
    const Loaded document("<z:row xmlns:z=\"u\">t<b/></z:row>");
    EXPECT_EQ(document.Root()->NodeName(), "z:row");
    EXPECT_EQ(document.Root()->BaseName(), "row");
    EXPECT_TRUE(document.Root()->IsElement());
    const host::DOMNodePtr text = std::move(document.Root()->ChildNodes().front());
    EXPECT_EQ(text->NodeName(), "#text");
    EXPECT_EQ(text->BaseName(), "");
    EXPECT_FALSE(text->IsElement());
    EXPECT_TRUE(text->ChildNodes().empty());
    EXPECT_EQ(text->GetAttribute("x"), std::nullopt);
    EXPECT_TRUE(text->Attributes().empty());
    EXPECT_THROW(text->SetAttribute("x", "1"), host::Error);
    EXPECT_THROW(text->AppendChild(*document.Root()), host::Error);
}

TEST(DocumentNode, AttributesByNameAndPosition) {
    const Loaded document("<a first=\"1\" xmlns:z=\"u\" z:b=\"\" last=\"3\"/>");
    EXPECT_EQ(document.Root()->GetAttribute("first"), "1");
    EXPECT_EQ(document.Root()->GetAttribute("z:b"), "");
    EXPECT_EQ(document.Root()->GetAttribute("b"), std::nullopt);
    EXPECT_EQ(document.Root()->GetAttribute("First"), std::nullopt);
    EXPECT_EQ(document.Root()->AttributeAt(0), "1");
    EXPECT_EQ(document.Root()->AttributeAt(1), "u");
    EXPECT_EQ(document.Root()->AttributeAt(3), "3");
    EXPECT_EQ(document.Root()->AttributeAt(4), std::nullopt);
    const std::vector<host::DOMAttribute> all = document.Root()->Attributes();
    ASSERT_EQ(all.size(), 4U);
    EXPECT_EQ(all[0].name, "first");
    EXPECT_EQ(all[0].value, "1");
    EXPECT_EQ(all[1].name, "xmlns:z");
    EXPECT_EQ(all[1].value, "u");
    EXPECT_EQ(all[3].value, "3");
}

TEST(DocumentNode, AttributesOfAllThatAPathSelects) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<a xmlns:t=\"u\"><b name=\"1\" t:type=\"int\"/><c name=\"3\"/><b name=\"2\"/>x</a>"));
    EXPECT_EQ(document.AttributesAt("/a/b", "name"), (std::vector<std::string>{"1", "2"}));
    EXPECT_EQ(document.AttributesAt("/a/b", "t:type"), (std::vector<std::string>{"int", ""}));
    EXPECT_EQ(document.AttributesAt("/a/d", "name"), std::vector<std::string>());
    // Paths that take an engine, and what has no attributes.
    EXPECT_EQ(document.AttributesAt("/a/b[2]", "name"), std::vector<std::string>{"2"});
    EXPECT_EQ(document.AttributesAt("/a/text() | /a/c/@name", "name"), (std::vector<std::string>{"", ""}));
    EXPECT_THROW(document.AttributesAt("/a/[", "name"), host::Error);
}

TEST(DocumentNode, SettingAnAttributeKeepsItsPlace) {
    const Loaded document("<a b=\"1\" c=\"2\"/>");
    document.Root()->SetAttribute("b", "longer than before");
    document.Root()->SetAttribute("z:d", "3");
    document.Root()->SetAttribute("c", "");
    EXPECT_EQ(document.Xml(), "<a b=\"longer than before\" c=\"\" z:d=\"3\"/>");
}

TEST(DocumentNode, NamesAreChecked) {
    Loaded document("<a/>");
    for (const std::string& name : {std::string(), std::string("1a"), std::string("a b"), std::string("a:b:c"),
                                    std::string("a\0b", 3), std::string("<"), std::string("http://x")}) {
        EXPECT_THROW(document.Root()->SetAttribute(name, "1"), host::Error) << name;
        EXPECT_THROW(document.CreateElement(name), host::Error) << name;
    }
    EXPECT_EQ(document.Xml(), "<a/>");
}

TEST(DocumentNode, CreatedElementHasADeclaredPrefix) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<a xmlns:p=\"u\"/>"));
    EXPECT_EQ(document.CreateElement("p:b")->NodeName(), "p:b");
    EXPECT_THROW(document.CreateElement("q:b"), host::Error);
}

TEST(DocumentXml, NamesThatAreAlikeAreToldApart) {
    // They begin and end with the same letters, by which the latest names are found; some are names no more.
    Document document;
    ASSERT_TRUE(document.LoadXML("<ab/>"));
    for (const char* name : {"ab", "axb", "ab", "aab", "a", "ab", "axb", "a", "a1b", "a-b", "a-b"}) {
        EXPECT_EQ(document.CreateElement(name)->NodeName(), name);
        EXPECT_THROW(document.CreateElement("a b"), host::Error);
        EXPECT_THROW(document.CreateElement(""), host::Error);
    }
    ASSERT_TRUE(document.LoadXML("<c/>"));
    const host::DOMNodePtr root = document.DocumentElement();
    root->SetAttribute("ab", "1");
    root->SetAttribute("axb", "2");
    root->SetAttribute("ab", "3");
    EXPECT_EQ(document.Xml(), "<c ab=\"3\" axb=\"2\"/>");
}

TEST(DocumentNode, CreatedElementStandsNowhereUntilItIsAppended) {
    Loaded document("<a><b/></a>");
    const host::DOMNodePtr made = document.CreateElement("c");
    made->SetText("x");
    EXPECT_EQ(document.Xml(), "<a><b/></a>");
    document.Root()->AppendChild(*made);
    EXPECT_EQ(document.Xml(), "<a><b/><c>x</c></a>");
}

TEST(DocumentNode, AppendingMovesANodeBehindTheLastChild) {
    const Loaded document("<a><b/><c/><d/></a>");
    document.Root()->AppendChild(*document.SelectSingleNode("a/b"));
    EXPECT_EQ(document.Xml(), "<a><c/><d/><b/></a>");
    document.SelectSingleNode("a/c")->AppendChild(*document.SelectSingleNode("a/b"));
    EXPECT_EQ(document.Xml(), "<a><c><b/></c><d/></a>");
    document.Root()->AppendChild(*document.SelectSingleNode("a/d"));
    EXPECT_EQ(document.Xml(), "<a><c><b/></c><d/></a>");
}

TEST(DocumentNode, AppendingRefusesWhatWouldBreakTheTree) {
    const Loaded document("<a><b><c/></b></a>");
    const Loaded other("<x/>");
    EXPECT_THROW(document.SelectSingleNode("//c")->AppendChild(*document.SelectSingleNode("//b")), host::Error);
    EXPECT_THROW(document.SelectSingleNode("//b")->AppendChild(*document.SelectSingleNode("//b")), host::Error);
    EXPECT_THROW(document.Root()->AppendChild(*other.Root()), host::Error);
    EXPECT_EQ(document.Xml(), "<a><b><c/></b></a>");
}

} // namespace
