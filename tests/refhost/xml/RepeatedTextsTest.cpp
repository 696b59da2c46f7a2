// Documents that load one text again and again share what was read; nobody can tell.

#include "refhost/xml/RepeatedTexts.h"

#include "host/Error.h"
#include "refhost/xml/Document.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using refhost::xml::CreateDocument;
using refhost::xml::RepeatedTexts;

/// All kinds of nodes.
const std::string text =
    "<?xml version=\"1.0\" standalone=\"yes\"?><!--c--><a b=\"1\" xmlns:p=\"u\"><p:d>x<![CDATA[y]]></p:d>"
    "<?i j?><e/><f><g h=\"\"/></f></a>";

TEST(RepeatedTexts, AreCopiedFromTheThirdTimeOn) {
    const auto repeated = std::make_shared<RepeatedTexts>();
    EXPECT_EQ(repeated->Find(text).tree, nullptr);
    for (int time = 1; time <= 3; ++time) {
        const auto document = CreateDocument(repeated);
        EXPECT_TRUE(document->LoadXML(text));
        EXPECT_EQ(repeated->Find(text).tree != nullptr, time >= 2) << time;
    }
}

TEST(RepeatedTexts, GiveDocumentsOfTheirOwn) {
    const auto repeated = std::make_shared<RepeatedTexts>();
    for (int time = 1; time <= 4; ++time) {
        const auto document = CreateDocument(repeated);
        ASSERT_TRUE(document->LoadXML(text));
        EXPECT_EQ(document->Xml(), text) << time;
        EXPECT_EQ(document->LoadError(), "");
        // What is changed here, the next one does not see.
        const host::DOMNodePtr root = document->DocumentElement();
        root->SetAttribute("b", "2");
        root->SelectSingleNode("f/g")->SetAttribute("h", "3");
        root->SelectSingleNode("p:d")->SetText("z");
        root->AppendChild(*document->CreateElement("p:k"));
        EXPECT_EQ(document->Xml(),
                  "<?xml version=\"1.0\" standalone=\"yes\"?><!--c--><a b=\"2\" xmlns:p=\"u\"><p:d>z</p:d>"
                  "<?i j?><e/><f><g h=\"3\"/></f><p:k/></a>");
    }
}

TEST(RepeatedTexts, TakeOtherTextsOfEveryLength) {
    const auto repeated = std::make_shared<RepeatedTexts>();
    for (int time = 1; time <= 4; ++time) {
        const auto document = CreateDocument(repeated);
        ASSERT_TRUE(document->LoadXML(text));
        EXPECT_EQ(document->Xml(), text) << time;
        const host::DOMNodePtr root = document->DocumentElement();
        const host::DOMNodePtr element = root->SelectSingleNode("e");
        for (const std::size_t length :
             std::initializer_list<std::size_t>{1, 2, 8, 9, 3, 40, 39, 8, 0, 5, 41, 7, 200}) {
            const std::string value(length, static_cast<char>('a' + length % 26));
            root->SetAttribute("b", value);
            element->SetText(value);
            EXPECT_EQ(root->GetAttribute("b"), value) << length;
            EXPECT_EQ(element->Text(), value) << length;
            root->SetAttribute("b", root->GetAttribute("b").value() + "x");
            EXPECT_EQ(root->GetAttribute("b"), value + "x") << length;
        }
        EXPECT_EQ(root->SelectSingleNode("p:d")->Text(), "xy");
        EXPECT_EQ(root->SelectSingleNode("f/g")->GetAttribute("h"), "");
    }
}

TEST(RepeatedTexts, OutliveWhoReadThem) {
    auto repeated = std::make_shared<RepeatedTexts>();
    const auto first = CreateDocument(repeated);
    const auto last = CreateDocument(repeated);
    for (int time = 1; time <= 3; ++time) {
        first->LoadXML(text);
    }
    last->LoadXML(text);
    first->LoadXML("<other/>");
    repeated.reset();
    EXPECT_EQ(last->Xml(), text);
    EXPECT_EQ(last->SelectSingleNode("//g")->GetAttribute("h"), "");
}

