#include "refhost/eai/Login.h"

#include "host/Error.h"
#include "refhost/trace/HostCall.h"
#include "tests/refhost/eai/CalendarEnvironment.h"
#include "tests/support/ErrorOf.h"

#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using refhost::Login;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

const char* const complete =
    "<?xml version=\"1.0\" encoding=\"gb2312\"?><login QxDbName=\"Provider=KovraAccount;Data Source=:memory:\" "
    "cAcc_Id=\"001\" cIYear=\"2024\" cUserId=\"demo\" cUserName=\"王敏\" cUserPassWord=\"pw\" CurDate=\"2024-01-15\" "
    "cServer=\"localhost\" cSerial=\"S1\" iMonth=\"3\" iStartPeriod=\"12\" other=\"x\"/>";

TEST(Login, AttributesAreTheMembers) {
    CalendarEnvironment environment;
    const Login login(complete, environment);
    EXPECT_EQ(login.Member("QxDbName"), host::Value("Provider=KovraAccount;Data Source=:memory:"));
    EXPECT_EQ(login.Member("cAcc_Id"), host::Value("001"));
    EXPECT_EQ(login.Member("cIYear"), host::Value("2024"));
    EXPECT_EQ(login.Member("cUserId"), host::Value("demo"));
    EXPECT_EQ(login.Member("cUserPassWord"), host::Value("pw"));
    EXPECT_EQ(login.Member("CurDate"), host::Value("2024-01-15"));
    EXPECT_EQ(login.Member("cServer"), host::Value("localhost"));
    EXPECT_EQ(login.Member("cSerial"), host::Value("S1"));
    EXPECT_EQ(login.ConnectionString(), "Provider=KovraAccount;Data Source=:memory:");
    EXPECT_EQ(login.AccountId(), "001");
    EXPECT_EQ(login.UserName(), "王敏");
    EXPECT_EQ(login.CurrentDate(), host::Value("2024-01-15"));
    EXPECT_EQ(login.AccountingMonth(), 3);
    EXPECT_EQ(login.StartPeriod(), 12);
    EXPECT_THAT(environment.asked, ElementsAre()) << "reading members asks no database";
}

TEST(Login, YearIsTheMemberCIYear) {
    CalendarEnvironment environment;
    EXPECT_EQ(Login(complete, environment).LoginYear(), "2024");
    EXPECT_EQ(Login("<login cIYear=\"\"/>", environment).LoginYear(), "");
}

TEST(Login, MissingMembersRaise438WhenTheyAreRead) {
    CalendarEnvironment environment;
    Login login("<login/>", environment);
    const auto raises = [](const auto& read) {
        const host::Error error = test::ErrorOf(read);
        EXPECT_EQ(error.number(), 438);
        EXPECT_EQ(error.description(), "对象不支持该属性或方法");
    };
    for (const char* name :
         {"QxDbName", "cAcc_Id", "cIYear", "cUserId", "cUserPassWord", "CurDate", "cServer", "cSerial"})
        raises([&] { login.Member(name); });
    raises([&] { login.LoginYear(); });
    raises([&] { login.ConnectionString(); });
    raises([&] { login.AccountId(); });
    raises([&] { login.UserName(); });
    raises([&] { login.CurrentDate(); });
    raises([&] { login.AccountingMonth(); });
    raises([&] { login.StartPeriod(); });
    raises([&] { login.SubsystemLogin("IA", "", "", "", "", "", "", ""); });
    raises([&] { login.PeriodDates(1, 2024); });
}

TEST(Login, UnknownMembersRaise438EvenWhenTheFileHasSuchAnAttribute) {
    CalendarEnvironment environment;
    const Login login(complete, environment);
    EXPECT_EQ(test::ErrorOf([&] { login.Member("other"); }).number(), 438);
    EXPECT_EQ(test::ErrorOf([&] { login.Member(""); }).number(), 438);
}

