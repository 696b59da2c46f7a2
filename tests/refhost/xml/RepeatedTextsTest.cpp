// Documents that load one text again and again share what was read; nobody can tell.

#include "refhost/xml/RepeatedTexts.h"

#include "refhost/xml/Document.h"

#include <initializer_list>
#include <memory>
#include <string>

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
    EXPECT_EQ(repeated->Find(text), nullptr);
    for (int time = 1; time <= 3; ++time) {
        const auto document = CreateDocument(repeated);
        EXPECT_TRUE(document->LoadXML(text));
        EXPECT_EQ(repeated->Find(text) != nullptr, time >= 2) << time;
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
    EXPECT_EQ(repeated->Find("<a>"), nullptr);
    EXPECT_EQ(repeated->Find(longText), nullptr);
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
    EXPECT_NE(repeated->Find(text), nullptr);
}

} // namespace
