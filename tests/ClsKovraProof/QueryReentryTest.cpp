// A query that comes from inside of another one of the same instance.
#include "ClsKovraProof/ClsKovraProof.h"
#include "refhost/eai/Login.h"
#include "tests/support/Import.h"
#include "tests/support/WatchedHost.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace query_reentry {
namespace {

using test::HostOperation;

std::string Envelope(const std::string& kind) { return "<q roottag=\"d\"><storeinout type=\"" + kind + "\"/></q>"; }

/// The answer for the documents of a kind; every document's timestamp is left out.
std::string Answer(kovra::ClsKovraProof& instance, const std::string& kind) {
    std::string text = Envelope(kind);
    EXPECT_FALSE(instance.QueryProc({}, text));
    for (std::size_t at = text.find("<qxts>"); at != std::string::npos; at = text.find("<qxts>")) {
        text.erase(at, text.find("</qxts>", at) + 7 - at);
    }
    return text;
}

TEST(QueryReentry, BothQueriesGetTheirAnswersWhereverTheInnerOneComes) {
    const test::TestAccount account;
    account.Run("INSERT INTO rdrecord (ID, bRdFlag, cCode) VALUES (1, 1, N'R1'), (2, 1, N'R2'), (3, 0, N'I1')\nGO\n"
                "INSERT INTO rdrecords (ID, cInvCode) VALUES (1, N'A'), (2, N'B'), (3, N'C')");
    std::size_t asked = 0;
    std::size_t enterAt = static_cast<std::size_t>(-1);
    kovra::ClsKovraProof* entered = nullptr;
    std::string inner;
    // The view that both make anew is there from its creation on; before, the inner query would make it first.
    int statements = 0;
    test::WatchedEnvironment environment([&](const HostOperation& operation) {
        if (operation.name == "Execute") {
            ++statements;
        } else if (entered != nullptr && statements == 2 && asked++ == enterAt) {
            kovra::ClsKovraProof& instance = *std::exchange(entered, nullptr);
            inner = Answer(instance, "出库单");
        }
    });
    refhost::Login login(account.LoginXml(), environment);
    kovra::ClsKovraProof instance(environment);
    instance.Transact(test::Request("ADD", ""), &login);
    const std::string receipts = Answer(instance, "入库单");
    const std::string issues = Answer(instance, "出库单");
    ASSERT_NE(receipts.find("<cCode>R2</cCode>"), std::string::npos);
    ASSERT_NE(issues.find("<cCode>I1</cCode>"), std::string::npos);

    entered = &instance;
    statements = 0;
    EXPECT_EQ(Answer(instance, "入库单"), receipts);
    const std::size_t operations = asked;
    ASSERT_GT(operations, 100U);
    for (enterAt = 0; enterAt < operations; ++enterAt) {
        asked = 0;
        statements = 0;
        inner.clear();
        entered = &instance;
        EXPECT_EQ(Answer(instance, "入库单"), receipts) << enterAt;
        EXPECT_EQ(inner, issues) << enterAt;
    }
}

} // namespace
} // namespace query_reentry