TEST(RepeatedTexts, DoNotHoldWhatIsWrongOrLong) {
    const auto repeated = std::make_shared<RepeatedTexts>();
    const std::string longText = "<a>" + std::string(65536, 'x') + "</a>";
    for (int time = 1; time <= 3; ++time) {
        const auto document = CreateDocument(repeated);
        EXPECT_FALSE(document->LoadXML("<a>"));
        EXPECT_EQ(document->Xml(), "");
        EXPECT_NE(document->LoadError(), "");
        EXPECT_TRUE(document->LoadXML(longText));
        EXPECT_EQ(document->LoadError(), "");
    }
    EXPECT_EQ(repeated->Find("<a>").tree, nullptr);
    EXPECT_EQ(repeated->Find(longText).tree, nullptr);
}

/// Copies share the paths that were compiled for one of them; what one of them alone has, the others do not find.
TEST(RepeatedTexts, SharePathsThatEachFollowsInItsOwnTree) {
    const auto repeated = std::make_shared<RepeatedTexts>();
    std::vector<std::unique_ptr<host::DOMDocument>> documents;
    for (int time = 1; time <= 4; ++time) {
        documents.push_back(CreateDocument(repeated));
        ASSERT_TRUE(documents.back()->LoadXML(text));
    }
    host::DOMDocument& third = *documents[2];
    host::DOMDocument& fourth = *documents[3];
    EXPECT_EQ(third.SelectSingleNode("/a/new"), nullptr);
    fourth.DocumentElement()->AppendChild(*fourth.CreateElement("new"));
    EXPECT_EQ(third.SelectSingleNode("/a/new"), nullptr);
    EXPECT_NE(fourth.SelectSingleNode("/a/new"), nullptr);
    fourth.DocumentElement()->SetAttribute("new", "5");
    EXPECT_EQ(fourth.SelectSingleNode("/a/@new")->Text(), "5");
    EXPECT_EQ(third.SelectSingleNode("/a/@new"), nullptr);
    // An XPath that takes an engine.
    EXPECT_EQ(third.SelectSingleNode("/a[@b='1']/e")->NodeName(), "e");
    fourth.DocumentElement()->SetAttribute("b", "2");
    EXPECT_EQ(fourth.SelectSingleNode("/a[@b='1']/e"), nullptr);
    EXPECT_EQ(third.SelectSingleNode("/a[@b='1']/e")->NodeName(), "e");
}

TEST(RepeatedTexts, KnowThePrefixesOfTheirOwnTree) {
    const auto repeated = std::make_shared<RepeatedTexts>();
    const auto first = CreateDocument(repeated);
    for (int time = 1; time <= 3; ++time) {
        ASSERT_TRUE(first->LoadXML(text));
    }
    first->DocumentElement()->SetAttribute("xmlns:q", "v");
    EXPECT_EQ(first->SelectSingleNode("a/q:d"), nullptr);
    const auto second = CreateDocument(repeated);
    ASSERT_TRUE(second->LoadXML(text));
    EXPECT_THROW(second->SelectSingleNode("a/q:d"), host::Error);
    EXPECT_NE(second->SelectSingleNode("a/p:d"), nullptr);
}

