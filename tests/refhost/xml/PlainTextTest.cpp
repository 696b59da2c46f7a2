// Plain texts are read by our own reader, all others by libxml2: whoever reads must not matter.

#include "refhost/xml/PlainText.h"

#include "refhost/xml/Parser.h"
#include "refhost/xml/Writer.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using refhost::xml::ReadPlainText;

std::string XmlOf(const refhost::xml::Tree& tree) { return ToXml(tree, tree.document()); }

/// Texts with all that is read here, and what they are.
const std::vector<std::pair<std::string, std::string>> plainTexts = {
    {"<a/>", "<a/>"},
    {"<a></a>", "<a/>"},
    {" \r\n<a />\t", "<a/>"},
    {R"(<?xml version="1.0"?><a/>)", R"(<?xml version="1.0"?><a/>)"},
    {"<?xml version=\"1.0\" encoding=\"GB2312\" ?>\r\n<a/>", R"(<?xml version="1.0"?><a/>)"},
    {"<q d='1' e = \"x'y\"><r>\n  <f>I1</f > <g/>\n</r></q>", R"(<q d="1" e="x'y"><r><f>I1</f><g/></r></q>)"},
    {"<a>  x  </a>", "<a>  x  </a>"},
    {"<a>1\r\n2\r3\n4</a>", "<a>1\n2\n3\n4</a>"},
    {"<a>\r\n<b/>x</a>", "<a><b/>x</a>"},
    {"<a>&lt;&gt;&amp;&quot;&apos;</a>", "<a>&lt;&gt;&amp;\"'</a>"},
    {"<a b='&#9;&#10;&lt;&quot;'>&#20013;&#x6587;&#x1F600;</a>", "<a b=\"&#x9;&#xA;&lt;&quot;\">中文😀</a>"},
    {"<a>&#32;</a>", "<a/>"},
    {"<a>x&#13;</a>", "<a>x&#xD;</a>"},
    {"<a>存货]]，ｆｕｌｌ</a>", "<a>存货]]，ｆｕｌｌ</a>"},
    {"<a.b-c_1><_d/></a.b-c_1>", "<a.b-c_1><_d/></a.b-c_1>"},
};

/// Texts that are left to libxml2: what is rare, and what is wrong.
const std::vector<std::string> otherTexts = {
    "",
    "x",
    "<a>",
    "<a",
    "</a>",
    "<a></b>",
    "<a></aa>",
    "<aa></a>",
    "<a/><b/>",
    "<a/>x",
    "x<a/>",
    "<a>]]></a>",
    "<a>&nbsp;</a>",
    "<a>&</a>",
    "<a>&#0;</a>",
    "<a>&#xFFFE;</a>",
    "<a>&#xD800;</a>",
    "<a>&#x110000;</a>",
    "<a>&#99999999999;</a>",
    "<a>&#;</a>",
    "<a>&#-1;</a>",
    "<a>&#x;</a>",
    "<a>\x01</a>",
    "<a>\xEF\xBF\xBE</a>",
    "<a b='\xEF\xBF\xBF'/>",
    "<a b=1/>",
    "<a b/>",
    "<a b='1' b='2'/>",
    "<a b='1'c='2'/>",
    "<a b='<'/>",
    "<a b='1\t2'/>",
    "<a b='1\r\n2'/>",
    "< a/>",
    "<1/>",
    "<中/>",
    "<p:a xmlns:p='u'/>",
    "<a xmlns='u'/>",
    "<a xml:space='preserve'> </a>",
    "<!-- c --><a/>",
    "<a><!-- c --></a>",
    "<a><![CDATA[x]]></a>",
    "<a><?p x?></a>",
    "<!DOCTYPE a><a/>",
    "<?xml version=\"1.1\"?><a/>",
    "<?xml version='1.0'?><a/>",
    "<?xml version=\"1.0\" standalone=\"yes\"?><a/>",
    "<?xml version=\"1.0\" encoding=\"\"?><a/>",
    " <?xml version=\"1.0\"?><a/>",
    "\xEF\xBB\xBF<a/>",
};

/// Where our reader reads a text, libxml2 reads the same.
void ExpectSame(const std::string& text) {
    const std::unique_ptr<refhost::xml::Tree> plain = ReadPlainText(text);
    if (!plain) {
        return;
    }
    const refhost::xml::ParseResult other = refhost::xml::ParseByLibxml(text);
    ASSERT_NE(other.tree, nullptr) << text << "\n" << other.reason;
    EXPECT_EQ(XmlOf(*plain), XmlOf(*other.tree)) << text;
    EXPECT_EQ(plain->declaration, other.tree->declaration) << text;
}

TEST(PlainText, IsReadHere) {
    for (const auto& [text, xml] : plainTexts) {
        const std::unique_ptr<refhost::xml::Tree> tree = ReadPlainText(text);
        ASSERT_NE(tree, nullptr) << text;
        EXPECT_EQ(XmlOf(*tree), xml) << text;
        ExpectSame(text);
    }
}

TEST(PlainText, IsNothingElse) {
    for (const std::string& text : otherTexts) {
        EXPECT_EQ(ReadPlainText(text), nullptr) << text;
    }
}

/// Every text cut short, and with each of its bytes replaced, left out or doubled.
TEST(PlainText, BrokenAnywhereIsReadAsByLibxml) {
    constexpr std::string_view replacements = "<>/&;'\"= \t\r\n]-!?:#xa1";
    for (const auto& [text, xml] : plainTexts) {
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (static_cast<unsigned char>(text[at]) >= 0x80) {
                continue; // a reader's text is always UTF-8
            }
            ExpectSame(text.substr(0, at));
            ExpectSame(text.substr(0, at) + text.substr(at + 1));
            ExpectSame(text.substr(0, at) + text[at] + text.substr(at));
            for (const char replacement : replacements) {
                std::string broken = text;
                broken[at] = replacement;
                ExpectSame(broken);
            }
        }
    }
}

TEST(PlainText, HasBounds) {
    const auto nested = [](std::size_t depth) {
        std::string text;
        for (std::size_t level = 0; level < depth; ++level) {
            text += "<a>";
        }
        for (std::size_t level = 0; level < depth; ++level) {
            text += "</a>";
        }
        return text;
    };
    const auto attributes = [](std::size_t count) {
        std::string text = "<a";
        for (std::size_t number = 0; number < count; ++number) {
            text += " b" + std::to_string(number) + "=''";
        }
        return text + "/>";
    };
    const auto names = [](std::size_t count) {
        std::string text = "<a>";
        for (std::size_t number = 1; number < count; ++number) {
            text += "<b" + std::to_string(number) + "/>";
        }
        return text + "</a>";
    };
    EXPECT_NE(ReadPlainText(nested(200)), nullptr);
    EXPECT_EQ(ReadPlainText(nested(201)), nullptr);
    EXPECT_NE(ReadPlainText(attributes(64)), nullptr);
    EXPECT_EQ(ReadPlainText(attributes(65)), nullptr);
    EXPECT_NE(ReadPlainText(names(1000)), nullptr);
    EXPECT_EQ(ReadPlainText(names(1001)), nullptr);
    EXPECT_EQ(ReadPlainText("<" + std::string(201, 'a') + "/>"), nullptr);
    for (const std::string& text : {nested(201), attributes(65), names(1001)}) {
        EXPECT_NE(refhost::xml::Parse(text).tree, nullptr);
    }
}

} // namespace
