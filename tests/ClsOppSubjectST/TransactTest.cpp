#include "tests/ClsOppSubjectST/Fixture.h"
#include "tests/support/NameOfCase.h"
#include "tests/support/SettingsCases.h"

namespace test {
namespace {

using Transact = StandardCostSettings;
INSTANTIATE_TYPED_TEST_SUITE_P(ClsOppSubjectST, EverySetting, StandardCostSettings);

constexpr const char* noStandardCost = R"(<error code="102" dsc="标准成本才支持此对方科目导入。"/>)";

constexpr const char* row = "<row><cRdCode>101</cRdCode></row>";

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

TEST_F(Transact, EmptyDeletesPlainMappingsToo) {
    account.Run("INSERT INTO IA_OppHead (cInvCode,iYear) VALUES (N'A',2023),(N'B',2022)");
    std::string login = account.LoginXml();
    login.insert(login.find(account.connectionString()) + account.connectionString().size(), ";Delete Star=Accept");
    EXPECT_EQ(ImportAs(login, "Empty", row).result, "");
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