TEST(Login, NumbersThatAreNoneRaise13) {
    CalendarEnvironment environment;
    for (const char* text : {"x", "", "1月"}) {
        const Login login("<login iMonth=\"" + std::string(text) + "\" iStartPeriod=\"" + text + "\"/>", environment);
        const host::Error error = test::ErrorOf([&] { login.AccountingMonth(); });
        EXPECT_EQ(error.number(), 13) << text;
        EXPECT_EQ(error.description(), "类型不匹配");
        EXPECT_EQ(test::ErrorOf([&] { login.StartPeriod(); }).number(), 13) << text;
    }
    EXPECT_EQ(test::ErrorOf([&] { Login("<login iMonth=\"70000\"/>", environment).AccountingMonth(); }).number(), 6);
}

TEST(Login, SubsystemLoginTakesItsOwnValuesOnly) {
    CalendarEnvironment environment;
    Login login(complete, environment);
    EXPECT_TRUE(login.SubsystemLogin("IA", "001", "2024", "demo", "pw", "2024-01-15", "localhost", "S1"));
    EXPECT_FALSE(login.SubsystemLogin("IA", "002", "2024", "demo", "pw", "2024-01-15", "localhost", "S1"));
    EXPECT_FALSE(login.SubsystemLogin("IA", "001", "2023", "demo", "pw", "2024-01-15", "localhost", "S1"));
    EXPECT_FALSE(login.SubsystemLogin("IA", "001", "2024", "root", "pw", "2024-01-15", "localhost", "S1"));
    EXPECT_FALSE(login.SubsystemLogin("IA", "001", "2024", "demo", "", "2024-01-15", "localhost", "S1"));
}

TEST(Login, PeriodDatesComeFromTheCalendarThroughAConnectionOfItsOwn) {
    CalendarEnvironment environment;
    environment.period.emplace();
    environment.period->first = host::Date{45292};
    environment.period->last = host::Date{45322};
    Login login("<login QxDbName=\"C\" cAcc_Id=\"O'1\"/>", environment);
    const auto range = login.PeriodDates(1, 2024);
    EXPECT_FALSE(refhost::HostCall::Active()) << "what follows is the class's own";
    EXPECT_EQ(range.first, host::Value(host::Date{45292}));
    EXPECT_EQ(range.last, host::Value(host::Date{45322}));
    login.PeriodDates(2, 2023);
    EXPECT_THAT(
        environment.asked,
        ElementsAre("host: Open C|||-1",
                    "host: SELECT dBegin, dEnd FROM QxSystem..UA_Period WHERE cAcc_ID = N'O''1' AND iYear = 2024 AND "
                    "iId = 1",
                    "host: SELECT dBegin, dEnd FROM QxSystem..UA_Period WHERE cAcc_ID = N'O''1' AND iYear = 2023 AND "
                    "iId = 2"));
}

TEST(Login, CalendarWithoutThePeriodLeavesBothDatesNull) {
    CalendarEnvironment environment;
    Login login("<login QxDbName=\"C\" cAcc_Id=\"1\"/>", environment);
    const auto range = login.PeriodDates(13, 2024);
    EXPECT_TRUE(range.first.IsNull());
    EXPECT_TRUE(range.last.IsNull());
}

TEST(Login, DatabaseThatCannotBeOpenedIsTriedAgain) {
    CalendarEnvironment environment;
    Login login("<login QxDbName=\"bad\" cAcc_Id=\"1\"/>", environment);
    EXPECT_EQ(test::ErrorOf([&] { login.PeriodDates(1, 2024); }).description(), "no such database");
    EXPECT_EQ(test::ErrorOf([&] { login.PeriodDates(1, 2024); }).description(), "no such database");
    EXPECT_EQ(environment.asked.size(), 2U);
}

TEST(Login, FileThatIsNoLoginIsRefused) {
    CalendarEnvironment environment;
    const auto read = [&](const char* xml) { return [&environment, xml] { Login login(xml, environment); }; };
    EXPECT_THAT(read(""), ThrowsMessage<std::runtime_error>(HasSubstr("the login is not XML: ")));
    EXPECT_THAT(read("<login"), ThrowsMessage<std::runtime_error>(HasSubstr("the login is not XML: line 1: ")));
    EXPECT_THAT(read("<Login/>"), ThrowsMessage<std::runtime_error>(HasSubstr("<Login>, not <login>")));
    EXPECT_THAT(read("<z:login xmlns:z=\"u\"/>"), ThrowsMessage<std::runtime_error>(HasSubstr("<z:login>")));
}

} // namespace
