// The connection to a server is lost in the middle of an import.

#include "ClsInvSubject/ClsInvSubject.h"
#include "refhost/Environment.h"
#include "refhost/eai/Login.h"
#include "refhost/trace/Traced.h"
#include "tests/support/Program.h"
#include "tests/support/TdsServer.h"
#include "tests/support/TestAccount.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

TEST(LostConnection, IsTracedOnceBehindTheStatementThatMetIt) {
    const test::TestAccount account(test::AccountContent::demo);
    const test::TdsServer server(account.connectionString(), {.hangUpAt = "cWhCode='02'"});
    const std::filesystem::path path = account.folder() / "trace.jsonl";
    refhost::Trace trace(path.string());
    refhost::Traced<refhost::Environment> environment(&trace);
    refhost::Login login("<login QxDbName=\"" + server.ConnectionString() + "\" cIYear=\"2024\"/>", environment);
    kovra::ClsInvSubject instance(environment);

    const std::string result = instance.Transact(
        "<qxinterface roottag=\"row\" docid=\"r\" proc=\"ADD\"><row><cWhCode>01</cWhCode><cInvHead>140301</cInvHead>"
        "</row><row><cWhCode>02</cWhCode><cInvHead>140301</cInvHead></row><row><cWhCode>03</cWhCode><cInvHead>140301"
        "</cInvHead></row></qxinterface>",
        &login);
    trace.Flush();

    // What was written before the loss stands, and is told.
    EXPECT_EQ(account.Rows("select cWhCode from IA_HeadSet where cInvHead = '140301' and iYear = 2024").size(), 1U);
    EXPECT_NE(result.find("code=\"0\" dsc=\"ok\""), std::string::npos) << result;
    EXPECT_NE(result.find("code=\"101\""), std::string::npos) << result;

    const std::vector<std::string> lines = test::ReadLines(path);
    const auto isLoss = [](const std::string& line) { return line.starts_with(R"({"op":"ConnectionLost",)"); };
    ASSERT_EQ(std::ranges::count_if(lines, isLoss), 1) << test::ReadText(path);
    const auto loss = std::ranges::find_if(lines, isLoss);
    EXPECT_GT(loss->size(), std::string(R"({"op":"ConnectionLost","description":""})").size());
    EXPECT_NE((loss - 1)->find("cWhCode='02'"), std::string::npos) << *(loss - 1);
    EXPECT_NE((loss - 1)->find(R"("error":-2147467259)"), std::string::npos) << *(loss - 1);
}

TEST(LostConnection, IsToldOnceInTheSummaryWithTheRow) {
    const test::TestAccount account(test::AccountContent::demo);
    const test::TdsServer server(account.connectionString(), {.hangUpAt = "cWhCode='02'"});
    test::WriteBytes(account.folder() / "login.xml",
                     "<login QxDbName=\"" + server.ConnectionString() + "\" cIYear=\"2024\"/>");
    test::WriteBytes(account.folder() / "request.xml",
                     "<qxinterface roottag=\"row\" docid=\"r\" proc=\"ADD\"><row><cWhCode>01</cWhCode><cInvHead>140301"
                     "</cInvHead></row><row><cWhCode>02</cWhCode><cInvHead>140301</cInvHead></row><row><cWhCode>03"
                     "</cWhCode><cInvHead>140301</cInvHead></row></qxinterface>");
    const auto told = [&](const std::string& language, const std::string& line) {
        const test::Ended ended =
            test::Program(account.folder(), {"--lang", language, "transact", "--class", "ClsInvSubject", "--login",
                                             "login.xml", "request.xml"})
                .Wait();
        EXPECT_EQ(ended.status, 1);
        const std::size_t first = ended.error.find(line);
        EXPECT_NE(first, std::string::npos) << ended.error;
        EXPECT_EQ(ended.error.find(line, first + 1), std::string::npos) << ended.error;
    };
    told("en", "The connection to the database was lost at row 2 (");
    told("zh", "处理第 2 行时与数据库的连接中断（");
}

} // namespace
