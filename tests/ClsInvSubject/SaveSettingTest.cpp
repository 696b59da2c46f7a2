#include "host/Error.h"
#include "tests/ClsInvSubject/Fixture.h"

namespace test {
namespace {

using SaveSetting = InventorySettings;

constexpr const char* exists = "对照关系已经存在，无法插入新记录。";

/// Every field that may stand together.
constexpr const char* itemRow = "<row><cWhCode>01</cWhCode><cInvCode>A</cInvCode><cInvHead>1401</cInvHead>"
                                "<cDifHead>1402</cDifHead><cOutHead>1403</cOutHead><cEnDispHead>1404</cEnDispHead>"
                                "<czyHead>1405</czyHead></row>";
constexpr const char* itemKey = "仓库编码：01， ， 存货编码：A";
constexpr const char* itemLookup =
    "Select AutoID From IA_HeadSet Where cWhCode = '01' And cInvCode = 'A' And iyear = 2023";
constexpr const char* itemStored =
    R"({"AutoID":1,"cWhCode":"01","cInvCCode":null,"cInvHead":"1401","cDifHead":"1402","cOutHead":"1403",)"
    R"("cEnDispHead":"1404","czyHead":"1405","cInvCode":"A","iYear":2023})";

constexpr const char* warehouseRow = "<row><cWhCode>01</cWhCode><cDifHead>1402</cDifHead></row>";
constexpr const char* warehouseKey = "仓库编码：01， ， ";

TEST_F(SaveSetting, InsertsAnItemWithEveryAccount) {
    const ImportRun run = Import("ADD", itemRow);
    EXPECT_EQ(run.result, ResultDocument("ADD", {{itemKey, 0, "ok"}}));
    EXPECT_EQ(SaveLines(run),
              (std::vector{
                  LookedUp(itemLookup),
                  Executed("INSERT INTO IA_HeadSet "
                           "(cWhCode,cInvCCode,cInvHead,cDifHead,cOutHead,cEnDispHead,czyHead,cInvCode,iYear) \r\n"
                           " VALUES ('01', Null,'1401', '1402', '1403', '1404', '1405', 'A',2023)"),
              }));
    EXPECT_EQ(Stored(), std::vector<std::string>{itemStored});
}

TEST_F(SaveSetting, InsertsAClassWithOneAccount) {
    const ImportRun run = Import("ADD", "<row><cInvCCode>C1</cInvCCode><czyHead>1405</czyHead></row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{"存货分类：C1， ", 0, "ok"}}));
    EXPECT_EQ(SaveLines(run),
              (std::vector{
                  LookedUp("Select AutoID From IA_HeadSet Where cInvCCode = 'C1' And iyear = 2023"),
                  Executed("INSERT INTO IA_HeadSet "
                           "(cWhCode,cInvCCode,cInvHead,cDifHead,cOutHead,cEnDispHead,czyHead,cInvCode,iYear) \r\n"
                           " VALUES (Null,'C1', Null,Null,Null,Null,'1405', Null,2023)"),
              }));
    EXPECT_EQ(Stored(), std::vector<std::string>{
                            R"({"AutoID":1,"cWhCode":null,"cInvCCode":"C1","cInvHead":null,"cDifHead":null,)"
                            R"("cOutHead":null,"cEnDispHead":null,"czyHead":"1405","cInvCode":null,"iYear":2023})"});
}

TEST_F(SaveSetting, LooksAWarehouseAndAClassUpByBoth) {
    const ImportRun run = Import("ADD", "<row><cWhCode>01</cWhCode><cInvCCode>C1</cInvCCode>"
                                        "<cInvHead>1401</cInvHead></row>");
    EXPECT_EQ(SaveLines(run).front(),
              LookedUp("Select AutoID From IA_HeadSet Where cWhCode = '01' And cInvCCode = 'C1' And iyear = 2023"));
}

TEST_F(SaveSetting, UpdatesAnItem) {
    account.Run("INSERT INTO IA_HeadSet (cWhCode, cInvCode, cInvHead, iYear) VALUES (N'01', N'A', N'1405', 2023)");
    const ImportRun run = Import("EDIT", itemRow);
    EXPECT_EQ(run.result, ResultDocument("EDIT", {{itemKey, 0, "ok"}}));
    EXPECT_EQ(SaveLines(run), (std::vector{
                                  LookedUp(itemLookup),
                                  Executed("Update IA_HeadSet Set \r\n"
                                           " cWhCode = '01', \r\n"
                                           " cInvCCode = Null,\r\n"
                                           " cInvHead = '1401', \r\n"
                                           " cDifHead = '1402', \r\n"
                                           " cOutHead = '1403', \r\n"
                                           " cEnDispHead = '1404', \r\n"
                                           " czyHead = '1405', \r\n"
                                           " cInvCode = 'A', \r\n"
                                           " iYear = 2023\r\n"
                                           "Where AutoID = 1"),
                              }));
    EXPECT_EQ(Stored(), std::vector<std::string>{itemStored});
}

TEST_F(SaveSetting, ClearsTheAccountsThatAnEditLeavesOut) {
    Import("ADD", itemRow);
    const ImportRun run = Import("EDIT", "<row><cInvCode>A</cInvCode><cDifHead>1401</cDifHead></row>");
    EXPECT_EQ(run.result, ResultDocument("EDIT", {{"存货编码：A", 0, "ok"}}));
    EXPECT_EQ(SaveLines(run), (std::vector{
                                  LookedUp("Select AutoID From IA_HeadSet Where cInvCode = 'A' And iyear = 2023"),
                                  Executed("Update IA_HeadSet Set \r\n"
                                           " cWhCode = Null,\r\n"
                                           " cInvCCode = Null,\r\n"
                                           " cInvHead = Null,\r\n"
                                           " cDifHead = '1401', \r\n"
                                           " cOutHead = Null,\r\n"
                                           " cEnDispHead = Null,\r\n"
                                           " czyHead = Null,\r\n"
                                           " cInvCode = 'A', \r\n"
                                           " iYear = 2023\r\n"
                                           "Where AutoID = 1"),
                              }));
    EXPECT_EQ(Stored(), std::vector<std::string>{
                            R"({"AutoID":1,"cWhCode":null,"cInvCCode":null,"cInvHead":null,"cDifHead":"1401",)"
                            R"("cOutHead":null,"cEnDispHead":null,"czyHead":null,"cInvCode":"A","iYear":2023})"});
}

TEST_F(SaveSetting, ReportsTheDatabasesErrorForAnEditWithoutItem) {
    // Behind "Null " the comma is missing.
    account.Run("INSERT INTO IA_HeadSet (cWhCode, cInvHead, iYear) VALUES (N'01', N'1405', 2023)");
    const std::vector<std::string> before = Stored();
    const ImportRun run = Import("EDIT", warehouseRow);
    EXPECT_EQ(run.result,
              ResultDocument("EDIT", {{warehouseKey, 101, "Incorrect syntax near 'iYear'."}, {warehouseKey, 0, "ok"}}));
    EXPECT_EQ(SaveLines(run), (std::vector{
                                  LookedUp("Select AutoID From IA_HeadSet Where cWhCode = '01' And iyear = 2023"),
                                  Executed("Update IA_HeadSet Set \r\n"
                                           " cWhCode = '01', \r\n"
                                           " cInvCCode = Null,\r\n"
                                           " cInvHead = Null,\r\n"
                                           " cDifHead = '1402', \r\n"
                                           " cOutHead = Null,\r\n"
                                           " cEnDispHead = Null,\r\n"
                                           " czyHead = Null,\r\n"
                                           " cInvCode = Null \r\n"
                                           " iYear = 2023\r\n"
                                           "Where AutoID = 1",
                                           -2147217900),
                              }));
    EXPECT_EQ(Stored(), before);
}

TEST_F(SaveSetting, InsertsAnUnknownSettingUnderEdit) {
    const ImportRun run = Import("EDIT", warehouseRow);
    EXPECT_EQ(run.result, ResultDocument("EDIT", {{warehouseKey, 0, "ok"}}));
    EXPECT_EQ(run.trace.back(),
              Executed("INSERT INTO IA_HeadSet "
                       "(cWhCode,cInvCCode,cInvHead,cDifHead,cOutHead,cEnDispHead,czyHead,cInvCode,iYear) \r\n"
                       " VALUES ('01', Null,Null,'1402', Null,Null,Null,Null,2023)"));
}

TEST_F(SaveSetting, RefusesAKnownSettingUnderAddAndReportsOkBehind) {
    const ImportRun run = Import("ADD", std::string(itemRow) + itemRow);
    EXPECT_EQ(run.result, ResultDocument("ADD", {{itemKey, 0, "ok"}, {itemKey, 101, exists}, {itemKey, 0, "ok"}}));
    EXPECT_EQ(run.trace.back(), LookedUp(itemLookup));
    EXPECT_EQ(Stored(), std::vector<std::string>{itemStored});
}

TEST_F(SaveSetting, TakesAnySettingOfTheWarehouseForAWarehouseAlone) {
    Import("ADD", itemRow);
    EXPECT_EQ(Import("ADD", warehouseRow).result,
              ResultDocument("ADD", {{warehouseKey, 101, exists}, {warehouseKey, 0, "ok"}}));
    // The item of another warehouse is a setting of its own.
    EXPECT_EQ(Import("ADD", "<row><cWhCode>02</cWhCode><cInvCode>A</cInvCode><cInvHead>1401</cInvHead></row>").result,
              ResultDocument("ADD", {{"仓库编码：02， ， 存货编码：A", 0, "ok"}}));
    EXPECT_EQ(Stored().size(), 2U);
}

TEST_F(SaveSetting, ReportsAFailingStatementAndOkBehind) {
    for (const std::string_view statement : {"Select AutoID", "INSERT"}) {
        const ImportRun run = Import("ADD", warehouseRow, {.statement = [statement](std::string_view sql) {
                                         if (sql.starts_with(statement)) {
                                             throw host::Error(host::error_number::dataTruncated,
                                                               "String or binary data would be truncated.");
                                         }
                                     }});
        EXPECT_EQ(run.result, ResultDocument("ADD", {{warehouseKey, 101, "String or binary data would be truncated."},
                                                     {warehouseKey, 0, "ok"}}))
            << statement;
    }
    EXPECT_EQ(Stored(), std::vector<std::string>());
}

} // namespace
} // namespace test
