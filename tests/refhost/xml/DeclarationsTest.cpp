// Declarations of namespaces that a node's text takes along.
#include "refhost/xml/Document.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using refhost::xml::Document;

/// The XML of what `path` selects in the document, which can be read by itself.
std::string XmlOf(const std::string& xml, const char* path) {
    Document document;
    EXPECT_TRUE(document.LoadXML(xml)) << document.LoadError();
    const host::DOMNodePtr node = document.SelectSingleNode(path);
    EXPECT_NE(node, nullptr) << path;
    std::string alone = node->Xml();
    EXPECT_TRUE(Document().LoadXML(alone)) << alone;
    return alone;
}

TEST(Declarations, OfAnElementsOwnPrefixComeAlong) {
    EXPECT_EQ(XmlOf("<x:q xmlns:x=\"u\"><x:p>1</x:p></x:q>", "x:q/x:p"), "<x:p xmlns:x=\"u\">1</x:p>");
}

TEST(Declarations, OfADescendantsAttributeComeAlong) {
    EXPECT_EQ(XmlOf("<q xmlns:xsi=\"i\"><p a=\"1\"><b/><cMemo xsi:nil=\"true\"/></p></q>", "q/p"),
              "<p xmlns:xsi=\"i\" a=\"1\"><b/><cMemo xsi:nil=\"true\"/></p>");
}

TEST(Declarations, OfNamesWithoutPrefixComeAlong) {
    EXPECT_EQ(XmlOf("<q xmlns=\"d\"><p><a/></p></q>", "q/p"), "<p xmlns=\"d\"><a/></p>");
    EXPECT_EQ(XmlOf("<q xmlns=\"d\" xmlns:x=\"u\"><x:p><a/></x:p></q>", "q/x:p"),
              "<x:p xmlns:x=\"u\" xmlns=\"d\"><a/></x:p>");
    EXPECT_EQ(XmlOf("<q xmlns=\"d\"><o xmlns=\"\"><p/></o></q>", "q/o/p"), "<p/>") << "taken away in between";
}

TEST(Declarations, OfTheNearestOneIsTaken) {
    EXPECT_EQ(XmlOf("<q xmlns:x=\"far\"><o xmlns:x=\"near\"><p x:a=\"1\"/></o></q>", "q/o/p"),
              "<p xmlns:x=\"near\" x:a=\"1\"/>");
}

TEST(Declarations, ThatNothingInTheNodeNeedsStayAway) {
    EXPECT_EQ(XmlOf("<q xmlns:x=\"u\" x:a=\"1\"><p b=\"2\"/><x:c/></q>", "q/p"), "<p b=\"2\"/>");
    EXPECT_EQ(XmlOf("<q xmlns:x=\"u\"><p xmlns:x=\"v\"><x:c x:d=\"1\"/></p></q>", "q/p"),
              "<p xmlns:x=\"v\"><x:c x:d=\"1\"/></p>");
    EXPECT_EQ(XmlOf("<q xmlns:x=\"u\"><p><b xmlns:x=\"v\"><x:c/></b></p></q>", "q/p"),
              "<p><b xmlns:x=\"v\"><x:c/></b></p>");
}

TEST(Declarations, BehindAnElementThatHasItsOwnComeAlong) {
    EXPECT_EQ(XmlOf("<q xmlns:x=\"u\"><p><b xmlns:x=\"v\"/><x:c/></p></q>", "q/p"),
              "<p xmlns:x=\"u\"><b xmlns:x=\"v\"/><x:c/></p>");
}

TEST(Declarations, OfEveryPrefixComeOnceHoweverManyNeedThem) {
    EXPECT_EQ(XmlOf("<q xmlns:y=\"v\" xmlns:x=\"u\"><p><x:a y:b=\"1\"/><x:a/><y:a x:b=\"\"/></p></q>", "q/p"),
              "<p xmlns:x=\"u\" xmlns:y=\"v\"><x:a y:b=\"1\"/><x:a/><y:a x:b=\"\"/></p>");
}

TEST(Declarations, ValuesAreEscaped) {
    EXPECT_EQ(XmlOf("<q xmlns:x=\"a&amp;&quot;\"><x:p/></q>", "q/x:p"), "<x:p xmlns:x=\"a&amp;&quot;\"/>");
}

TEST(Declarations, XmlIsAPrefixThatNeedsNone) {
    EXPECT_EQ(XmlOf("<q><p xml:lang=\"zh\"/></q>", "q/p"), "<p xml:lang=\"zh\"/>");
}

TEST(Declarations, AreAddedToAnElementThatIsAppendedWhereItsPrefixIsUnknown) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<q><a xmlns:x=\"u\"/></q>"));
    const host::DOMNodePtr made = document.CreateElement("x:p");
    document.DocumentElement()->SetText("");
    document.DocumentElement()->AppendChild(*made);
    EXPECT_EQ(document.Xml(), "<q><x:p xmlns:x=\"u\"/></q>");
    made->AppendChild(*document.CreateElement("x:c"));
    EXPECT_EQ(document.Xml(), "<q><x:p xmlns:x=\"u\"><x:c/></x:p></q>");
}

} // namespace
