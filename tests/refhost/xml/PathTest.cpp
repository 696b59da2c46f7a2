#include "refhost/xml/Path.h"

#include "host/Error.h"
#include "refhost/xml/Document.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using refhost::xml::Document;

const char* const request = "<r><row n=\"1\"><a>x</a><b><c>y</c><c>z</c></b></row><other/>"
                            "<row n=\"2\"><a>u</a><row n=\"3\"><a>v</a></row></row></r>";

/// What `path` selects under the root, each as XML, joined by "|".
std::string Select(const std::string& xml, std::string_view path) {
    Document document;
    EXPECT_TRUE(document.LoadXML(xml)) << document.LoadError();
    std::string all;
    const host::DOMNodeList nodes = document.DocumentElement()->SelectNodes(path);
    for (const host::DOMNodePtr& node : nodes)
        all += (all.empty() ? "" : "|") + node->Xml();
    const host::DOMNodePtr first = document.DocumentElement()->SelectSingleNode(path);
    EXPECT_EQ(first == nullptr ? "" : first->Xml(), nodes.empty() ? "" : nodes.front()->Xml());
    return all;
}

struct Case {
    const char* path;
    const char* selected;
};

class PathCase : public testing::TestWithParam<Case> {};

TEST_P(PathCase, Selects) { EXPECT_EQ(Select(request, GetParam().path), GetParam().selected); }

INSTANTIATE_TEST_SUITE_P(
    Direct, PathCase,
    testing::Values(Case{"other", "<other/>"}, Case{"none", ""}, Case{"row/a", "<a>x</a>|<a>u</a>"},
                    Case{"row/b/c", "<c>y</c>|<c>z</c>"}, Case{"row/none/c", ""}, Case{"*/c", ""},
                    Case{"*/*/c", "<c>y</c>|<c>z</c>"}, Case{"row/@n", "n=\"1\"|n=\"2\""}, Case{"@n", ""},
                    Case{"//a", "<a>x</a>|<a>u</a>|<a>v</a>"}, Case{".//a", "<a>x</a>|<a>u</a>|<a>v</a>"},
                    Case{"//row/a", "<a>x</a>|<a>u</a>|<a>v</a>"}, Case{"//row/row/a", "<a>v</a>"},
                    Case{"//row/@n", "n=\"1\"|n=\"2\"|n=\"3\""}, Case{"/r/other", "<other/>"}, Case{"/row", ""},
                    Case{"//r/other", "<other/>"}, Case{".//r/other", ""}, Case{"Row", ""}, Case{"or", ""}));

INSTANTIATE_TEST_SUITE_P(
    XPath, PathCase,
    testing::Values(Case{"row[2]/a", "<a>u</a>"}, Case{"row[@n='1']/a", "<a>x</a>"}, Case{"row[a='u']/@n", "n=\"2\""},
                    Case{"a/text()", ""}, Case{"row/a/text()", "x|u"}, Case{"//c[last()]", "<c>z</c>"},
                    Case{"row//a", "<a>x</a>|<a>u</a>|<a>v</a>"}, Case{"row/a | other", "<a>x</a>|<other/>|<a>u</a>"},
                    Case{"//a/..//c", "<c>y</c>|<c>z</c>"}, Case{"./other", "<other/>"}, Case{" other ", "<other/>"},
                    Case{"//@n", "n=\"1\"|n=\"2\"|n=\"3\""}, Case{"child::other", "<other/>"},
                    Case{"//row[not(row)]/@n", "n=\"1\"|n=\"3\""}));

class InvalidPath : public testing::TestWithParam<const char*> {};

TEST_P(InvalidPath, Throws) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<r><a/></r>"));
    const auto check = [](const auto& select) {
        try {
            select();
            ADD_FAILURE() << "no error for '" << GetParam() << "'";
        } catch (const host::Error& error) {
            EXPECT_EQ(error.number(), -2147467259);
            EXPECT_NE(error.description(), "");
        }
    };
    check([&] { document.DocumentElement()->SelectSingleNode(GetParam()); });
    check([&] { document.DocumentElement()->SelectNodes(GetParam()); });
    check([&] { document.SelectSingleNode(GetParam()); });
}

