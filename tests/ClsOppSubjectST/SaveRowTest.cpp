#include "ClsOppSubject/ClsOppSubject.h"
#include "host/Error.h"
#include "tests/ClsOppSubjectST/Fixture.h"

namespace test {
namespace {

using SaveRow = StandardCostSettings;

constexpr const char* exists = "对照关系已经存在，无法插入新记录。";

constexpr const char* everyFieldMatch =
    "Select AutoID From IA_OppHead Where isnull(cRdCode,N'') = N'101' And isnull(cInvcCode,N'') = N'C1' And "
    "isnull(cDepCode,N'') = N'0201' And iyear = 2023";
constexpr const char* everyFieldInsert =
    "INSERT INTO IA_OppHead (cRdCode,cInvcCode,cDepCode,cOppHead,cProcessHead,cMaterialHead,cOLaborStdCostCode,"
    "cOManuFixStdCostCode,\r\ncOManuVarStdCostCode,cOOmCostCode,cOiqtCode,cOPriceCode,fLaborCostEffRateDifCode,"
    "fLaborCostRateDifCode,fSemiLaborDifCode,\r\nfManuFixCostEffRateDifCode,fManuFixCostRateDifCode,"
    "fSemiManuFixDifCode,fManuVarCostEffRateDifCode,fManuVarCostRateDifCode,\r\nfSemiManuVarDifCode,fOmCostEDifCode,"
    "fSemiOmDifCode,cOTaxRefundCode,\r\niYear) \r\n VALUES ('101', 'C1', '0201', 'a01', 'a02', 'a03', 'a04', 'a05', "
    "'a06', 'a07', 'a08', 'a09', 'a10', 'a11', 'a12', 'a13', 'a14', 'a15', 'a16', 'a17', 'a18', 'a19', 'a20', 'a21', "
    "2023)";
constexpr const char* everyFieldUpdate = "Update IA_OppHead Set \r\n"
                                         " cRdCode = '101', \r\n"
                                         " cInvcCode = 'C1', \r\n"
                                         " cDepCode = '0201', \r\n"
                                         " cOppHead = 'a01', \r\n"
                                         " cProcessHead = 'a02', \r\n"
                                         " cMaterialHead = 'a03', \r\n"
                                         " cOLaborStdCostCode = 'a04', \r\n"
                                         " cOManuFixStdCostCode = 'a05', \r\n"
                                         " cOManuVarStdCostCode = 'a06', \r\n"
                                         " cOOmCostCode = 'a07', \r\n"
                                         " cOiqtCode = 'a08', \r\n"
                                         " cOPriceCode = 'a09', \r\n"
                                         " fLaborCostEffRateDifCode = 'a10', \r\n"
                                         " fLaborCostRateDifCode = 'a11', \r\n"
                                         " fSemiLaborDifCode = 'a12', \r\n"
                                         " fManuFixCostEffRateDifCode = 'a13', \r\n"
                                         " fManuFixCostRateDifCode = 'a14', \r\n"
                                         " fSemiManuFixDifCode = 'a15', \r\n"
                                         " fManuVarCostEffRateDifCode = 'a16', \r\n"
                                         " fManuVarCostRateDifCode = 'a17', \r\n"
                                         " fSemiManuVarDifCode = 'a18', \r\n"
                                         " fOmCostEDifCode = 'a19', \r\n"
                                         " fSemiOmDifCode = 'a20', \r\n"
                                         " cOTaxRefundCode = 'a21', \r\n"
                                         " iYear = 2023\r\n"
                                         "Where AutoID = 1";
/// The stored accounts of a row with every field.
constexpr const char* everyAccountStored =
    R"("cProcessHead":"a02","cMaterialHead":"a03","cOLaborStdCostCode":"a04","cOManuFixStdCostCode":"a05",)"
    R"("cOManuVarStdCostCode":"a06","cOOmCostCode":"a07","cOiqtCode":"a08","cOPriceCode":"a09",)"
    R"("fLaborCostEffRateDifCode":"a10","fLaborCostRateDifCode":"a11","fSemiLaborDifCode":"a12",)"
    R"("fManuFixCostEffRateDifCode":"a13","fManuFixCostRateDifCode":"a14","fSemiManuFixDifCode":"a15",)"
    R"("fManuVarCostEffRateDifCode":"a16","fManuVarCostRateDifCode":"a17","fSemiManuVarDifCode":"a18",)"
    R"("fOmCostEDifCode":"a19","fSemiOmDifCode":"a20","cOTaxRefundCode":"a21",)";
constexpr const char* noAccountStored =
    R"("cProcessHead":null,"cMaterialHead":null,"cOLaborStdCostCode":null,"cOManuFixStdCostCode":null,)"
    R"("cOManuVarStdCostCode":null,"cOOmCostCode":null,"cOiqtCode":null,"cOPriceCode":null,)"
    R"("fLaborCostEffRateDifCode":null,"fLaborCostRateDifCode":null,"fSemiLaborDifCode":null,)"
    R"("fManuFixCostEffRateDifCode":null,"fManuFixCostRateDifCode":null,"fSemiManuFixDifCode":null,)"
    R"("fManuVarCostEffRateDifCode":null,"fManuVarCostRateDifCode":null,"fSemiManuVarDifCode":null,)"
    R"("fOmCostEDifCode":null,"fSemiOmDifCode":null,"cOTaxRefundCode":null,)";

TEST_F(SaveRow, InsertsEveryField) {
    const ImportRun run = Import("ADD", everyField);
    EXPECT_EQ(run.result, ResultDocument("ADD", {{everyFieldKey, 0, "ok"}}));
    EXPECT_EQ(SaveLines(run), (std::vector{LookedUp(everyFieldMatch), Executed(everyFieldInsert)}));
    EXPECT_EQ(Stored(),
              std::vector<std::string>{std::string(R"({"AutoID":1,"cRdCode":"101","cInvcCode":"C1","cInvCode":null,)"
                                                   R"("cDepCode":"0201","citem_class":null,"citemcode":null,)"
                                                   R"("cOppHead":"a01","cEstHead":null,)") +
                                       everyAccountStored + R"("iYear":2023})"});
}

TEST_F(SaveRow, InsertsAKeyAloneWithEveryAccountNull) {
    const ImportRun run = Import("EDIT", "<row><cRdCode>101</cRdCode></row>");
    EXPECT_EQ(run.result, ResultDocument("EDIT", {{"收发类别编码：101， ， ", 0, "ok"}}));
    EXPECT_EQ(SaveLines(run),
              (std::vector{
                  LookedUp("Select AutoID From IA_OppHead Where isnull(cRdCode,N'') = N'101' And "
                           "isnull(cInvcCode,N'') = N'' And isnull(cDepCode,N'') = N'' And iyear = 2023"),
                  Executed("INSERT INTO IA_OppHead (cRdCode,cInvcCode,cDepCode,cOppHead,cProcessHead,cMaterialHead,"
                           "cOLaborStdCostCode,cOManuFixStdCostCode,\r\n"
                           "cOManuVarStdCostCode,cOOmCostCode,cOiqtCode,cOPriceCode,fLaborCostEffRateDifCode,"
                           "fLaborCostRateDifCode,fSemiLaborDifCode,\r\n"
                           "fManuFixCostEffRateDifCode,fManuFixCostRateDifCode,fSemiManuFixDifCode,"
                           "fManuVarCostEffRateDifCode,fManuVarCostRateDifCode,\r\n"
                           "fSemiManuVarDifCode,fOmCostEDifCode,fSemiOmDifCode,cOTaxRefundCode,\r\n"
                           "iYear) \r\n"
                           " VALUES ('101', Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,"
                           "Null,Null,Null,Null,Null,Null,Null,Null,Null,2023)"),
              }));
    EXPECT_EQ(Stored(),
              std::vector<std::string>{std::string(R"({"AutoID":1,"cRdCode":"101","cInvcCode":null,"cInvCode":null,)"
                                                   R"("cDepCode":null,"citem_class":null,"citemcode":null,)"
                                                   R"("cOppHead":null,"cEstHead":null,)") +
                                       noAccountStored + R"("iYear":2023})"});
}

TEST_F(SaveRow, UpdatesEveryField) {
    Import("ADD", "<row><cRdCode>101</cRdCode><cInvcCode>C1</cInvcCode><cDepCode>0201</cDepCode></row>");
    const ImportRun run = Import("EDIT", everyField);
    EXPECT_EQ(run.result, ResultDocument("EDIT", {{everyFieldKey, 0, "ok"}}));
    EXPECT_EQ(SaveLines(run), (std::vector{LookedUp(everyFieldMatch), Executed(everyFieldUpdate)}));
}

TEST_F(SaveRow, ClearsWhatAnEditLeavesOut) {
    Import("ADD", everyField);
    const ImportRun run = Import("EDIT", "<row><cRdCode>101</cRdCode><cInvcCode>C1</cInvcCode>"
                                         "<cDepCode>0201</cDepCode><cOTaxRefundCode>a01</cOTaxRefundCode></row>");
    EXPECT_EQ(run.result, ResultDocument("EDIT", {{everyFieldKey, 0, "ok"}}));
    EXPECT_EQ(run.trace.back(), Executed("Update IA_OppHead Set \r\n"
                                         " cRdCode = '101', \r\n"
                                         " cInvcCode = 'C1', \r\n"
                                         " cDepCode = '0201', \r\n"
                                         " cOppHead = Null,\r\n"
                                         " cProcessHead = Null,\r\n"
                                         " cMaterialHead = Null,\r\n"
                                         " cOLaborStdCostCode = Null,\r\n"
                                         " cOManuFixStdCostCode = Null,\r\n"
                                         " cOManuVarStdCostCode = Null,\r\n"
                                         " cOOmCostCode = Null,\r\n"
                                         " cOiqtCode = Null,\r\n"
                                         " cOPriceCode = Null,\r\n"
                                         " fLaborCostEffRateDifCode = Null,\r\n"
                                         " fLaborCostRateDifCode = Null,\r\n"
                                         " fSemiLaborDifCode = Null,\r\n"
                                         " fManuFixCostEffRateDifCode = Null,\r\n"
                                         " fManuFixCostRateDifCode = Null,\r\n"
                                         " fSemiManuFixDifCode = Null,\r\n"
                                         " fManuVarCostEffRateDifCode = Null,\r\n"
                                         " fManuVarCostRateDifCode = Null,\r\n"
                                         " fSemiManuVarDifCode = Null,\r\n"
                                         " fOmCostEDifCode = Null,\r\n"
                                         " fSemiOmDifCode = Null,\r\n"
                                         " cOTaxRefundCode = 'a01', \r\n"
                                         " iYear = 2023\r\n"
                                         "Where AutoID = 1"));
    EXPECT_EQ(account.Rows("select cOppHead,fSemiOmDifCode,cOTaxRefundCode from IA_OppHead"),
              std::vector<std::string>{R"({"cOppHead":null,"fSemiOmDifCode":null,"cOTaxRefundCode":"a01"})"});
}

TEST_F(SaveRow, RewritesAMappingOfAnItemButItsItemProjectAndEstimate) {
    account.Run("INSERT INTO inventory (cInvCode) VALUES (N'A')");
    const ImportRun plain = test::Import<kovra::ClsOppSubject>(
        account,
        Request("ADD", "<row><cRdCode>101</cRdCode><cInvcCode>C1</cInvcCode><cInvCode>A</cInvCode>"
                       "<cDepCode>0201</cDepCode><citem_class>P</citem_class><citemcode>Q</citemcode>"
                       "<cOppHead>a20</cOppHead><cEstHead>a21</cEstHead></row>"),
        account.LoginXml());
    EXPECT_EQ(plain.result, ResultDocument("ADD", {{"收发类别编码：101， 存货分类编码：C1， 存货编码：A， "
                                                    "部门编码：0201， 项目大类编码：P， 项目编码：Q",
                                                    0, "ok"}}));
    EXPECT_EQ(Stored(),
              std::vector<std::string>{std::string(R"({"AutoID":1,"cRdCode":"101","cInvcCode":"C1","cInvCode":"A",)"
                                                   R"("cDepCode":"0201","citem_class":"P","citemcode":"Q",)"
                                                   R"("cOppHead":"a20","cEstHead":"a21",)") +
                                       noAccountStored + R"("iYear":2023})"});

    const ImportRun standard = Import("EDIT", everyField);
    EXPECT_EQ(standard.result, ResultDocument("EDIT", {{everyFieldKey, 0, "ok"}}));
    EXPECT_EQ(SaveLines(standard), (std::vector{LookedUp(everyFieldMatch), Executed(everyFieldUpdate)}));
    EXPECT_EQ(Stored(),
              std::vector<std::string>{std::string(R"({"AutoID":1,"cRdCode":"101","cInvcCode":"C1","cInvCode":"A",)"
                                                   R"("cDepCode":"0201","citem_class":"P","citemcode":"Q",)"
                                                   R"("cOppHead":"a01","cEstHead":"a21",)") +
                                       everyAccountStored + R"("iYear":2023})"});
}

TEST_F(SaveRow, RefusesAKnownMappingUnderAddAndReportsOkBehind) {
    const ImportRun run = Import("ADD", std::string(everyField) + everyField);
    EXPECT_EQ(
        run.result,
        ResultDocument("ADD", {{everyFieldKey, 0, "ok"}, {everyFieldKey, 101, exists}, {everyFieldKey, 0, "ok"}}));
    EXPECT_EQ(run.trace.back(), LookedUp(everyFieldMatch));
    EXPECT_EQ(Stored().size(), 1U);
}

TEST_F(SaveRow, MatchesByThreeKeysAndTheYear) {
    // Neither another year nor a further one of the three keys matches; an empty text does.
    account.Run("INSERT INTO IA_OppHead (cRdCode,cInvcCode,cDepCode,iYear) VALUES "
                "(N'101',NULL,NULL,2022),(N'101',N'C1',NULL,2023),(N'101',NULL,N'0201',2023),(NULL,NULL,NULL,2023)");
    const char* const row = "<row><cRdCode>101</cRdCode></row>";
    const char* const key = "收发类别编码：101， ， ";
    EXPECT_EQ(Import("ADD", row).result, ResultDocument("ADD", {{key, 0, "ok"}}));
    EXPECT_EQ(Stored().size(), 5U);

    account.Run("UPDATE IA_OppHead SET cInvcCode = N'', cInvCode = N'A' WHERE AutoID = 5");
    EXPECT_EQ(Import("ADD", row).result, ResultDocument("ADD", {{key, 101, exists}, {key, 0, "ok"}}));
    EXPECT_EQ(Stored().size(), 5U);
}

TEST_F(SaveRow, ReportsAFailingUpdateAndOkBehind) {
    Import("ADD", everyField);
    const ImportRun run = Import("EDIT", everyField, {.statement = [](std::string_view sql) {
                                     if (sql.starts_with("Update")) {
                                         throw host::Error(host::error_number::integrityViolation, "Locked.");
                                     }
                                 }});
    EXPECT_EQ(run.result, ResultDocument("EDIT", {{everyFieldKey, 101, "Locked."}, {everyFieldKey, 0, "ok"}}));
}

} // namespace
} // namespace test
