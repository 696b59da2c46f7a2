#include "tests/reliability/HostileTexts.h"

namespace test {
namespace {

using namespace std::string_literals;

constexpr std::string_view fields = "<cWhCode>01</cWhCode><cInvHead>140301</cInvHead>";

/// A request around a row's content.
std::string Request(std::string_view content) {
    return "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\"><row>" + std::string(content) +
           "</row></qxinterface>";
}

/// The same with a document type.
std::string Typed(const std::string& declarations, std::string_view content) {
    return "<!DOCTYPE qxinterface [" + declarations + "]>" + Request(content);
}

/// Entities of which each stands for ten of the one before.
std::string Bomb() {
    std::string declarations = "<!ENTITY e0 \"0123456789\">";
    for (int level = 1; level <= 12; ++level) {
        declarations +=
            "<!ENTITY e" + std::to_string(level) + " \"" + Repeat(10, "&e" + std::to_string(level - 1) + ";") + "\">";
    }
    return declarations;
}

/// Attributes a0, a1, … of one element.
std::string Attributes(int count) {
    std::string attributes;
    for (int n = 0; n < count; ++n) {
        attributes += " a" + std::to_string(n) + "=\"1\"";
    }
    return attributes;
}

} // namespace

std::string Repeat(std::size_t count, std::string_view piece) {
    std::string text;
    text.reserve(count * piece.size());
    while (count-- != 0) {
        text += piece;
    }
    return text;
}

namespace {

std::vector<HostileText> MakeUnreadableTexts() {
    const std::string large = "<!ENTITY e \"" + std::string(100'000, 'x') + "\">";
    std::vector<HostileText> texts = {
        {"entity bomb in a text", Typed(Bomb(), "<cWhCode>&e12;</cWhCode>")},
        {"entity bomb in an attribute", Typed(Bomb(), "<cWhCode a=\"&e12;\"/>")},
        {"large entity used often in a text", Typed(large, Repeat(100'000, "&e;"))},
        {"large entity used often in an attribute", Typed(large, "<a b=\"" + Repeat(100'000, "&e;") + "\"/>")},
        {"entity of many elements used often",
         Typed("<!ENTITY e \"" + Repeat(1'000, "<b/>") + "\">", Repeat(100'000, "&e;"))},
        {"entity that holds itself", Typed("<!ENTITY e \"&e;\">", "&e;")},
        {"entities that hold each other", Typed("<!ENTITY e \"&f;\"><!ENTITY f \"&e;\">", "<a b=\"&e;\"/>")},
        {"entity that nobody declares", Request("&e;")},
        {"entity from a file", Typed("<!ENTITY e SYSTEM \"file:///etc/passwd\">", "<cWhCode>&e;</cWhCode>")},
        {"entity from a file by its path", Typed("<!ENTITY e SYSTEM \"/etc/passwd\">", "<cWhCode>&e;</cWhCode>")},
        {"entity from the network", Typed("<!ENTITY e SYSTEM \"http://127.0.0.1:9/e\">", "<cWhCode>&e;</cWhCode>")},
        {"entity with a public name", Typed("<!ENTITY e PUBLIC \"p\" \"http://127.0.0.1:9/e\">", "&e;")},
        {"parameter entity from a file", Typed("<!ENTITY % e SYSTEM \"/etc/passwd\"> %e;", fields)},
        {"parameter entity used often",
         Typed("<!ENTITY % e \"" + std::string(100'000, ' ') + "\">" + Repeat(100'000, "%e;"), fields)},
        {"parameter entity that holds itself", Typed("<!ENTITY % e \"&#37;e;\">%e;", fields)},
        {"document type without end", "<!DOCTYPE qxinterface [" + Repeat(100'000, "<!--")},
        {"a million attributes on one element", Request("<a" + Attributes(1'000'000) + "/>")},
        {"one attribute twice", Request("<a b=\"1\" b=\"1\"/>")},
        {"nesting 100,000 deep without end", Repeat(100'000, "<row>")},
        {"nesting 100,000 deep with one end too few", Repeat(100'000, "<row>") + Repeat(99'999, "</row>")},
        {"nesting 100,000 deep of openings that never close", Repeat(100'000, "<row ")},
        {"lone high surrogate", Request("<cWhCode>\xED\xA0\x80</cWhCode>")},
        {"lone low surrogate", Request("<cWhCode>\xED\xBF\xBF</cWhCode>")},
        {"pair of surrogates in three bytes each", Request("<cWhCode>\xED\xA1\x80\xED\xB0\x80</cWhCode>")},
        {"lone surrogate by number", Request("<cWhCode>&#xD800;</cWhCode>")},
        {"pair of surrogates by number", Request("<cWhCode>&#xD840;&#xDC00;</cWhCode>")},
        {"reference beyond the last character", Request("<cWhCode>&#x110000;</cWhCode>")},
        {"reference of endless digits", Request("<cWhCode>&#" + std::string(1'000'000, '9') + ";</cWhCode>")},
        {"reference to NUL", Request("<cWhCode>&#0;</cWhCode>")},
        {"NUL in a text", Request("<cWhCode>0\0001</cWhCode>"s)},
        {"NUL in front", "\0"s + Request(fields)},
        {"NUL behind", Request(fields) + "\0"s},
        {"NUL in a name", Request("<c\0WhCode/>"s)},
        {"NUL in an attribute", Request("<a b=\"\0\"/>"s)},
        {"control character", Request("<cWhCode>\x01</cWhCode>")},
        {"character that is none", Request("<cWhCode>\xEF\xBF\xBF</cWhCode>")},
        {"overlong form of a bracket", Request("\xC0\xBC\xC0\xBE")},
        {"sequence cut off", Request("<cWhCode>\xE4\xBB</cWhCode>")},
        {"another encoding than UTF-8", Request("<cWhCode>\xB2\xD6</cWhCode>")},
        {"nothing", ""},
        {"blanks", "  \r\n\t"},
        {"no element", "<?xml version=\"1.0\"?><!-- nothing -->"},
        {"two roots", Request(fields) + Request(fields)},
        {"text behind the root", Request(fields) + "x"},
        {"end before the start", "</row><row>"},
        {"elements crossed", "<qxinterface><a><b></a></b></qxinterface>"},
        {"attribute without quotes", "<qxinterface roottag=row/>"},
        {"XML 1.1", "<?xml version=\"1.1\"?>" + Request(fields)},
        {"declaration not in front", " <?xml version=\"1.0\"?>" + Request(fields)},
        {"section without end", Request("<![CDATA[")},
        {"comment without end", Request("<!--")},
        {"prefix that nobody declares", Request("<z:a/>")},
        {"100,000 brackets", Repeat(100'000, "<")},
        {"a million different names", Request([] {
             std::string names;
             for (int n = 0; n < 1'000'000; ++n) {
                 names += "<a" + std::to_string(n) + "/>";
             }
             return names;
         }())},
    };
    // A request cut off anywhere.
    const std::string whole = Typed("<!ENTITY e \"01\">", "<cWhCode>&e;</cWhCode><cInvHead a='1'>140301</cInvHead>");
    for (std::size_t size = 1; size < whole.size(); ++size) {
        texts.push_back({"request cut off", whole.substr(0, size)});
    }
    return texts;
}

std::vector<HostileText> MakeReadableTexts() {
    constexpr std::size_t depth = 100'000;
    constexpr std::size_t million = 1'000'000;
    const std::string code = "<cInvHead>140301</cInvHead>";
    const std::string deepCode =
        "<cWhCode>" + Repeat(depth, "<a>") + "01" + Repeat(depth, "</a>") + "</cWhCode>" + code;
    return {
        {"entity that is never used from the network", Typed("<!ENTITY e SYSTEM \"http://127.0.0.1:9/e\">", fields)},
        {"unparsed entity", Typed("<!NOTATION n SYSTEM 'n'><!ENTITY e SYSTEM \"/etc/passwd\" NDATA n>", fields)},
        {"document type from a file", "<!DOCTYPE qxinterface SYSTEM \"/etc/passwd\">" + Request(fields)},
        {"document type from the network", "<!DOCTYPE qxinterface SYSTEM \"http://127.0.0.1:9/d\">" + Request(fields)},
        {"document type with a public name", "<!DOCTYPE qxinterface PUBLIC \"p\" \"d.dtd\" []>" + Request(fields)},
        {"document type with a default attribute", Typed("<!ATTLIST row a CDATA \"1\">", fields)},
        {"small entity", Typed("<!ENTITY e \"01\">", "<cWhCode>&e;</cWhCode>" + code)},
        {"parameter entity", Typed("<!ENTITY % p \"<!ENTITY e '01'>\"> %p;", "<cWhCode>&e;</cWhCode>" + code)},
        {"internal document type", Typed("<!ELEMENT row ANY><!ATTLIST row a CDATA #IMPLIED>", fields)},
        {"nesting 100,000 deep around a value", Request(deepCode)},
        {"nesting 100,000 deep beside the values", Request(Repeat(depth, "<a>") + Repeat(depth, "</a>") + deepCode)},
        {"2,048 attributes on one element", Request("<a" + Attributes(2048) + "/>" + std::string(fields))},
        {"a million attributes on as many elements", Request(Repeat(million, "<a b=\"1\"/>") + std::string(fields))},
        {"a million elements", Request(Repeat(million, "<a/>") + std::string(fields))},
        {"a million comments", Request(Repeat(million, "<!---->") + std::string(fields))},
        {"a million sections", Request("<cWhCode>" + Repeat(million, "<![CDATA[]]>") + "01</cWhCode>" + code)},
        {"a million references", Request(Repeat(million, "&#65;") + std::string(fields))},
        {"a million instructions", Request(Repeat(million, "<?p?>") + std::string(fields))},
        {"5 million characters", Request("<a>" + std::string(5 * million, 'x') + "</a>" + std::string(fields))},
        {"an attribute of 5 million characters",
         Request("<a b=\"" + std::string(5 * million, 'x') + "\"/>" + std::string(fields))},
        {"a million blanks in the root", Request(std::string(million, ' ') + std::string(fields))},
        {"inclusion of a file",
         Request("<xi:include xmlns:xi=\"http://www.w3.org/2001/XInclude\" href=\"/etc/passwd\"/>" +
                 std::string(fields))},
        {"style sheet", "<?xml-stylesheet href=\"http://127.0.0.1:9/x\" type=\"text/xsl\"?>" + Request(fields)},
        {"schema", Request("<a xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                           "xsi:noNamespaceSchemaLocation=\"http://127.0.0.1:9/x\"/>" +
                           std::string(fields))},
        {"namespaces nested 1,000 deep",
         Request(Repeat(1000, "<a xmlns:z=\"u\">") + Repeat(1000, "</a>") + std::string(fields))},
        {"encoding of the declaration that a text has not",
         "<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + Request(fields)},
    };
}

} // namespace

const std::vector<HostileText>& UnreadableTexts() {
    static const std::vector<HostileText> texts = MakeUnreadableTexts();
    return texts;
}

const std::vector<HostileText>& ReadableTexts() {
    static const std::vector<HostileText> texts = MakeReadableTexts();
    return texts;
}

} // namespace test
