#include "host/Error.h"
#include "tests/ClsOppSubject/Fixture.h"
#include "tests/support/SettingsCases.h"

namespace test {
namespace {

using Transact = OppositeSettings;
INSTANTIATE_TYPED_TEST_SUITE_P(ClsOppSubject, EverySetting, OppositeSettings);

constexpr const char* row = "<row><cRdCode>101</cRdCode><cOppHead>1401</cOppHead></row>";
constexpr const char* key = "收发类别编码：101， ， ， ， ， ";

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
