#include "ClsKovraProof/ClsKovraProof.h"
#include "refhost/xml/Document.h"

#include <gtest/gtest.h>

namespace {

std::string Message(std::string_view content) {
    const auto document = refhost::xml::CreateDocument();
    EXPECT_TRUE(document->LoadXML("<result xmlns:z=\"#RowsetSchema\">" + std::string(content) + "</result>"));
    return kovra::ClsKovraProof::GetRetString(*document);
}

TEST(GetRetString, IsEmptyWithoutCheckResults) {
    EXPECT_EQ(Message(""), "");
    EXPECT_EQ(Message("<zeroout/><itemcheck/>"), "");
    EXPECT_EQ(kovra::ClsKovraProof::GetRetString(*refhost::xml::CreateDocument()), "");
}

TEST(GetRetString, NamesEachItemBeyondItsStock) {
    EXPECT_EQ(Message("<a><zeroout><z:row cinvcode='1001'/><z:row cinvcode='1002'/></zeroout></a>"),
              "存货1001现存量不足;存货1002现存量不足;");
}

TEST(GetRetString, NamesEachItemBeyondItsProjectsBudgetBehind) {
    EXPECT_EQ(Message("<itemcheck><z:row cinvcode='B'/></itemcheck><zeroout><z:row cinvcode='A'/></zeroout>"),
              "存货A现存量不足;存货[B]项目预算检查失败;");
}

TEST(GetRetString, LooksAtChildRowsOfTheFirstListOnly) {
    EXPECT_EQ(Message("<zeroout><n><z:row cinvcode='deep'/></n><row cinvcode='plain'/><z:row cinvcode='A'/></zeroout>"
                      "<zeroout><z:row cinvcode='second'/></zeroout>"),
              "存货A现存量不足;");
}

TEST(GetRetString, TakesARowWithoutItemForAnEmptyItem) {
    EXPECT_EQ(Message("<zeroout><z:row cInvCode='A'/></zeroout>"), "存货现存量不足;");
}

TEST(VerifyDomH, IsEmptyForAnyArguments) {
    const auto document = refhost::xml::CreateDocument();
    ASSERT_TRUE(document->LoadXML("<a/>"));
    EXPECT_TRUE(kovra::ClsKovraProof::VerifyDomH(document.get(), document.get()).IsEmpty());
    EXPECT_TRUE(kovra::ClsKovraProof::VerifyDomH(nullptr, nullptr).IsEmpty());
    EXPECT_EQ(document->Xml(), "<a/>");
}

} // namespace
