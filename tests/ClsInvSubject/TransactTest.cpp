#include "tests/ClsInvSubject/Fixture.h"

namespace test {
namespace {

using Transact = InventorySettings;

constexpr const char* yearEnd = "SELECT bflag_IA FROM GL_mend WHERE iyear = 2023 AND iperiod=12 AND bflag_IA=1";
constexpr const char* row = "<row><cWhCode>01</cWhCode><cInvHead>1401</cInvHead></row>";

TEST_F(Transact, RefusesAClosedYearWhateverTheOperation) {
    account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 12, 1)");
    for (const char* proc : {"ADD", "EDIT", "EMPTY", "Delete"}) {
        const ImportRun run = Import(proc, row);
        EXPECT_EQ(run.result, R"(<error code="102" dsc="12月份已结账,不能导入科目设置"/>)");
        EXPECT_EQ(run.trace, (std::vector{Connected(account.connectionString()), LookedUpAtClient(yearEnd)}));
    }
}

TEST_F(Transact, EmptyIsSentAsItStandsAndRefused) {
    Import("ADD", row);
    const ImportRun run = Import("EMPTY", "<row/>");
    EXPECT_EQ(run.result, R"(<error code="-2147217900" dsc="Incorrect syntax near '*'."/>)");
    EXPECT_EQ(run.trace, (std::vector{Connected(account.connectionString()), LookedUpAtClient(yearEnd),
                                      Executed("Delete * From IA_HeadSet", -2147217900)}));
    EXPECT_EQ(Stored().size(), 1U);
}

TEST_F(Transact, EmptyDeletesEverythingWhereTheDatabaseTakesTheAsterisk) {
    account.Run("INSERT INTO IA_HeadSet (cWhCode,iYear) VALUES (N'01',2023),(N'01',2022)");
    const std::string connection = account.connectionString() + ";Delete Star=Accept";
    std::string login = account.LoginXml();
    login.replace(login.find(account.connectionString()), account.connectionString().size(), connection);
    const ImportRun run = test::Import<kovra::ClsInvSubject>(account, Request("EMPTY", "<row/>"), login);
    EXPECT_EQ(run.result, "");
    EXPECT_EQ(run.trace.back(), Executed("Delete * From IA_HeadSet"));
    EXPECT_EQ(Stored(), std::vector<std::string>());
}

TEST_F(Transact, ImportsRowsIndependently) {
    const ImportRun run = Import("ADD", std::string(row) + "<row/><row><cWhCode>X</cWhCode><cInvHead>1401</cInvHead>"
                                                           "</row><row><cWhCode>02</cWhCode><cInvHead>1401</cInvHead>"
                                                           "</row>");
    EXPECT_EQ(run.result,
              ResultDocument(
                  "ADD", {{"仓库编码：01， ， ", 0, "ok"},
                          {"", 101,
                           "仓库编码、存货分类编码、存货编码三者必须输入其中之一。存货科目编码、差异科目编码、"
                           "分期收款发出商品科目编码、委托代销发出商品科目编码、直运科目编码五项必须输入其中之一。"},
                          {"仓库编码：X， ， ", 101, "仓库编码不合法。"},
                          {"仓库编码：02， ， ", 0, "ok"}}));
    EXPECT_EQ(Stored().size(), 2U);
}

} // namespace
} // namespace test