INSTANTIATE_TEST_SUITE_P(Path, InvalidPath,
                         testing::Values("", " ", "a[", "a/", "/a/", "///a", "a//", "a b", "1a", "a[]", "@", "a/@",
                                         "a]", "$x", "q:a", "q:a[1]", "@q:a", "nosuch()", "1+1", "'text'", "count(a)",
                                         "a:b:c", "<a/>", "单据["));

TEST(Path, PathWithNulThrows) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<r><a/></r>"));
    EXPECT_THROW(document.SelectSingleNode(std::string_view("r\0a", 3)), host::Error);
}

const char* const rowset = "<xml xmlns:rs=\"urn:schemas-microsoft-com:rowset\" xmlns:z=\"#RowsetSchema\" xmlns=\"d\">"
                           "<rs:data><z:row a=\"1\"/><z:row a=\"2\"/></rs:data></xml>";

const char* const zRows = "<z:row xmlns:z=\"#RowsetSchema\" a=\"1\"/>|<z:row xmlns:z=\"#RowsetSchema\" a=\"2\"/>";

TEST(PathNames, PrefixedNamesNeedNoRegistration) {
    EXPECT_EQ(Select(rowset, "//z:row"), zRows);
    EXPECT_EQ(Select(rowset, "//rs:data/z:row"), zRows);
    EXPECT_EQ(Select(rowset, "rs:data/z:row[2]"), "<z:row xmlns:z=\"#RowsetSchema\" a=\"2\"/>");
    EXPECT_EQ(Select("<q:a xmlns:q=\"u\"><q:b/></q:a>", "q:b"), "<q:b xmlns:q=\"u\"/>");
    EXPECT_EQ(Select("<q:a xmlns:q=\"u\"><q:b q:c=\"1\"/></q:a>", "q:b[@q:c='1']"), "<q:b xmlns:q=\"u\" q:c=\"1\"/>");
}

TEST(PathNames, RecordsetPrefixesAreKnownInEveryDocument) {
    EXPECT_EQ(Select("<a/>", "//z:row"), "");
    EXPECT_EQ(Select("<a/>", "//rs:data[1]"), "");
    EXPECT_EQ(Select("<a/>", "s:Schema | dt:x"), "");
}

TEST(PathNames, ChineseNamesNeedNoEngine) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<q><跌价单><存货编码>A1</存货编码><a/></跌价单><跌价单 单号=\"2\"/></q>"));
    refhost::xml::Tree tree;
    for (const char* path : {"跌价单", "跌价单/存货编码", "//跌价单", "跌价单/@单号"})
        EXPECT_TRUE(refhost::xml::Path::Compile(path, tree)) << path;
    EXPECT_FALSE(refhost::xml::Path::Compile("跌价单[1]", tree));

    const host::DOMNodeList rows = document.DocumentElement()->SelectNodes("跌价单");
    ASSERT_EQ(rows.size(), 2u);
    const host::DOMNodePtr field = rows.front()->SelectSingleNode("存货编码");
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->Text(), "A1");
    EXPECT_EQ(rows.back()->SelectSingleNode("存货编码"), nullptr);
    EXPECT_EQ(document.DocumentElement()->SelectNodes("跌价").size(), 0u) << "the beginning of a name is another name";
}

TEST(PathNames, BytesThatAreNoUtf8AreRefused) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<a/>"));
    EXPECT_THROW(document.SelectNodes("a\xEC/b"), host::Error);
}

TEST(PathNames, XmlIsAPrefixInEveryDocument) {
    const std::string spoken = "<r><a xml:lang=\"zh\">x</a><a>y</a><xml:b/></r>";
    EXPECT_EQ(Select(spoken, "a[1]"), "<a xml:lang=\"zh\">x</a>");
    EXPECT_EQ(Select(spoken, "a[@xml:lang='zh']/@xml:lang"), "xml:lang=\"zh\"");
    EXPECT_EQ(Select(spoken, "*[last()]"), "<xml:b/>");
    EXPECT_EQ(Select(spoken, "xml:b[1]"), "<xml:b/>");
}

