#include "ClsOppSubjectST/ClsOppSubjectST.h"

#include "tests/allocation/FailEveryAllocation.h"
#include "tests/support/Import.h"
#include "tests/support/rules/SettingRules.h"

#include <gtest/gtest.h>

namespace standard_cost_settings_allocation {
namespace {

using test::FailEveryAllocation;
using test::Play;

constexpr const char* rows = "<row><cRdCode>1</cRdCode><cOppHead>1401</cOppHead></row>"
                             "<row><cRdCode>2</cRdCode><cTaxRefundCode/></row>";

test::SettingRow Row(const std::string& category, const std::string& account) {
    return {.key = "收发类别编码：" + category + "， ， ",
            .checks = {{"From rd_style  Where bRdEnd = 1 and  cRdCode=N'" + category + "' "}},
            .match = "Where isnull(cRdCode,N'') = N'" + category + "' And",
            .write = "INSERT INTO IA_OppHead",
            .stored = "{\"cRdCode\":\"" + category + "\",\"cOppHead\":" + account + ",\"iYear\":2023}",
            .storedName = category};
}

TEST(StandardCostSettingsAllocation, Add) {
    FailEveryAllocation(
        {.name = "ClsOppSubjectST ADD",
         .proc = "ADD",
         .setup = "INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'ca', N'dCAFirstDate', N'2023-01-01'), "
                  "(N'ca', N'bRLOrST', N'1')\nGO\n"
                  "INSERT INTO rd_style (cRdCode, bRdEnd) VALUES (N'1', 1), (N'2', 1)\nGO\n"
                  "INSERT INTO code (iyear, ccode, bend) VALUES (2023, N'1401', 1)",
         .restore = "DELETE FROM IA_OppHead",
         .contents = {"select cRdCode, cOppHead, iYear from IA_OppHead"},
         .run = test::TransactOf<kovra::ClsOppSubjectST>(test::Request("ADD", rows)),
         .rules = [](Play& play) {
             test::SettingRow withAccount = Row("1", R"("1401")");
             withAccount.checks.push_back(test::AccountCheck("1401"));
             return test::PlayStandardCostCall(play, [&] {
                 return PlaySettings(play, {withAccount, Row("2", "null")});
             });
         }});
}

} // namespace
} // namespace standard_cost_settings_allocation
