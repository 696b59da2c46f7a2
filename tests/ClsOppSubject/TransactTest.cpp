#include "host/Error.h"
#include "tests/ClsOppSubject/Fixture.h"

namespace test {
namespace {

using Transact = OppositeSettings;

constexpr const char* yearEnd = "SELECT bflag_IA FROM GL_mend WHERE iyear = 2023 AND iperiod=12 AND bflag_IA=1";
constexpr const char* row = "<row><cRdCode>101</cRdCode><cOppHead>1401</cOppHead></row>";
constexpr const char* key = "收发类别编码：101， ， ， ， ， ";

TEST_F(Transact, ConnectsAndAsksForTheYearEndFirst) {
    const ImportRun run = Import("ADD", "");
    EXPECT_EQ(run.result, ResultDocument("ADD", {}));
    EXPECT_EQ(run.trace, (std::vector{Connected(account.connectionString()), LookedUpAtClient(yearEnd)}));
}

TEST_F(Transact, RefusesAClosedYear) {
    account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 12, 1)");
    for (const char* proc : {"ADD", "EDIT", "EMPTY", "Delete"}) {
        const ImportRun run = Import(proc, row);
        EXPECT_EQ(run.result, R"(<error code="102" dsc="12月份已结账,不能导入科目设置"/>)");
        EXPECT_EQ(run.trace.size(), 2U);
    }
}

TEST_F(Transact, ImportsIntoAYearWhoseDecemberIsOpen) {
    account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 12, 0), (2023, 11, 1), (2022, 12, 1)");
    EXPECT_EQ(Import("ADD", row).result, ResultDocument("ADD", {{key, 0, "ok"}}));
}

TEST_F(Transact, EmptyIsSentAsItStandsAndRefused) {
    Import("ADD", row);
    const ImportRun run = Import("EMPTY", row);
    EXPECT_EQ(run.result, R"(<error code="-2147217900" dsc="Incorrect syntax near '*'."/>)");
    EXPECT_EQ(run.trace, (std::vector{Connected(account.connectionString()), LookedUpAtClient(yearEnd),
                                      Executed("Delete * From IA_OppHead", -2147217900)}));
    EXPECT_EQ(Stored().size(), 1U);
}

TEST_F(Transact, EmptyDeletesEverythingWhereTheDatabaseTakesTheAsterisk) {
    account.Run("INSERT INTO IA_OppHead (cRdCode,iYear) VALUES (N'101',2023),(N'101',2022)");
    const std::string connection = account.connectionString() + ";Delete Star=Accept";
    std::string login = account.LoginXml();
    login.replace(login.find(account.connectionString()), account.connectionString().size(), connection);
    const ImportRun run = test::Import<kovra::ClsOppSubject>(account, Request("empty", row), login);
    EXPECT_EQ(run.result, "");
    EXPECT_EQ(run.trace,
              (std::vector{Connected(connection), LookedUpAtClient(yearEnd), Executed("Delete * From IA_OppHead")}));
    EXPECT_EQ(Stored(), std::vector<std::string>());
}

TEST_F(Transact, OffersNoOtherOperation) {
    for (const char* proc : {"Delete", "", "ADD ", "QUERY"}) {
        EXPECT_EQ(Import(proc, row).result, R"(<error code="710" dsc="本模块暂不提供此功能！"/>)") << proc;
    }
    EXPECT_EQ(Stored(), std::vector<std::string>());
}

TEST_F(Transact, KeepsWhatEarlierRowsWrote) {
    const ImportRun run = Import("ADD", "<row><cRdCode>101</cRdCode><cOppHead>1401</cOppHead></row>"
                                        "<row><cRdCode>X</cRdCode><cOppHead>1401</cOppHead></row>"
                                        "<other><cRdCode>1</cRdCode><cOppHead>1401</cOppHead></other>"
                                        "<row><cRdCode>1</cRdCode><cOppHead>1401</cOppHead></row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{key, 0, "ok"},
                                                 {"收发类别编码：X， ， ， ， ， ", 101, "收发类别编码不合法。"},
                                                 {"收发类别编码：1， ， ， ， ， ", 0, "ok"}}));
    EXPECT_EQ(account.Rows("select cRdCode from IA_OppHead order by AutoID"),
              (std::vector<std::string>{R"({"cRdCode":"101"})", R"({"cRdCode":"1"})"}));
}

TEST_F(Transact, StopsWhereAnOutcomeCannotBeRecorded) {
    // The second row's outcome fails, and so does the one that is to report it.
    int items = 0;
    const ImportRun run =
        Import("ADD", std::string(row) + "<row/>" + row, {.eaiHelper = [&items](std::string_view operation) {
                   if (operation == "AddResultItem" && (++items == 2 || items == 3)) {
                       throw host::Error(91, "对象变量或 With 块变量未设置");
                   }
               }});
    EXPECT_EQ(run.result, ResultDocument("ADD", {{key, 0, "ok"}, {"", 999, "对象变量或 With 块变量未设置"}}));
}

TEST_F(Transact, ReportsAnErrorOutsideTheCheckUnderTheExtendedKey) {
    // Recording the refusal fails once; the row's own trap reports that.
    int items = 0;
    const ImportRun run = Import("ADD", "<row><citem_class>P</citem_class><cOppHead>1401</cOppHead></row>",
                                 {.eaiHelper = [&items](std::string_view operation) {
                                     if (operation == "AddResultItem" && ++items == 1) {
                                         throw host::Error(91, "对象变量或 With 块变量未设置");
                                     }
                                 }});
    EXPECT_EQ(run.result, ResultDocument("ADD", {{"项目大类编码：P， ", 101, "对象变量或 With 块变量未设置"}}));
}

} // namespace
} // namespace test
