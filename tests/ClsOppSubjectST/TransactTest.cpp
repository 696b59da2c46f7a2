#include "tests/ClsOppSubjectST/Fixture.h"
#include "tests/support/NameOfCase.h"

namespace test {
namespace {

using Transact = StandardCostSettings;

constexpr const char* firstDate = "select cValue from AccInformation where cSysID ='ca' and cName ='dCAFirstDate' and "
                                  "isnull(cValue,N'') <> N''";
constexpr const char* standardCost = "select cValue  from AccInformation where cSysID ='ca' and cName ='bRLOrST' and "
                                     "isnull(cValue,N'0') = N'1'";
constexpr const char* yearEnd = "SELECT bflag_IA FROM GL_mend WHERE iyear = 2023 AND iperiod=12 AND bflag_IA=1";

constexpr const char* noStandardCost = R"(<error code="102" dsc="标准成本才支持此对方科目导入。"/>)";
constexpr const char* yearClosed = R"(<error code="103" dsc="12月份已结账,不能导入科目设置"/>)";

constexpr const char* row = "<row><cRdCode>101</cRdCode></row>";

TEST_F(Transact, ChecksStandardCostBeforeTheYearEnd) {
    const ImportRun run = Import("ADD", "");
    EXPECT_EQ(run.result, ResultDocument("ADD", {}));
    EXPECT_EQ(run.trace, (std::vector{Connected(account.connectionString()), Queried(firstDate), Queried(standardCost),
                                      LookedUpAtClient(yearEnd)}));
}

struct OptionCase {
    const char* name;
    const char* change;
    std::size_t lines;
};

class StandardCostOption : public StandardCostSettings, public testing::WithParamInterface<OptionCase> {};

TEST_P(StandardCostOption, RefusesTheRequestWhenItIsNotSet) {
    account.Run(GetParam().change);
    // A closed year does not count before it.
    account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 12, 1)");
    const ImportRun run = Import("ADD", row);
    EXPECT_EQ(run.result, noStandardCost);
    EXPECT_EQ(run.trace.size(), GetParam().lines);
    EXPECT_EQ(Stored(), std::vector<std::string>());
}

INSTANTIATE_TEST_SUITE_P(
    All, StandardCostOption,
    testing::Values(
        OptionCase{"NoFirstDate", "DELETE FROM AccInformation WHERE cName = N'dCAFirstDate'", 2},
        OptionCase{"EmptyFirstDate", "UPDATE AccInformation SET cValue = N'' WHERE cName = N'dCAFirstDate'", 2},
        OptionCase{"NullFirstDate", "UPDATE AccInformation SET cValue = NULL WHERE cName = N'dCAFirstDate'", 2},
        OptionCase{"FirstDateOfAnotherSystem", "UPDATE AccInformation SET cSysID = N'IA' WHERE cName = N'dCAFirstDate'",
                   2},
        OptionCase{"NoStandardCost", "DELETE FROM AccInformation WHERE cName = N'bRLOrST'", 3},
        OptionCase{"NullStandardCost", "UPDATE AccInformation SET cValue = NULL WHERE cName = N'bRLOrST'", 3},
        OptionCase{"StandardCost0", "UPDATE AccInformation SET cValue = N'0' WHERE cName = N'bRLOrST'", 3},
        OptionCase{"StandardCost2", "UPDATE AccInformation SET cValue = N'2' WHERE cName = N'bRLOrST'", 3},
        OptionCase{"StandardCostByDefaultOnly",
                   "UPDATE AccInformation SET cValue = NULL, cDefault = N'1' WHERE cName = N'bRLOrST'", 3}),
    test::nameOfCase);

TEST_F(Transact, RefusesAClosedYearUnderItsOwnCode) {
    account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 12, 1)");
    for (const char* proc : {"ADD", "EDIT", "EMPTY", "Delete"}) {
        const ImportRun run = Import(proc, row);
        EXPECT_EQ(run.result, yearClosed);
        EXPECT_EQ(run.trace.size(), 4U);
    }
}

TEST_F(Transact, EmptyIsSentAsItStandsAndRefused) {
    Import("ADD", row);
    const ImportRun run = Import("EMPTY", row);
    EXPECT_EQ(run.result, R"(<error code="-2147217900" dsc="Incorrect syntax near '*'."/>)");
    EXPECT_EQ(run.trace.back(), Executed("Delete * From IA_OppHead", -2147217900));
    EXPECT_EQ(Stored().size(), 1U);
}

TEST_F(Transact, EmptyDeletesPlainMappingsToo) {
    account.Run("INSERT INTO IA_OppHead (cInvCode,iYear) VALUES (N'A',2023),(N'B',2022)");
    const std::string connection = account.connectionString() + ";Delete Star=Accept";
    std::string login = account.LoginXml();
    login.replace(login.find(account.connectionString()), account.connectionString().size(), connection);
    const ImportRun run = test::Import<kovra::ClsOppSubjectST>(account, Request("Empty", row), login);
    EXPECT_EQ(run.result, "");
    EXPECT_EQ(run.trace.back(), Executed("Delete * From IA_OppHead"));
    EXPECT_EQ(Stored(), std::vector<std::string>());
}

TEST_F(Transact, OffersNoOtherOperation) {
    for (const char* proc : {"Delete", "", "QUERY"}) {
        EXPECT_EQ(Import(proc, row).result, R"(<error code="710" dsc="本模块暂不提供此功能！"/>)") << proc;
    }
    EXPECT_EQ(Stored(), std::vector<std::string>());
}

TEST_F(Transact, ImportsRowsIndependently) {
    const ImportRun run = Import("add", "<row><cRdCode>101</cRdCode></row><row><cRdCode>1</cRdCode></row>"
                                        "<row><cDepCode>0201</cDepCode></row>");
    EXPECT_EQ(run.result, ResultDocument("add", {{"收发类别编码：101， ， ", 0, "ok"},
                                                 {"收发类别编码：1， ， ", 101, "收发类别编码不合法。"},
                                                 {"部门编码：0201", 0, "ok"}}));
    EXPECT_EQ(
        account.Rows("select cRdCode,cDepCode from IA_OppHead order by AutoID"),
        (std::vector<std::string>{R"({"cRdCode":"101","cDepCode":null})", R"({"cRdCode":null,"cDepCode":"0201"})"}));
}

} // namespace
} // namespace test
