// What a document type adds to a document, and what it may hold.
#include "refhost/xml/Document.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using refhost::xml::Document;

/// The document as it is written; empty when it is refused.
std::string Read(const std::string& xml) {
    Document document;
    return document.LoadXML(xml) ? document.Xml() : std::string();
}

TEST(DocumentType, DefaultAndFixedValuesAreAddedBehindWhatIsWritten) {
    EXPECT_EQ(Read("<!DOCTYPE a [<!ATTLIST a b CDATA \"1\" c CDATA #FIXED \"&lt;2\" d CDATA #IMPLIED>]><a e='3'/>"),
              "<a e=\"3\" b=\"1\" c=\"&lt;2\"/>");
    EXPECT_EQ(Read("<!DOCTYPE a [<!ATTLIST a b (x|y) 'y'>]><a b='x'><a/></a>"), "<a b=\"x\"><a b=\"y\"/></a>");
    EXPECT_EQ(Read("<!DOCTYPE a [<!ATTLIST b c CDATA '1'>]><a/>"), "<a/>") << "of another element";
}

TEST(DocumentType, FirstDeclarationOfAnAttributeCounts) {
    EXPECT_EQ(Read("<!DOCTYPE a [<!ATTLIST a b CDATA '1'><!ATTLIST a b CDATA '2' c CDATA '3'>]><a/>"),
              "<a b=\"1\" c=\"3\"/>");
    EXPECT_EQ(Read("<!DOCTYPE a [<!ATTLIST a b CDATA #IMPLIED><!ATTLIST a b CDATA '2'>]><a/>"), "<a/>");
}

TEST(DocumentType, DefaultsDeclareNamespacesAndKeepBlanks) {
    EXPECT_EQ(Read("<!DOCTYPE x:a [<!ATTLIST x:a xmlns:x CDATA #FIXED 'u'>]><x:a/>"), "<x:a xmlns:x=\"u\"/>");
    EXPECT_EQ(Read("<!DOCTYPE a [<!ATTLIST a xml:space (default|preserve) 'preserve'>]><a> <b/></a>"),
              "<a xml:space=\"preserve\"> <b/></a>");
}

TEST(DocumentType, InternalParameterEntitiesAddTheirDeclarations) {
    EXPECT_EQ(Read("<!DOCTYPE a [<!ENTITY % p \"<!ENTITY e 'v'>\"> %p; ]><a>&e;</a>"), "<a>v</a>");
    EXPECT_EQ(Read("<!DOCTYPE a [<!ENTITY % p 'never used'>]><a>1</a>"), "<a>1</a>");
    EXPECT_EQ(Read("<!DOCTYPE a [<!ENTITY % p ''>%p;%p;]><a/>"), "<a/>");
    EXPECT_EQ(Read("<!DOCTYPE a [<!ENTITY % p '<!-- > -->\n<?p >?><!ELEMENT a ANY>"
                   "<!ATTLIST a b CDATA \"1]\">'>%p;]><a/>"),
              "<a b=\"1]\"/>");
    EXPECT_EQ(Read("\xEF\xBB\xBF<?xml version='1.0'?>\n<!-- [%p; --><?p [?><!DOCTYPE a SYSTEM '[' "
                   "[<!ENTITY % p '<!ENTITY e \"v\">'>%p;]><a>&e;</a>"),
              "<?xml version=\"1.0\"?><!-- [%p; --><?p [?><a>v</a>");
}

TEST(DocumentType, ParameterEntitiesMayDeclareAndHoldOthers) {
    // The character references are read where the entity is declared, so that the declarations come to be behind it.
    EXPECT_EQ(Read("<!DOCTYPE a [<!ENTITY % x '&#37;z;'><!ENTITY % z '&#60;!ENTITY e \"v\" >' >%x;]><a>&e;</a>"),
              "<a>v</a>");
    EXPECT_EQ(Read("<!DOCTYPE a [<!ENTITY % p '<!ENTITY &#x25; q \"&#60;!ENTITY e &#39;&#38;#60;b/>&#39;>\">'>"
                   "%p;%q;]><a>&e;</a>"),
              "<a><b/></a>");
}

TEST(DocumentType, FirstDeclarationOfAParameterEntityCounts) {
    EXPECT_EQ(Read("<!DOCTYPE a [<!ENTITY % p '<!ENTITY e \"1\">'><!ENTITY % p '<!ENTITY e \"2\">'>%p;]><a>&e;</a>"),
              "<a>1</a>");
    EXPECT_EQ(Read("<!DOCTYPE a [<!ENTITY % p '<!ENTITY e \"1\">'>%p;<!ENTITY e '2'>]><a>&e;</a>"), "<a>1</a>");
    EXPECT_EQ(Read("<!DOCTYPE a [<!ENTITY % p SYSTEM 'p.ent'><!ENTITY % p ''>%p;]><a/>"), "") << "which is not read";
}

TEST(DocumentType, PercentSignsOutsideOfDeclarationsAreText) {
    EXPECT_EQ(Read("<!DOCTYPE a [<!ENTITY % p ''><!ATTLIST a b CDATA '%p;'><!-- %q; --><?p %q;?>]><a>%p;</a>"),
              "<a b=\"%p;\">%p;</a>");
}

