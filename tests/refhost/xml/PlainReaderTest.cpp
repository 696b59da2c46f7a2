// A text as programs write it is read without libxml2, and gives what libxml2 gives.

#include "refhost/xml/PlainReader.h"

#include "refhost/xml/Parser.h"
#include "refhost/xml/Writer.h"

#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

using refhost::xml::Parse;
using refhost::xml::ReadPlain;
using refhost::xml::ToXml;
using refhost::xml::Tree;

std::string XmlOf(const std::unique_ptr<Tree>& tree) { return tree ? ToXml(*tree, tree->document()) : "left"; }

std::string ReadAlone(std::string_view text) { return XmlOf(ReadPlain(text)); }

/// What libxml2 makes of the text: a comment is not plain.
std::string ReadByLibxml(const std::string& text) {
    const std::string comment = "<!--c-->";
    const std::string xml = XmlOf(Parse(text + comment).tree);
    return xml.ends_with(comment) ? xml.substr(0, xml.size() - comment.size()) : xml;
}

struct Plain {
    const char* text;
    const char* xml;
};

class PlainText : public testing::TestWithParam<Plain> {};

TEST_P(PlainText, IsReadAsByLibxml) {
    EXPECT_EQ(ReadAlone(GetParam().text), GetParam().xml);
    EXPECT_EQ(ReadByLibxml(GetParam().text), GetParam().xml);
}

INSTANTIATE_TEST_SUITE_P(
    PlainReader, PlainText,
    testing::Values(Plain{"<a/>", "<a/>"}, Plain{"<a></a>", "<a/>"}, Plain{"<a />", "<a/>"},
                    Plain{" \r\n\t<_a1>x</_a1> \r\n\t", "<_a1>x</_a1>"},
                    Plain{"<a b=\"1\" c=\"\" xmlns=\"u\"/>", "<a b=\"1\" c=\"\" xmlns=\"u\"/>"},
                    Plain{"<a b=\"'>仓\"><c d=\"2\" />x</a>", "<a b=\"'&gt;仓\"><c d=\"2\"/>x</a>"},
                    Plain{"<a>\n  <b>仓库</b>\r\n  <b> </b>\n</a>\n", "<a><b>仓库</b><b/></a>"},
                    Plain{"<a> x \n y\t</a>", "<a> x \n y\t</a>"}, Plain{"<a>x<b/>y</a>", "<a>x<b/>y</a>"},
                    Plain{"<a>x\r\ny\rz\r\r\n</a>", "<a>x\ny\nz\n\n</a>"},
                    Plain{"<a>&lt;&gt;&amp;&quot;&apos;</a>", "<a>&lt;&gt;&amp;\"'</a>"},
                    Plain{"<a>&amp;lt;</a>", "<a>&amp;lt;</a>"}, Plain{"<a>]] ]x]&gt;</a>", "<a>]] ]x]&gt;</a>"},
                    Plain{"<a>（全角），\uFEFF\uFFA0\x7F\u0085</a>", "<a>（全角），\uFEFF\uFFA0\x7F\u0085</a>"},
                    Plain{"<a>\U0002A6A5</a>", "<a>\U0002A6A5</a>"}));

TEST(PlainReader, TakesNamesThatDifferFromTheRowBefore) {
    // Each begins as the one that stood there before, which is what it is held against first.
    const std::string rows = "<r><n><ab>1</ab><c>2</c></n><n><a>3</a><cd>4</cd></n><n><abc>5</abc></n><nn/><n/></r>";
    EXPECT_EQ(ReadAlone(rows), rows);
    EXPECT_EQ(ReadByLibxml(rows), rows);
}

TEST(PlainReader, KeepsEqualNamesOnce) {
    const std::unique_ptr<Tree> tree = ReadPlain("<a><b/><c b=\"1\"/><b/></a>");
    ASSERT_NE(tree, nullptr);
    const refhost::xml::Element& root = tree->document().first->AsElement();
    EXPECT_EQ(root.first->AsElement().name, root.last->AsElement().name);
    EXPECT_EQ(root.first->AsElement().name, root.first->next->AsElement().attributes->name);
    EXPECT_EQ(root.last->AsElement().name, tree->Name("b"));
}

class LeftText : public testing::TestWithParam<std::string> {};

TEST_P(LeftText, IsLeftToLibxml) { EXPECT_EQ(ReadAlone(GetParam()), "left"); }