/// Copies share an element's attributes until one is written, whichever way.
TEST(RepeatedTexts, KeepAttributesApartWhoeverWritesThem) {
    const auto repeated = std::make_shared<RepeatedTexts>();
    const std::string xml = "<a><b c=\"1\" d=\"2\"/></a>";
    std::vector<std::unique_ptr<host::DOMDocument>> documents;
    for (int time = 1; time <= 4; ++time) {
        documents.push_back(CreateDocument(repeated));
        ASSERT_TRUE(documents.back()->LoadXML(xml));
    }
    host::DOMDocument& third = *documents[2];
    host::DOMDocument& fourth = *documents[3];
    // Handles that were there before the first change see it, and each other's.
    const host::DOMNodePtr handle = third.SelectSingleNode("/a/b/@d");
    const host::DOMNodePtr other = third.SelectSingleNode("//b/@d");
    handle->SetText("written longer");
    EXPECT_EQ(handle->Text(), "written longer");
    EXPECT_EQ(other->Text(), "written longer");
    EXPECT_EQ(other->Xml(), "d=\"written longer\"");
    other->SetText("3");
    EXPECT_EQ(handle->Text(), "3");
    EXPECT_EQ(third.Xml(), "<a><b c=\"1\" d=\"3\"/></a>");
    EXPECT_EQ(fourth.Xml(), xml);
    fourth.SelectSingleNode("/a/b")->SetAttribute("e", "4");
    EXPECT_EQ(fourth.Xml(), "<a><b c=\"1\" d=\"2\" e=\"4\"/></a>");
    EXPECT_EQ(third.Xml(), "<a><b c=\"1\" d=\"3\"/></a>");
    ASSERT_TRUE(third.LoadXML(xml));
    EXPECT_EQ(third.Xml(), xml);
}

/// A text as a saved recordset is: what stands below `s` is copied when somebody looks at it, whichever way.
const std::string saved = "<a><s><b n=\"1\"/><b n=\"2\"><c/></b><b/></s><d/></a>";

/// Copies of that text that nobody has looked at yet.
class FoldedText {
public:
    FoldedText() {
        for (int time = 1; time <= 4; ++time) {
            documents_.push_back(CreateDocument(repeated_));
            documents_.back()->LoadXML(saved);
        }
    }
    host::DOMDocument& one() { return *documents_[2]; }
    host::DOMDocument& other() { return *documents_[3]; }

private:
    std::shared_ptr<RepeatedTexts> repeated_ = std::make_shared<RepeatedTexts>();
    std::vector<std::unique_ptr<host::DOMDocument>> documents_;
};

TEST(FoldedTexts, AreFoundByEveryKindOfPath) {
    for (const char* path : {"/a/s/b", "//b", "a/s/b", ".//b", "//s/b", "/*/*/b", "/a/s/*", "/a/s/b[true()]",
                             "//b[2] | //b[position()!=2]"}) {
        FoldedText text;
        EXPECT_EQ(text.one().SelectNodes(path).size(), 3U) << path;
        EXPECT_EQ(text.other().SelectSingleNode(path)->NodeName(), "b") << path;
        EXPECT_EQ(text.one().Xml(), saved) << path;
    }
    FoldedText text;
    EXPECT_EQ(text.one().SelectSingleNode("/a/s/b/@n")->Text(), "1");
    EXPECT_EQ(text.one().SelectSingleNode("//b/c")->NodeName(), "c");
    EXPECT_EQ(text.one().SelectNodes("/a/s/x").size(), 0U);
}

TEST(FoldedTexts, AreSeenThroughTheNodesAbove) {
    EXPECT_EQ(FoldedText().one().DocumentElement()->Xml(), saved);
    EXPECT_EQ(FoldedText().one().SelectSingleNode("/a/s")->ChildNodes().size(), 3U);
    EXPECT_EQ(FoldedText().one().SelectNodes("//s").at(0)->SelectNodes("b").size(), 3U);
    EXPECT_EQ(FoldedText().one().SelectNodes("/a/*").at(0)->Xml(), "<s><b n=\"1\"/><b n=\"2\"><c/></b><b/></s>");
}