TEST(DocumentType, NotationsAndElementsMayBeDeclared) {
    EXPECT_EQ(Read("<!DOCTYPE a [<!NOTATION n PUBLIC 'p'><!NOTATION m SYSTEM 's'><!ELEMENT a ANY>]><a/>"), "<a/>");
}

TEST(DocumentType, ExternalEntitiesThatNothingRefersToMayBeDeclared) {
    EXPECT_EQ(Read("<!DOCTYPE a [<!ENTITY e SYSTEM '数据.xml'><!ENTITY % f SYSTEM 'f.ent'>]><a>1</a>"), "<a>1</a>");
    EXPECT_EQ(Read("<!DOCTYPE a [<!ENTITY e SYSTEM 'e.xml'><!ENTITY e 'v'>]><a>&e;</a>"), "")
        << "the first declaration counts";
    EXPECT_EQ(Read("<!DOCTYPE a [<!ENTITY e 'v'><!ENTITY e SYSTEM 'e.xml'>]><a>&e;</a>"), "<a>v</a>");
}

TEST(DocumentType, ExternalSubsetIsLeftOut) {
    EXPECT_EQ(Read("<!DOCTYPE a SYSTEM \"a.dtd\"><a>1</a>"), "<a>1</a>");
    EXPECT_EQ(Read("<!DOCTYPE a PUBLIC \"p\" \"a.dtd\" [<!ENTITY e 'v'>]><a>&e;</a>"), "<a>v</a>");
    EXPECT_EQ(Read("<!DOCTYPE a SYSTEM \"a.dtd\"><a>&e;</a>"), "") << "which may have declared it";
}

TEST(DocumentType, WhatIsIllFormedStaysRefused) {
    for (const char* xml :
         {"<!DOCTYPE a [%p;]><a/>", "<!DOCTYPE a [<!ENTITY % p \"<!ENTITY\"> %p;]><a/>", "<!DOCTYPE a SYSTEM><a/>",
          "<!DOCTYPE a [<!ATTLIST a b CDATA '<'>]><a/>", "<!DOCTYPE a [<!ATTLIST a b CDATA>]><a/>",
          "<!DOCTYPE a [<!NOTATION n>]><a/>", "<!DOCTYPE a [<!ENTITY e SYSTEM 'u' NDATA>]><a/>",
          "<!DOCTYPE a [<!ATTLIST a b CDATA '&e;'>]><a/>", "<!DOCTYPE a [<!ENTITY % p 'x'>]><a>%p;</a><b/>",
          // A parameter entity within a declaration, in the document itself and in another's text.
          "<!DOCTYPE a [<!ENTITY % p 'ANY'><!ELEMENT a %p;>]><a/>",
          "<!DOCTYPE a [<!ENTITY % p 'x'><!ENTITY e '%p;'>]><a/>",
          "<!DOCTYPE a [<!ENTITY % p 'ANY'><!ENTITY % q '<!ELEMENT a &#37;p;>'>%q;]><a/>",
          // One that does not hold whole declarations.
          "<!DOCTYPE a [<!ENTITY % p 'x'>%p;]><a/>", "<!DOCTYPE a [<!ENTITY % p '<!ELEMENT a'>%p; ANY>]><a/>",
          "<!DOCTYPE a [<!ENTITY % p '<!--'>%p;-->]><a/>", "<!DOCTYPE a [<!ENTITY % p '<?p'>%p;?>]><a/>",
          "<!DOCTYPE a [<!ENTITY % p ']><a/><!--'>%p;-->", "<!DOCTYPE a [<!ENTITY % p '<b/>'>%p;]><a/>",
          "<!DOCTYPE a [<!ENTITY % p '<![INCLUDE[<!ELEMENT a ANY>]]>'>%p;]><a/>",
          "<!DOCTYPE a [<!ENTITY % p '<!ATTLIST a b CDATA &#34;'>%p;c\">]><a/>",
          // Ones that are declared wrongly, or not yet.
          "<!DOCTYPE a [<!ENTITY % p '&#0;'>%p;]><a/>", "<!DOCTYPE a [<!ENTITY % p '&#xD800;'>]><a/>",
          "<!DOCTYPE a [<!ENTITY % p '&#38'>%p;]><a/>", "<!DOCTYPE a [<!ENTITY %p ''>]><a/>",
          "<!DOCTYPE a [<!ENTITY % p>]><a/>", "<!DOCTYPE a [<!ENTITY % 1 ''>%1;]><a/>",
          "<!DOCTYPE a [%p;<!ENTITY % p ''>]><a/>", "<!DOCTYPE a [<!ENTITY % p ''>%p]><a/>",
          "<!DOCTYPE a [<!ENTITY % p ''>% p;]><a/>", "<!DOCTYPE a [<!ENTITY p ''>%p;]><a/>",
          // What is behind an error.
          "<!DOCTYPE a [x<!ENTITY % p ''>%p;]><a/>", "<!DOCTYPE a [<!ENTITY % p '<!ENTITY e \"v\">'>%p;<!b]><a/>",
          "<!DOCTYPE a [<!ENTITY % p ''>%p;", "<!DOCTYPE a [<!ENTITY % p ''>%p;<!--", "<!DOCTYPE a '[<!ENTITY"}) {
        EXPECT_EQ(Read(xml), "") << xml;
    }
}

} // namespace