INSTANTIATE_TEST_SUITE_P(IllFormed, LeftText,
                         testing::Values("", " ", "x", "<", "<a", "<a ", "<a b", "<a b=", "<a b=\"", "<a b=\"1", "<a>",
                                         "<a>x", "<a>&", "<a>&amp", "<a><", "<a></", "<a></a", "</a>", "<a></b>",
                                         "<a></aa>", "<aa></a>", "<a/><b/>", "<a/>x", "<a></a></a>", "<a><b></a></b>",
                                         "<1a/>", "<a><1/></a>", "< a/>", "<a>]]></a>", "<a b=\"<\"/>",
                                         "<a b=\"1\"c=\"2\"/>", "<a b=\"1\" b=\"2\"/>", "<a b=1/>", "<a>\x01</a>",
                                         "<a b=\"\x01\"/>", "<a>\uFFFE</a>", "<a>\uFFFF</a>", "<a b=\"\uFFFF\"/>",
                                         "<a>&nbsp;</a>"));

// Read by libxml2 as ever, which the tests of documents hold.
INSTANTIATE_TEST_SUITE_P(NotPlain, LeftText,
                         testing::Values("<?xml version=\"1.0\"?><a/>", "\uFEFF<a/>", "<!--c--><a/>", "<a><!--c--></a>",
                                         "<a/><?p d?>", "<!DOCTYPE a><a/>", "<a><![CDATA[x]]></a>", "<a>&#65;</a>",
                                         "<p:a xmlns:p=\"u\"/>", "<a xmlns:p=\"u\"/>", "<a><p:b/></a>", "<a-b/>",
                                         "<a.b/>", "<仓/>", "<a b='1'/>", "<a  b=\"1\"/>", "<a\nb=\"1\"/>",
                                         "<a b = \"1\"/>", "<a ></a>", "<a></a >", "<a b=\"&amp;\"/>", "<a b=\"\t\"/>",
                                         "<a b=\"\n\"/>", "<a xml:space=\"preserve\"> </a>"));

TEST(PlainReader, LeavesWhatIsLargerThanProgramsWrite) {
    const auto names = [](int count) {
        std::string text;
        for (int at = 0; at < count; ++at) {
            text += "<n" + std::to_string(at) + "/>";
        }
        return "<a>" + text + "</a>";
    };
    const auto attributes = [](int count) {
        std::string text = "<a";
        for (int at = 0; at < count; ++at) {
            text += " n" + std::to_string(at) + "=\"\"";
        }
        return text + "/>";
    };
    EXPECT_EQ(ReadAlone(names(1023)), names(1023));
    EXPECT_EQ(ReadAlone(names(1024)), "left");
    EXPECT_EQ(ReadAlone(attributes(32)), attributes(32));
    EXPECT_EQ(ReadAlone(attributes(33)), "left");
    const std::string longName(256, 'n');
    EXPECT_EQ(ReadAlone("<" + longName + "/>"), "<" + longName + "/>");
    EXPECT_EQ(ReadAlone("<n" + longName + "/>"), "left");
    const std::string longValue(65536, 'v');
    EXPECT_EQ(ReadAlone("<a b=\"" + longValue + "\"/>"), "<a b=\"" + longValue + "\"/>");
    EXPECT_EQ(ReadAlone("<a b=\"" + longValue + "v\"/>"), "left");
}

TEST(PlainReader, IsAskedBehindADeclarationThatLibxmlJudges) {
    const auto reload = [](const std::string& text) { return XmlOf(Parse(text).tree); };
    EXPECT_EQ(reload("<?xml version=\"1.0\" encoding=\"GB2312\" standalone=\"no\"?>\r\n<a>x</a>"),
              "<?xml version=\"1.0\" standalone=\"no\"?><a>x</a>");
    EXPECT_EQ(reload("<?xml version=\"1.1\"?><a/>"), "left");
    EXPECT_EQ(reload("<?xml version=\"1.0?>\"?><a/>"), "left");
    EXPECT_EQ(reload("<?xml version=\"1.0\"?>"), "left");
    EXPECT_EQ(reload("<?xml version=\"1.0\"?><?xml version=\"1.0\"?><a/>"), "left");
    EXPECT_EQ(reload("<?xml version=\"1.0\"? ><a/>"), "left");
}

} // namespace
