#include "host/Error.h"
#include "refhost/xml/Document.h"
#include "refhost/xml/ParameterEntities.h"
#include "tests/refhost/xml/Allocated.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/xmlIO.h>

namespace {

using refhost::xml::Document;

/// Fails when work on a text of `size` bytes asked for more memory than any that grows with the text alone could need:
/// an element of some bytes is a node of some hundred.
void ExpectLinear(const test::Allocated& allocated, std::size_t size) {
    constexpr std::size_t always = 16'000'000;
    constexpr std::size_t forEachByte = 200;
    EXPECT_LT(allocated.Bytes(), always + forEachByte * size);
}

bool Loads(const std::string& xml) {
    const test::Allocated allocated;
    const bool loaded = Document().LoadXML(xml);
    ExpectLinear(allocated, xml.size());
    return loaded;
}

std::string Repeat(std::size_t count, const std::string& text) {
    std::string all;
    all.reserve(count * text.size());
    while (count-- != 0)
        all += text;
    return all;
}

TEST(HostileXml, EveryTruncationIsRefused) {
    const std::string xml =
        "<?xml version=\"1.0\" encoding=\"gb2312\"?><!DOCTYPE q [<!ENTITY e \"v\"><!-- x -->]><!-- c -->"
        "<?p d?><q xmlns:z=\"u\" roottag='row'><row a=\"&lt;\"><b>仓&e;&#20179;</b><![CDATA[x]]>"
        "<z:c/></row><!-- e --></q>";
    ASSERT_TRUE(Loads(xml));
    for (std::size_t size = 0; size < xml.size(); ++size)
        EXPECT_FALSE(Loads(xml.substr(0, size))) << xml.substr(0, size);
}

TEST(HostileXml, NulIsRefusedWhereverItStands) {
    const std::string xml = "<a b=\"c\">d<!--e--></a>";
    for (std::size_t at = 0; at <= xml.size(); ++at)
        EXPECT_FALSE(Loads(std::string(xml).insert(at, 1, '\0'))) << at;
}

class InvalidUtf8 : public testing::TestWithParam<std::string> {};

TEST_P(InvalidUtf8, IsRefusedInTextAttributesNamesAndComments) {
    const std::string& bytes = GetParam();
    EXPECT_FALSE(Loads("<a>" + bytes + "</a>"));
    EXPECT_FALSE(Loads("<a>long enough for eight bytes at a time" + bytes + "</a>"));
    EXPECT_FALSE(Loads("<a b=\"" + bytes + "\"/>"));
    EXPECT_FALSE(Loads("<a" + bytes + "/>"));
    EXPECT_FALSE(Loads("<a><!--" + bytes + "--></a>"));
    EXPECT_FALSE(Loads("<a/>" + bytes));
}

INSTANTIATE_TEST_SUITE_P(HostileXml, InvalidUtf8,
                         testing::Values("\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC3", "\xC3(", "\xE0\x80\x80",
                                         "\xE0\x9F\xBF", "\xE4\xBB", "\xED\xA0\x80", "\xED\xBF\xBF",
                                         "\xED\xA0\x81\xED\xB0\x80", "\xF0\x80\x80\x80", "\xF0\x8F\xBF\xBF",
                                         "\xF0\xA0\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFE", "\xFF",
                                         "\xB2\xD6\xBF\xE2"));

std::string Bomb(const std::string& use) {
    std::string xml = "<!DOCTYPE a [<!ENTITY e0 \"0123456789\">";
    for (int level = 1; level <= 12; ++level)
        xml +=
            "<!ENTITY e" + std::to_string(level) + " \"" + Repeat(10, "&e" + std::to_string(level - 1) + ";") + "\">";
    return xml + "]>" + use;
}

TEST(HostileXml, EntityBombsAreRefused) {
    EXPECT_FALSE(Loads(Bomb("<a>&e12;</a>")));
    EXPECT_FALSE(Loads(Bomb("<a b=\"&e12;\"/>")));
    EXPECT_TRUE(Loads(Bomb("<a>&e2;</a>"))) << "a thousand characters are no bomb";
}

TEST(HostileXml, QuadraticEntityGrowthIsRefused) {
    const std::string type = "<!DOCTYPE a [<!ENTITY e \"" + std::string(100'000, 'x') + "\">]>";
    EXPECT_FALSE(Loads(type + "<a>" + Repeat(100'000, "&e;") + "</a>"));
    EXPECT_FALSE(Loads(type + "<a b=\"" + Repeat(100'000, "&e;") + "\"/>"));
    EXPECT_FALSE(
        Loads("<!DOCTYPE a [<!ENTITY e \"" + Repeat(10'000, "<b/>") + "\">]><a>" + Repeat(100'000, "&e;") + "</a>"));
}

TEST(HostileXml, NothingIsReadBehindTheFirstError) {
    // Each of these errors would cost libxml2 a copy of the comment so far.
    EXPECT_FALSE(Loads("<a><!--" + Repeat(1'000'000, "-- ") + "--></a>"));
    EXPECT_FALSE(Loads("<a><!--" + std::string(100'000'000, 'x') + Repeat(1'000, "-- ") + "--></a>"));
    EXPECT_FALSE(Loads("<!DOCTYPE a [<!--" + Repeat(1'000'000, "-- ") + "-->]><a/>"));
    EXPECT_FALSE(Loads("<a>" + Repeat(1'000'000, "&b;") + "</a>"));
    EXPECT_FALSE(Loads("<a>" + Repeat(1'000'000, "<b c>") + "</a>"));
}

TEST(HostileXml, EntityLoopsAreRefused) {
    EXPECT_FALSE(Loads("<!DOCTYPE a [<!ENTITY e \"&e;\">]><a>&e;</a>"));
    EXPECT_FALSE(Loads("<!DOCTYPE a [<!ENTITY e \"&f;\"><!ENTITY f \"&e;\">]><a b=\"&e;\"/>"));
}

/// Notes what libxml2 asks for outside of its texts, files and addresses, as long as it lives, and gives it none.
class Asked {
public:
    Asked() {
        names_.clear();
        xmlRegisterInputCallbacks(
            [](const char* name) {
                names_.emplace_back(name);
                return 1;
            },
            [](const char*) -> void* { return nullptr; }, [](void*, char*, int) { return -1; },
            [](void*) { return 0; });
    }
    ~Asked() { xmlPopInputCallbacks(); }
    Asked(const Asked&) = delete;
    Asked& operator=(const Asked&) = delete;

    const std::vector<std::string>& names() const { return names_; }

private:
    inline static std::vector<std::string> names_;
};

TEST(HostileXml, NothingOutsideTheTextIsRead) {
    const Asked asked;
    // The library itself does ask, for its catalog first.
    xmlFreeDoc(xmlReadFile("kovra-asked-for.xml", nullptr, XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
    ASSERT_EQ(asked.names().back(), "kovra-asked-for.xml");

    const std::string path = testing::TempDir() + "kovra-secret.txt";
    std::ofstream(path) << "secret";
    for (const std::string& uri :
         {"file://" + path, path, std::string("http://127.0.0.1:9/x"), std::string("/etc/passwd")}) {
        EXPECT_FALSE(Loads("<!DOCTYPE a [<!ENTITY e SYSTEM \"" + uri + "\">]><a>&e;</a>")) << uri;
        EXPECT_FALSE(Loads("<!DOCTYPE a [<!ENTITY e SYSTEM \"" + uri + "\">]><a b=\"&e;\"/>")) << uri;
        EXPECT_FALSE(Loads("<!DOCTYPE a SYSTEM \"" + uri + "\" [<!ENTITY e SYSTEM \"" + uri + "\">]><a>&e;</a>"))
            << uri;
        EXPECT_TRUE(Loads("<!DOCTYPE a [<!ENTITY e PUBLIC \"p\" \"" + uri + "\">]><a/>")) << uri;
        EXPECT_TRUE(Loads("<!DOCTYPE a [<!ENTITY % e SYSTEM \"" + uri + "\">]><a/>")) << uri;
        EXPECT_FALSE(Loads("<!DOCTYPE a [<!ENTITY % e SYSTEM \"" + uri + "\"> %e;]><a/>")) << uri;
        EXPECT_TRUE(Loads("<!DOCTYPE a SYSTEM \"" + uri + "\"><a/>")) << uri;
        EXPECT_TRUE(Loads("<!DOCTYPE a PUBLIC \"p\" \"" + uri + "\" []><a/>")) << uri;
        const std::string unparsed =
            "<!DOCTYPE a [<!NOTATION n SYSTEM 'n'><!ENTITY e SYSTEM \"" + uri + "\" NDATA n>]>";
        EXPECT_TRUE(Loads(unparsed + "<a/>")) << uri;
        EXPECT_FALSE(Loads(unparsed + "<a>&e;</a>")) << uri;
    }
    std::filesystem::remove(path);
    Document document;
    ASSERT_TRUE(
        document.LoadXML("<a xmlns:xi=\"http://www.w3.org/2001/XInclude\"><xi:include href=\"/etc/passwd\"/></a>"));
    EXPECT_EQ(document.DocumentElement()->Text(), "");
    EXPECT_EQ(asked.names().back(), "kovra-asked-for.xml");
}

/// A document type whose parameter entities each hold the one before ten times.
std::string ParameterBomb(int levels) {
    std::string xml = "<!DOCTYPE a [<!ENTITY % p0 \"<!-- 0123456789 -->\">";
    for (int level = 1; level <= levels; ++level)
        xml += "<!ENTITY % p" + std::to_string(level) + " \"" +
               Repeat(10, "&#37;p" + std::to_string(level - 1) + "; ") + "\">";
    return xml + "%p" + std::to_string(levels) + ";]><a/>";
}

/// A document type whose parameter entities each hold the one before so many times, and a comment of their own.
std::string ParameterChain(int levels, std::size_t times) {
    std::string xml = "<!DOCTYPE a [<!ENTITY % p0 \"<!-- 0123456789 -->\">";
    for (int level = 1; level <= levels; ++level)
        xml += "<!ENTITY % p" + std::to_string(level) + " \"" +
               Repeat(times, "&#37;p" + std::to_string(level - 1) + "; <!-- " + std::to_string(level) + " --> ") +
               "\">";
    return xml + "%p" + std::to_string(levels) + ";]><a/>";
}

/// The text with its parameter entities written out within 1,000 bytes, or why not.
std::string WrittenOut(const std::string& xml) {
    const refhost::xml::WrittenOut result = refhost::xml::WriteOutParameterEntities(xml, 1'000);
    return result.text.value_or(result.reason.empty() ? xml : result.reason);
}

TEST(HostileXml, ParameterEntitiesAreWrittenOutWithinTheBudget) {
    EXPECT_EQ(WrittenOut("<!DOCTYPE a [<!ENTITY % p '<?p?>'>%p;%p;]><a/>"),
              "<!DOCTYPE a [<!ENTITY % p '<?p?>'> <?p?>  <?p?> ]><a/>");
    // Each use costs the entity's length and the two blanks: 1,000 bytes hold 500 of an empty one.
    EXPECT_EQ(WrittenOut("<!DOCTYPE a [<!ENTITY % p ''>" + Repeat(500, "%p;") + "]>"),
              "<!DOCTYPE a [<!ENTITY % p ''>" + std::string(1'000, ' ') + "]>");
    const std::string tooMuch = "The text's parameter entities expand to too much.";
    EXPECT_EQ(WrittenOut("<!DOCTYPE a [<!ENTITY % p ''>" + Repeat(501, "%p;") + "]>"), tooMuch);
    EXPECT_EQ(WrittenOut(ParameterBomb(12)), tooMuch);
    EXPECT_EQ(WrittenOut(ParameterChain(30, 2)), tooMuch);
}

TEST(HostileXml, ParameterEntityBombsAreRefused) {
    const auto refused = [](const std::string& xml) {
        const test::Allocated allocated;
        Document document;
        EXPECT_FALSE(document.LoadXML(xml));
        ExpectLinear(allocated, xml.size());
        return document.LoadError();
    };
    const std::string tooMuch = "The text's parameter entities expand to too much.";
    EXPECT_EQ(refused(ParameterBomb(12)), tooMuch);
    EXPECT_EQ(refused(ParameterChain(30, 2)), tooMuch);
    EXPECT_EQ(refused(ParameterChain(20, 1'000)), tooMuch);
    EXPECT_EQ(
        refused("<!DOCTYPE a [<!ENTITY % p '" + std::string(100'000, ' ') + "'>" + Repeat(100'000, "%p;") + "]><a/>"),
        tooMuch);
    EXPECT_TRUE(Loads(ParameterBomb(2))) << "a hundred comments are no bomb";
    EXPECT_TRUE(Loads(ParameterChain(500, 1))) << "nor are many levels";
}

TEST(HostileXml, ParameterEntitiesThatHoldThemselvesAreRefused) {
    EXPECT_EQ(WrittenOut("<!DOCTYPE a [<!ENTITY % p \"&#37;p;\">%p;]><a/>"), "The parameter entity 'p' holds itself.");
    EXPECT_FALSE(Loads("<!DOCTYPE a [<!ENTITY % p \"&#37;p;\">%p;]><a/>"));
    EXPECT_EQ(WrittenOut("<!DOCTYPE a [<!ENTITY % p '&#37;q;'><!ENTITY % q ' &#37;p;'>%p;]><a/>"),
              "The parameter entity 'p' holds itself.");
    EXPECT_FALSE(Loads("<!DOCTYPE a [<!ENTITY % p '&#37;q;'><!ENTITY % q ' &#37;p;'>%p;]><a/>"));
}

TEST(HostileXml, ErrorsInsideOfParameterEntitiesEndTheText) {
    // Each makes libxml2 stop where it had an entity open, had it been told of one.
    for (const std::string declaration :
         {"<!ELEMENT a b>", "<!ENTITY e '&#0;'>", "<!ATTLIST a b CDATA '<'>", "<!NOTATION n>", "<!-- -- -->",
          "<?xml version='1.0'?>", "<!b>", "<!ELEMENT"}) {
        const std::string twice = declaration + Repeat(1'000, " ") + declaration;
        for (const std::string& xml :
             {"<!DOCTYPE a [<!ENTITY % p \"" + twice + "\">%p; ]><a/>",
              "<!DOCTYPE a [<!ENTITY % p \"" + twice + "\"><!ENTITY % q ' &#37;p; '>%q; %q;]><a/>"})
            EXPECT_FALSE(Loads(xml)) << xml;
    }
    std::string many;
    for (int n = 0; n < 3'000; ++n)
        many += " a" + std::to_string(n) + " CDATA ''";
    EXPECT_FALSE(Loads("<!DOCTYPE a [<!ENTITY % p \"<!ATTLIST a" + many + ">\">%p; ]><a/>"));
    EXPECT_FALSE(Loads("<!DOCTYPE a [<!ENTITY % p \"<!ENTITY e '&e;'>\">%p; ]><a>&e;</a>"));
}

TEST(HostileXml, EveryTruncationOfParameterEntitiesIsRefused) {
    const std::string xml = "<!DOCTYPE q [<!ENTITY % x '&#37;z;'><!ENTITY % z \"<!ENTITY e 'v'><!-- x -->\">%x; "
                            "<!ENTITY % o PUBLIC 'p' 'o'>%z;]><q>&e;</q>";
    ASSERT_TRUE(Loads(xml));
    for (std::size_t size = 0; size < xml.size(); ++size)
        EXPECT_FALSE(Loads(xml.substr(0, size))) << xml.substr(0, size);
}

TEST(HostileXml, DefaultsThatMultiplyAreRefused) {
    EXPECT_FALSE(Loads("<!DOCTYPE a [<!ATTLIST b c CDATA '" + std::string(100'000, 'x') + "'>]><a>" +
                       Repeat(100'000, "<b/>") + "</a>"));
    std::string many = "<!DOCTYPE a [<!ATTLIST a";
    for (int n = 0; n < 2049; ++n)
        many += " a" + std::to_string(n) + " CDATA ''";
    EXPECT_FALSE(Loads(many + ">]><a/>"));
}

TEST(HostileXml, DeepNestingIsSurvived) {
    constexpr std::size_t depth = 100'000;
    const std::string xml = Repeat(depth, "<a>") + "x" + Repeat(depth, "</a>");
    Document document;
    ASSERT_TRUE(document.LoadXML(xml));
    EXPECT_EQ(document.Xml(), xml);
    EXPECT_EQ(document.DocumentElement()->Text(), "x");
    EXPECT_EQ(document.SelectNodes("//a").size(), depth);
    EXPECT_EQ(document.SelectSingleNode("//a[not(a)]")->Xml(), "<a>x</a>");
    EXPECT_FALSE(document.LoadXML(Repeat(depth, "<a>")));
    EXPECT_FALSE(document.LoadXML(Repeat(depth, "<a>") + Repeat(depth - 1, "</a>")));
}

TEST(HostileXml, DeepTreesCanBeBuiltAndDropped) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<a/>"));
    host::DOMNodePtr at = document.DocumentElement();
    for (int depth = 0; depth < 100'000; ++depth) {
        host::DOMNodePtr child = document.CreateElement("a");
        at->AppendChild(*child);
        at = std::move(child);
    }
    EXPECT_EQ(document.Xml(), Repeat(100'000, "<a>") + "<a/>" + Repeat(100'000, "</a>"));
}

TEST(HostileXml, TwentyMegabytesOfTextAreSurvived) {
    // By itself libxml2 takes no text beyond 10 MB.
    const std::string text(20'000'000, 'x');
    Document document;
    ASSERT_TRUE(document.LoadXML("<a><b>" + text + "</b></a>"));
    EXPECT_TRUE(document.DocumentElement()->Text() == text);
    ASSERT_TRUE(document.LoadXML("<a><![CDATA[" + text + "]]></a>"));
    EXPECT_TRUE(document.DocumentElement()->Text() == text);
    ASSERT_TRUE(document.LoadXML("<a b=\"" + text + "\"/>"));
    EXPECT_TRUE(document.DocumentElement()->GetAttribute("b") == text);
    EXPECT_EQ(document.Xml().size(), text.size() + 9);
}

TEST(HostileXml, NumberOfAttributesIsBounded) {
    const auto element = [](int count) {
        std::string xml = "<a";
        for (int n = 0; n < count; ++n)
            xml += " a" + std::to_string(n) + "=\"\"";
        return xml + "/>";
    };
    EXPECT_TRUE(Loads(element(2048)));
    EXPECT_FALSE(Loads(element(2049)));
    EXPECT_FALSE(Loads(element(1'000'000)));
}

TEST(HostileXml, NumberOfDifferentNamesIsBounded) {
    const auto children = [](int count) {
        std::string xml = "<a>";
        for (int n = 0; n < count; ++n)
            xml += "<name" + std::to_string(n) + "/>";
        return xml + "</a>";
    };
    EXPECT_TRUE(Loads(children(20'000)));
    EXPECT_FALSE(Loads(children(1'000'000)));
    EXPECT_TRUE(Loads("<a>" + Repeat(1'000'000, "<name/>") + "</a>"));
    const auto entities = [](int count) {
        std::string xml = "<!DOCTYPE a [";
        for (int n = 0; n < count; ++n)
            xml += "<!ENTITY name" + std::to_string(n) + " 'x'>";
        return xml + "]><a>&name1;</a>";
    };
    EXPECT_TRUE(Loads(entities(20'000)));
    EXPECT_FALSE(Loads(entities(1'000'000)));
}

TEST(HostileXml, ManyPrefixesCostNoMoreThanTheirLength) {
    constexpr int depth = 50'000;
    std::string xml;
    std::string ends;
    for (int n = 0; n < depth; ++n) {
        xml += "<p" + std::to_string(n) + ":a xmlns:p" + std::to_string(n) + "=\"u\">";
        ends += "</p" + std::to_string(depth - 1 - n) + ":a>";
    }
    // Were each prefix looked for from the innermost element outwards, this would take 50 thousand million steps.
    EXPECT_TRUE(Loads(xml + Repeat(1'000'000, "<p0:b/>") + ends));
}

TEST(HostileXml, ManyBlankTextsInADeepTreeCostNoMoreThanTheirLength) {
    // Were each text asked for its outer elements' `xml:space`, this would take 50 thousand million steps.
    const std::string xml = Repeat(50'000, "<a> ") + Repeat(1'000'000, "<b/> ") + Repeat(50'000, "</a> ");
    EXPECT_TRUE(Loads(xml));
}

TEST(HostilePath, EndlessPathsAreRefused) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<a><b/></a>"));
    const auto refused = [&](const std::string& path) {
        EXPECT_THROW(document.SelectNodes(path), host::Error) << path.substr(0, 20);
    };
    refused(std::string(100'000, '('));
    refused(Repeat(100'000, "a["));
    refused(Repeat(100'000, "-") + "1");
    refused("a[" + Repeat(100'000, "not(") + "1" + Repeat(100'000, ")") + "]");
    document.SelectNodes(Repeat(60, "*/") + "*");
    EXPECT_TRUE(document.SelectNodes(Repeat(65, "b/") + "b").empty());
}

TEST(HostilePath, PathsThatMultiplyAreStopped) {
    Document document;
    ASSERT_TRUE(document.LoadXML("<a>" + Repeat(3'000, "<b/>") + "</a>"));
    EXPECT_THROW(document.SelectNodes("//b[//b[//b[//b[//c]]]]"), host::Error);
}

} // namespace