TEST(PathNames, PrefixDeclaredLaterIsKnownFromThenOn) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<a/>"));
    EXPECT_THROW(document.SelectSingleNode("//p:b"), host::Error);
    document.DocumentElement()->SetAttribute("xmlns:p", "u");
    document.DocumentElement()->AppendChild(*document.CreateElement("p:b"));
    EXPECT_NE(document.SelectSingleNode("//p:b"), nullptr);
    EXPECT_NE(document.SelectSingleNode("//p:b[1]"), nullptr);
}

TEST(PathNames, UnprefixedNameAlsoFindsElementsOfADefaultNamespace) {
    EXPECT_EQ(Select("<a xmlns=\"u\"><b/></a>", "b"), "<b xmlns=\"u\"/>");
    EXPECT_EQ(Select("<a xmlns=\"u\"><b/></a>", "b[1]"), "<b xmlns=\"u\"/>");
    EXPECT_EQ(Select("<a xmlns:z=\"u\"><z:b/></a>", "b"), "") << "a prefix is part of the name";
    EXPECT_EQ(Select("<a xmlns:z=\"u\"><z:b/></a>", "b[1]"), "");
}

TEST(PathNames, DeclarationsAreNoAttributesForXPath) {
    EXPECT_EQ(Select("<a xmlns:z=\"u\" b=\"1\"/>", "@*"), "b=\"1\"");
}

TEST(PathState, SeesEveryChange) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<r><a>1</a></r>"));
    const host::DOMNodePtr root = document.DocumentElement();
    EXPECT_EQ(root->SelectNodes("a[.='1']").size(), 1U);
    root->SelectSingleNode("a")->SetText("2");
    EXPECT_EQ(root->SelectNodes("a[.='1']").size(), 0U);
    const host::DOMNodePtr added = document.CreateElement("a");
    added->SetText("2");
    root->AppendChild(*added);
    EXPECT_EQ(root->SelectNodes("a[.='2']").size(), 2U);
    added->SetAttribute("x", "y");
    EXPECT_EQ(root->SelectNodes("a[@x='y']").size(), 1U);
    root->SelectSingleNode("a[2]/@x")->SetText("w");
    EXPECT_EQ(root->SelectNodes("a[@x='w']").size(), 1U);
}

TEST(PathState, WorksInsideAnElementThatStandsNowhere) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<r/>"));
    const host::DOMNodePtr loose = document.CreateElement("a");
    const host::DOMNodePtr child = document.CreateElement("b");
    child->SetText("x");
    loose->AppendChild(*child);
    EXPECT_EQ(loose->SelectSingleNode("b")->Text(), "x");
    EXPECT_EQ(loose->SelectSingleNode("b[1]")->Text(), "x");
    EXPECT_EQ(loose->SelectSingleNode("b/..")->NodeName(), "a");
}

TEST(PathState, PathsOutliveALoad) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<r><a>1</a></r>"));
    EXPECT_EQ(document.SelectSingleNode("r/a")->Text(), "1");
    EXPECT_EQ(document.SelectSingleNode("r/a[1]")->Text(), "1");
    ASSERT_TRUE(document.LoadXML("<r><a>2</a></r>"));
    EXPECT_EQ(document.SelectSingleNode("r/a")->Text(), "2");
    EXPECT_EQ(document.SelectSingleNode("r/a[1]")->Text(), "2");
}

TEST(PathState, SelectedNodesCanBeChanged) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<r><a/><a/></r>"));
    for (const host::DOMNodePtr& node : document.SelectNodes("//a[true()]"))
        node->SetAttribute("n", "1");
    EXPECT_EQ(document.Xml(), "<r><a n=\"1\"/><a n=\"1\"/></r>");
}

TEST(PathState, ManyDifferentPathsStayCorrect) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<r><a7>x</a7></r>"));
    for (int n = 0; n < 1000; ++n)
        EXPECT_EQ(document.SelectSingleNode("r/a" + std::to_string(n)) != nullptr, n == 7);
}

TEST(PathState, DocumentAndParentCanBeSelected) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<r><a/></r>"));
    EXPECT_EQ(document.SelectSingleNode("r/a")->SelectSingleNode("..")->NodeName(), "r");
    EXPECT_EQ(document.DocumentElement()->SelectSingleNode("..")->Xml(), "<r><a/></r>");
    EXPECT_EQ(document.DocumentElement()->SelectSingleNode("..")->NodeName(), "#document");
}

} // namespace
