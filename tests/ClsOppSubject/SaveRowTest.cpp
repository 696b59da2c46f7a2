#include "host/Error.h"
#include "tests/ClsOppSubject/Fixture.h"

namespace test {
namespace {

using SaveRow = OppositeSettings;

constexpr const char* exists = "对照关系已经存在，无法插入新记录。";

constexpr const char* everyField = "<row><cRdCode>101</cRdCode><cInvcCode>C1</cInvcCode><cInvCode>A</cInvCode>"
                                   "<cDepCode>0201</cDepCode><citem_class>P</citem_class><citemcode>Q</citemcode>"
                                   "<cOppHead>1401</cOppHead><cEstHead>1402</cEstHead></row>";
constexpr const char* everyFieldKey =
    "收发类别编码：101， 存货分类编码：C1， 存货编码：A， 部门编码：0201， 项目大类编码：P， 项目编码：Q";
constexpr const char* everyFieldMatch =
    "Select AutoID From IA_OppHead Where cRdCode = N'101' And cInvcCode = N'C1' And cInvCode = N'A' And "
    "cDepCode = N'0201' And citem_class = N'P' And citemcode = N'Q' And iyear = 2023";
constexpr const char* everyFieldStored =
    R"({"cRdCode":"101","cInvcCode":"C1","cInvCode":"A","cDepCode":"0201","citem_class":"P","citemcode":"Q",)"
    R"("cOppHead":"1401","cEstHead":"1402","iYear":2023})";

/// A category and one account.
constexpr const char* categoryRow = "<row><cRdCode>101</cRdCode><cEstHead>1402</cEstHead></row>";
constexpr const char* categoryKey = "收发类别编码：101， ， ， ， ， ";
constexpr const char* categoryMatch =
    "Select AutoID From IA_OppHead Where cRdCode = N'101' And isnull(cInvcCode,N'') = N'' And "
    "isnull(cInvCode,N'') = N'' And isnull(cDepCode,N'') = N'' And isnull(citem_class,N'') = N'' And "
    "isnull(citemcode,N'') = N'' And iyear = 2023";

TEST_F(SaveRow, InsertsEveryField) {
    const ImportRun run = Import("ADD", everyField);
    EXPECT_EQ(run.result, ResultDocument("ADD", {{everyFieldKey, 0, "ok"}}));
    EXPECT_EQ(SaveLines(run), (std::vector{
                                  LookedUp(everyFieldMatch),
                                  Executed("INSERT INTO IA_OppHead (cRdCode,cInvcCode,cInvCode "
                                           ",cDepCode,citem_class,citemcode,cOppHead,cEstHead,iYear) \r\n"
                                           " VALUES ('101', 'C1', 'A', '0201', 'P', 'Q', '1401', '1402',2023)"),
                              }));
    EXPECT_EQ(Stored(), std::vector<std::string>{everyFieldStored});
}

TEST_F(SaveRow, InsertsOneKeyAndOneAccount) {
    const ImportRun run = Import("ADD", categoryRow);
    EXPECT_EQ(run.result, ResultDocument("ADD", {{categoryKey, 0, "ok"}}));
    EXPECT_EQ(SaveLines(run), (std::vector{
                                  LookedUp(categoryMatch),
                                  Executed("INSERT INTO IA_OppHead (cRdCode,cInvcCode,cInvCode "
                                           ",cDepCode,citem_class,citemcode,cOppHead,cEstHead,iYear) \r\n"
                                           " VALUES ('101', Null,Null,Null,Null,Null,Null,'1402',2023)"),
                              }));
    EXPECT_EQ(Stored(), std::vector<std::string>{
                            R"({"cRdCode":"101","cInvcCode":null,"cInvCode":null,"cDepCode":null,)"
                            R"("citem_class":null,"citemcode":null,"cOppHead":null,"cEstHead":"1402","iYear":2023})"});
}

TEST_F(SaveRow, InsertsWithoutAnEstimateAccount) {
    const ImportRun run = Import("EDIT", "<row><cDepCode>0201</cDepCode><cOppHead>1401</cOppHead></row>");
    EXPECT_EQ(run.result, ResultDocument("EDIT", {{"部门编码：0201， ， ", 0, "ok"}}));
    EXPECT_EQ(SaveLines(run),
              (std::vector{
                  LookedUp("Select AutoID From IA_OppHead Where isnull(cRdCode,N'') = N'' And "
                           "isnull(cInvcCode,N'') = N'' And isnull(cInvCode,N'') = N'' And cDepCode = N'0201' And "
                           "isnull(citem_class,N'') = N'' And isnull(citemcode,N'') = N'' And iyear = 2023"),
                  Executed("INSERT INTO IA_OppHead (cRdCode,cInvcCode,cInvCode "
                           ",cDepCode,citem_class,citemcode,cOppHead,cEstHead,iYear) \r\n"
                           " VALUES (Null,Null,Null,'0201', Null,Null,'1401', Null,2023)"),
              }));
}

TEST_F(SaveRow, MatchesEachKeyByItsOwnTest) {
    const ImportRun item = Import("ADD", "<row><cInvcCode>C1</cInvcCode><cInvCode>A</cInvCode>"
                                         "<citemcode>Q</citemcode><cOppHead>1401</cOppHead></row>");
    EXPECT_EQ(SaveLines(item).front(),
              LookedUp("Select AutoID From IA_OppHead Where isnull(cRdCode,N'') = N'' And cInvcCode = N'C1' And "
                       "cInvCode = N'A' And isnull(cDepCode,N'') = N'' And isnull(citem_class,N'') = N'' And "
                       "citemcode = N'Q' And iyear = 2023"));
}

TEST_F(SaveRow, UpdatesEveryField) {
    account.Run("INSERT INTO IA_OppHead (cRdCode, iYear) VALUES (N'9', 2023)\n"
                "GO\n"
                "INSERT INTO IA_OppHead (cRdCode,cInvcCode,cInvCode,cDepCode,citem_class,citemcode,iYear) VALUES "
                "(N'101',N'C1',N'A',N'0201',N'P',N'Q',2023)");
    const ImportRun run = Import("EDIT", everyField);
    EXPECT_EQ(run.result, ResultDocument("EDIT", {{everyFieldKey, 0, "ok"}}));
    EXPECT_EQ(SaveLines(run), (std::vector{
                                  LookedUp(everyFieldMatch),
                                  Executed("Update IA_OppHead Set \r\n"
                                           " cRdCode = '101', \r\n"
                                           " cInvcCode = 'C1', \r\n"
                                           " cInvCode  = 'A', \r\n"
                                           " cDepCode = '0201', \r\n"
                                           " citem_class = 'P', \r\n"
                                           " citemcode = 'Q', \r\n"
                                           " cOppHead = '1401', \r\n"
                                           " cEstHead = '1402', \r\n"
                                           " iYear = 2023\r\n"
                                           "Where AutoID = 2"),
                              }));
    EXPECT_EQ(Stored(),
              (std::vector<std::string>{R"({"cRdCode":"9","cInvcCode":null,"cInvCode":null,"cDepCode":null,)"
                                        R"("citem_class":null,"citemcode":null,"cOppHead":null,"cEstHead":null,)"
                                        R"("iYear":2023})",
                                        everyFieldStored}));
}

TEST_F(SaveRow, ClearsWhatAnEditLeavesOut) {
    // An empty key matches a stored empty text, which becomes Null; the estimate account goes.
    account.Run("INSERT INTO IA_OppHead (cRdCode,cInvcCode,cInvCode,cDepCode,cOppHead,cEstHead,iYear) VALUES "
                "(N'101',N'',NULL,N'',N'1402',N'1402',2023)");
    const ImportRun run = Import("edit", "<row><cRdCode>101</cRdCode><cOppHead>1401</cOppHead></row>");
    EXPECT_EQ(run.result, ResultDocument("edit", {{categoryKey, 0, "ok"}}));
    EXPECT_EQ(SaveLines(run), (std::vector{
                                  LookedUp(categoryMatch),
                                  Executed("Update IA_OppHead Set \r\n"
                                           " cRdCode = '101', \r\n"
                                           " cInvcCode = Null,\r\n"
                                           " cInvCode  = Null,\r\n"
                                           " cDepCode = Null,\r\n"
                                           " citem_class = Null,\r\n"
                                           " citemcode = Null,\r\n"
                                           " cOppHead = '1401', \r\n"
                                           " cEstHead = Null, \r\n"
                                           " iYear = 2023\r\n"
                                           "Where AutoID = 1"),
                              }));
    EXPECT_EQ(Stored(), std::vector<std::string>{
                            R"({"cRdCode":"101","cInvcCode":null,"cInvCode":null,"cDepCode":null,)"
                            R"("citem_class":null,"citemcode":null,"cOppHead":"1401","cEstHead":null,"iYear":2023})"});
}

TEST_F(SaveRow, InsertsAnUnknownMappingUnderEdit) {
    const ImportRun run = Import("EDIT", everyField);
    EXPECT_EQ(run.result, ResultDocument("EDIT", {{everyFieldKey, 0, "ok"}}));
    EXPECT_EQ(Stored(), std::vector<std::string>{everyFieldStored});
}

TEST_F(SaveRow, RefusesAKnownMappingUnderAddAndReportsOkBehind) {
    const ImportRun run = Import("ADD", std::string(everyField) + everyField);
    EXPECT_EQ(
        run.result,
        ResultDocument("ADD", {{everyFieldKey, 0, "ok"}, {everyFieldKey, 101, exists}, {everyFieldKey, 0, "ok"}}));
    // The second row ends with its match query.
    EXPECT_EQ(run.trace.back(), LookedUp(everyFieldMatch));
    EXPECT_EQ(Stored(), std::vector<std::string>{everyFieldStored});
}

TEST_F(SaveRow, MatchesNoMappingWithAFurtherKey) {
    account.Run("INSERT INTO IA_OppHead (cRdCode,cInvcCode,cInvCode,cDepCode,citem_class,citemcode,iYear) VALUES\n"
                "(N'101',N'C1',NULL,NULL,NULL,NULL,2023),\n"
                "(N'101',NULL,N'A',NULL,NULL,NULL,2023),\n"
                "(N'101',NULL,NULL,N'02',NULL,NULL,2023),\n"
                "(N'101',NULL,NULL,NULL,N'P',NULL,2023),\n"
                "(N'101',NULL,NULL,NULL,NULL,N'Q',2023),\n"
                "(NULL,NULL,NULL,NULL,NULL,NULL,2023)");
    const ImportRun run = Import("ADD", categoryRow);
    EXPECT_EQ(run.result, ResultDocument("ADD", {{categoryKey, 0, "ok"}}));
    EXPECT_EQ(Stored().size(), 7U);
}

TEST_F(SaveRow, MatchesNullAndEmptyTextsAlike) {
    account.Run("INSERT INTO IA_OppHead (cRdCode,cInvcCode,cInvCode,cDepCode,citem_class,citemcode,iYear) VALUES "
                "(N'101',N'',NULL,N'',NULL,N'',2023)");
    const ImportRun run = Import("ADD", categoryRow);
    EXPECT_EQ(run.result, ResultDocument("ADD", {{categoryKey, 101, exists}, {categoryKey, 0, "ok"}}));
}

TEST_F(SaveRow, UpdatesOneOfSeveralMatches) {
    account.Run("INSERT INTO IA_OppHead (cRdCode,cOppHead,iYear) VALUES (N'101',N'1',2023),(N'101',N'2',2023)");
    const ImportRun run = Import("EDIT", categoryRow);
    EXPECT_EQ(run.result, ResultDocument("EDIT", {{categoryKey, 0, "ok"}}));
    EXPECT_EQ(account.Rows("select count(*) as n from IA_OppHead where cEstHead = N'1402'"),
              std::vector<std::string>{R"({"n":1})"});
    EXPECT_EQ(account.Rows("select count(*) as n from IA_OppHead where cEstHead is null"),
              std::vector<std::string>{R"({"n":1})"});
}

TEST_F(SaveRow, StoresTheProjectOfTheUncheckedSpellingOnly) {
    Import("ADD", "<row><cRdCode>101</cRdCode><cOppHead>1401</cOppHead><cItem_class>97</cItem_class>"
                  "<cItemCode>RD1</cItemCode><cItemCName>Research</cItemCName><cName>Spindle</cName></row>"
                  "<row><cRdCode>1</cRdCode><cOppHead>1401</cOppHead><citem_class>P</citem_class>"
                  "<citemcode>Q</citemcode></row>");
    EXPECT_EQ(account.Rows("select citem_class,citemcode from IA_OppHead order by AutoID"),
              (std::vector<std::string>{R"({"citem_class":null,"citemcode":null})",
                                        R"({"citem_class":"P","citemcode":"Q"})"}));
}

TEST_F(SaveRow, ReportsAQuoteInAnUncheckedValueAndOkBehind) {
    const ImportRun run = Import("ADD", "<row><cRdCode>101</cRdCode><citem_class>A'B</citem_class>"
                                        "<cOppHead>1401</cOppHead></row>"
                                        "<row><cRdCode>101</cRdCode><citemcode>A'B</citemcode>"
                                        "<cOppHead>1401</cOppHead></row>");
    const char* const first = "收发类别编码：101， ， ， ， 项目大类编码：A'B， ";
    const char* const second = "收发类别编码：101， ， ， ， ， 项目编码：A'B";
    EXPECT_EQ(run.result, ResultDocument("ADD", {{first, 101, "Incorrect syntax near 'B'."},
                                                 {first, 0, "ok"},
                                                 {second, 101, "Incorrect syntax near 'B'."},
                                                 {second, 0, "ok"}}));
    EXPECT_EQ(run.trace.back(),
              LookedUp("Select AutoID From IA_OppHead Where cRdCode = N'101' And isnull(cInvcCode,N'') = N'' And "
                       "isnull(cInvCode,N'') = N'' And isnull(cDepCode,N'') = N'' And isnull(citem_class,N'') = N'' "
                       "And citemcode = N'A'B' And iyear = 2023",
                       -2147217900));
    EXPECT_EQ(Stored(), std::vector<std::string>());
}

TEST_F(SaveRow, ReportsAValueLongerThanItsColumnAndOkBehind) {
    // citem_class takes ten characters.
    const std::string row = "<row><cRdCode>101</cRdCode><citem_class>12345678901</citem_class>"
                            "<cOppHead>1401</cOppHead></row>";
    const char* const key = "收发类别编码：101， ， ， ， 项目大类编码：12345678901， ";
    const ImportRun run = Import("ADD", row);
    EXPECT_EQ(run.result,
              ResultDocument("ADD", {{key, 101, "String or binary data would be truncated."}, {key, 0, "ok"}}));
    EXPECT_EQ(run.trace.back(), Executed("INSERT INTO IA_OppHead (cRdCode,cInvcCode,cInvCode "
                                         ",cDepCode,citem_class,citemcode,cOppHead,cEstHead,iYear) \r\n"
                                         " VALUES ('101', Null,Null,Null,'12345678901', Null,'1401', Null,2023)",
                                         -2147217833));
    EXPECT_EQ(Stored(), std::vector<std::string>());
}

TEST_F(SaveRow, ReportsAFailingUpdateAndOkBehind) {
    account.Run("INSERT INTO IA_OppHead (cRdCode,iYear) VALUES (N'101',2023)");
    const ImportRun run = Import("EDIT", categoryRow, {.statement = [](std::string_view sql) {
                                     if (sql.starts_with("Update")) {
                                         throw host::Error(host::error_number::integrityViolation, "Locked.");
                                     }
                                 }});
    EXPECT_EQ(run.result, ResultDocument("EDIT", {{categoryKey, 101, "Locked."}, {categoryKey, 0, "ok"}}));
}

TEST_F(SaveRow, TakesAnErrorWithoutDescriptionForSuccess) {
    const ImportRun run = Import("ADD", categoryRow, {.statement = [](std::string_view sql) {
                                     if (sql.starts_with("INSERT")) {
                                         throw host::Error(host::error_number::unspecified, "");
                                     }
                                 }});
    EXPECT_EQ(run.result, ResultDocument("ADD", {{categoryKey, 0, "ok"}, {categoryKey, 0, "ok"}}));
    EXPECT_EQ(Stored(), std::vector<std::string>());
}

} // namespace
} // namespace test
