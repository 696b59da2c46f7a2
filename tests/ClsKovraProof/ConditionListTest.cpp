// The list of conditions that a query is given, and what is read of it.
#include "ClsKovraProof/ClsKovraProof.h"
#include "refhost/eai/Login.h"
#include "refhost/xml/Document.h"
#include "tests/support/Import.h"
#include "tests/support/WatchedHost.h"

#include <optional>

#include <gtest/gtest.h>

namespace {

constexpr const char* envelope = "<q roottag=\"stock\"><storeinout type=\"入库单\"/></q>";

/// The numbers of the documents in an answer, each behind a blank.
std::string Numbers(const std::string& answer) {
    const auto document = refhost::xml::CreateDocument();
    EXPECT_TRUE(document->LoadXML(answer));
    std::string numbers;
    for (const host::DOMNodePtr& number : document->SelectNodes("/q/stock/header/cCode")) {
        numbers += " " + number->Text();
    }
    return numbers;
}

class ConditionListTest : public testing::Test {
protected:
    ConditionListTest() {
        account_.Run("INSERT INTO rdrecord (ID, bRdFlag, cCode, cWhCode) VALUES (1, 1, N'R1', N'01'), "
                     "(2, 1, N'R2', N'02'), (3, 0, N'I1', N'01'), (4, 1, N'R3', N'01')");
        login_.emplace(account_.LoginXml(), environment_);
        instance_.Transact(test::Request("ADD", ""), &*login_);
    }

    std::string Query(const std::string& conditions) {
        const auto list = refhost::xml::CreateDocument();
        EXPECT_TRUE(list->LoadXML("<eleList>" + conditions + "</eleList>"));
        std::string text = envelope;
        EXPECT_FALSE(instance_.QueryProc(list->SelectNodes("/eleList/*"), text));
        return Numbers(text);
    }

    test::TestAccount account_;
    /// An attribute that the helper raises for.
    std::string missing_;
    test::WatchedEnvironment environment_{[this](const test::HostOperation& operation) {
        if (operation.name == "GetAttr" && operation.text == missing_) {
            throw host::Error(-2147467259, "没有属性。");
        }
    }};
    std::optional<refhost::Login> login_;
    kovra::ClsKovraProof instance_{environment_};
};

TEST_F(ConditionListTest, TheLastConditionNeedsNoLogic) {
    missing_ = "logic";
    EXPECT_EQ(Query("<c name='cWhCode' operation='=' value='01'/>"), " R1 R3");
    // The last of the timestamps needs none either.
    EXPECT_EQ(Query("<c name='qxts' operation='&gt;' value='0'/><c name='cWhCode' operation='=' value='02'/>"), " R2");
}

TEST_F(ConditionListTest, AConditionThatOthersFollowNeedsItsLogic) {
    missing_ = "logic";
    EXPECT_EQ(Query("<c name='cWhCode' operation='=' value='01'/><c name='ID' operation='=' value='4'/>"),
              " R1 R2 I1 R3");
    missing_.clear();
    EXPECT_EQ(Query("<c name='cWhCode' operation='=' value='01' logic='and'/><c name='ID' operation='=' value='4'/>"),
              " R3");
}

TEST_F(ConditionListTest, WhatIsNoListLosesTheConditionAltogether) {
    for (const int number : {91, 438, 13}) {
        std::string text = envelope;
        EXPECT_FALSE(instance_.QueryProc(
            [&]() -> const host::DOMNodeList& { throw host::Error(number, "对象变量或 With 块变量未设置"); }, text));
        EXPECT_EQ(Numbers(text), " R1 R2 I1 R3") << number;
    }
}

} // namespace