TEST(FoldedTexts, AreSeenFromTheNodesBeside) {
    FoldedText text;
    const host::DOMNodePtr beside = text.one().SelectSingleNode("/a/d");
    EXPECT_EQ(beside->SelectNodes("b").size(), 0U);
    EXPECT_EQ(beside->SelectNodes("//b").size(), 3U);
    EXPECT_EQ(FoldedText().one().SelectSingleNode("/a/d")->SelectNodes("../s/b").size(), 3U);
    // It stands where it stood.
    beside->SetAttribute("e", "f");
    EXPECT_EQ(text.one().SelectSingleNode("/a/d")->GetAttribute("e"), "f");
}

/// What is written beside and what comes later stand in one document with what was folded.
TEST(FoldedTexts, KeepTheirPlace) {
    FoldedText text;
    const host::DOMNodePtr beside = text.one().SelectSingleNode("/a/d");
    beside->AppendChild(*text.one().CreateElement("b"));
    EXPECT_EQ(text.one().SelectNodes("/a/d/b").size(), 1U);
    EXPECT_EQ(text.one().SelectNodes("//b").size(), 4U);
    EXPECT_EQ(text.one().Xml(), "<a><s><b n=\"1\"/><b n=\"2\"><c/></b><b/></s><d><b/></d></a>");
    EXPECT_EQ(text.other().Xml(), saved);
}

TEST(FoldedTexts, TellTheirAttributes) {
    FoldedText text;
    using Values = std::vector<std::string>;
    for (int time = 1; time <= 2; ++time) {
        for (host::DOMDocument* document : {&text.one(), &text.other()}) {
            EXPECT_EQ(document->AttributesAt("/a/s/b", "n"), (Values{"1", "2", ""}));
            EXPECT_EQ(document->AttributesAt("/a/s/b", "m"), (Values{"", "", ""}));
            EXPECT_EQ(document->AttributesAt("//c", "n"), Values{""});
            EXPECT_EQ(document->AttributesAt("/a/d/b", "n"), Values());
        }
    }
    // Of nodes that were folded and of others.
    const host::DOMNodePtr added = text.one().CreateElement("b");
    added->SetAttribute("n", "3");
    text.one().SelectSingleNode("/a/d")->AppendChild(*added);
    EXPECT_EQ(text.one().AttributesAt("//b", "n"), (Values{"1", "2", "", "3"}));
    EXPECT_EQ(text.other().AttributesAt("//b", "n"), (Values{"1", "2", ""}));
    // Written, they are one document's own.
    text.one().SelectSingleNode("/a/s/b")->SetAttribute("n", "9");
    EXPECT_EQ(text.one().AttributesAt("/a/s/b", "n"), (Values{"9", "2", ""}));
    EXPECT_EQ(text.other().AttributesAt("/a/s/b", "n"), (Values{"1", "2", ""}));
}

/// The names that copies add do not pile up for ever.
TEST(RepeatedTexts, BeginAnewWhenTheirCopiesHaveAddedManyNames) {
    const auto repeated = std::make_shared<RepeatedTexts>();
    const auto document = CreateDocument(repeated);
    for (int number = 0; number < 3; ++number) {
        document->LoadXML(text);
    }
    for (int number = 0; number <= 4096; ++number) {
        document->DocumentElement()->SetAttribute("n" + std::to_string(number), "");
    }
    EXPECT_EQ(repeated->Find(text).tree, nullptr);
    EXPECT_TRUE(document->LoadXML(text));
    EXPECT_EQ(document->Xml(), text);
    EXPECT_NE(repeated->Find(text).tree, nullptr);
}

/// Those that come once each do not push out one that comes again and again.
TEST(RepeatedTexts, StayAmongOthers) {
    const auto repeated = std::make_shared<RepeatedTexts>();
    const auto document = CreateDocument(repeated);
    document->LoadXML(text);
    document->LoadXML(text);
    for (int number = 0; number < 20; ++number) {
        document->LoadXML("<n>" + std::to_string(number) + "</n>");
    }
    EXPECT_NE(repeated->Find(text).tree, nullptr);
}

} // namespace
