#include "cli/Commands.h"
#include "host/Error.h"
#include "tests/support/TestAccount.h"

#include <fstream>
#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

class QueryCommand : public testing::Test {
protected:
    QueryCommand() {
        account.Run(
            "INSERT INTO rdrecord (ID, bRdFlag, cCode, cWhCode) VALUES (1, 1, N'R1', N'01'), (2, 1, N'R2', N'02')");
        arguments.login = File("login.xml", account.LoginXml());
        arguments.envelope = File("envelope.xml", "<q roottag=\"doc\"><storeinout type=\"入库单\"/></q>");
    }
    std::string File(const std::string& name, const std::string& text) {
        const std::string path = (account.folder() / name).string();
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }
    std::string Output() {
        testing::internal::CaptureStdout();
        EXPECT_EQ(cli::RunQuery(arguments), 0);
        return testing::internal::GetCapturedStdout();
    }
    /// Number and description of the error that the command lets out.
    std::string ErrorOf() {
        try {
            cli::RunQuery(arguments);
        } catch (const host::Error& error) {
            return std::to_string(error.number()) + ": " + error.description();
        }
        return "no error";
    }

    test::TestAccount account;
    cli::QueryArguments arguments;
};

TEST_F(QueryCommand, WritesTheFilledEnvelope) {
    const std::string output = Output();
    EXPECT_THAT(output, testing::StartsWith("<q roottag=\"doc\"><doc><header><ID>1</ID>"));
    EXPECT_THAT(output, testing::HasSubstr("<cCode>R2</cCode>"));
    EXPECT_THAT(output, testing::EndsWith("</doc></q>\n"));
}

/// The connection is open when the login into the subsystem fails.
TEST_F(QueryCommand, RunsThoughTheLoginIntoTheSubsystemFails) {
    std::string login = account.LoginXml();
    const std::size_t serial = login.find("cSerial");
    ASSERT_NE(serial, std::string::npos) << login;
    File("login.xml", login.replace(serial, 7, "another"));
    EXPECT_THAT(Output(), testing::StartsWith("<q roottag=\"doc\"><doc><header><ID>1</ID>"));
}

TEST_F(QueryCommand, TellsWhyTheConnectionStaysClosed) {
    File("login.xml", "<login QxDbName=\"Provider=KovraAccount;Data Source=/nowhere/a.db\"/>");
    EXPECT_THAT(ErrorOf(), testing::StartsWith("-2147467259: Cannot open database"));
}

TEST_F(QueryCommand, TakesConditionsFromAFile) {
    arguments.conditions =
        File("conditions.xml", "<?xml version=\"1.0\"?><eleList><!-- c -->"
                               "<condition name=\"cWhCode\" operation=\"=\" value=\"02\" logic=\"\"/></eleList>");
    const std::string output = Output();
    EXPECT_THAT(output, testing::HasSubstr("<cCode>R2</cCode>"));
    EXPECT_THAT(output, testing::Not(testing::HasSubstr("<cCode>R1</cCode>")));
}

TEST_F(QueryCommand, TracesWhatIsAsked) {
    arguments.trace = (account.folder() / "trace.jsonl").string();
    Output();
    const std::vector<std::string> lines = test::ReadLines(arguments.trace);
    ASSERT_EQ(lines.size(), 7U);
    EXPECT_THAT(lines[0], testing::StartsWith(R"({"op":"Connect")"));
    EXPECT_THAT(lines[4], testing::StartsWith(R"({"op":"Open","sql":"select * from rdrecordView  where ()"));
    EXPECT_EQ(
        lines[6],
        R"({"op":"Open","sql":"select * from rdrecords where id=2","cursor":3,"lock":1,"options":-1,"location":3})");
}

TEST_F(QueryCommand, LetsTheQuerysErrorsOut) {
    arguments.envelope = File("envelope.xml", "<q roottag=\"doc\"/>");
    EXPECT_EQ(ErrorOf(), "91: 对象变量或 With 块变量未设置");
    arguments.envelope = File("envelope.xml", "no XML");
    EXPECT_EQ(ErrorOf(), "91: 对象变量或 With 块变量未设置");
}

TEST_F(QueryCommand, SaysWhyTheAccountCannotBeOpened) {
    arguments.login = File("login.xml", "<login QxDbName=\"Provider=None\"/>");
    EXPECT_EQ(ErrorOf(), "3706: Provider cannot be found. It may not be properly installed.");
    arguments.login = File("login.xml", "<login/>");
    EXPECT_EQ(ErrorOf(), "438: 对象不支持该属性或方法");
}

TEST_F(QueryCommand, RefusesFilesItCannotUse) {
    arguments.conditions = (account.folder() / "none.xml").string();
    EXPECT_THROW(cli::RunQuery(arguments), std::runtime_error);
    arguments.conditions = File("conditions.xml", "<eleList>");
    EXPECT_THROW(cli::RunQuery(arguments), std::runtime_error);
    // A misspelt condition must not become a query without it.
    arguments.conditions = File("conditions.xml", "<eleList><conditions name=\"cWhCode\"/></eleList>");
    EXPECT_THROW(cli::RunQuery(arguments), std::runtime_error);
    arguments.conditions.clear();
    arguments.envelope = (account.folder() / "none.xml").string();
    EXPECT_THROW(cli::RunQuery(arguments), std::runtime_error);
}

} // namespace
