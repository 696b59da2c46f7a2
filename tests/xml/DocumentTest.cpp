#include "refhost/xml/Document.h"

#include <gtest/gtest.h>

namespace {

TEST(XmlDocument, LoadsAndWritesBack) {
    refhost::xml::Document document;
    ASSERT_TRUE(document.LoadXML("<a x=\"1\"><b>t</b></a>")) << document.LoadError();
    EXPECT_EQ(document.Xml(), "<a x=\"1\"><b>t</b></a>");
    EXPECT_EQ(document.DocumentElement()->SelectSingleNode("b")->Text(), "t");
}

} // namespace
