#include "ClsOppSubject/ClsOppSubject.h"

#include "tests/allocation/FailEveryAllocation.h"
#include "tests/support/Import.h"
#include "tests/support/rules/SettingRules.h"

#include <gtest/gtest.h>

namespace opposite_settings_allocation {
namespace {

using test::FailEveryAllocation;
using test::Play;

constexpr const char* rows = "<row><cRdCode>1</cRdCode><cOppHead>1401</cOppHead></row>"
                             "<row><cRdCode>2</cRdCode><cOppHead>1401</cOppHead></row>";

std::string Stored(const std::string& category, const std::string& account) {
    return "{\"cRdCode\":\"" + category + "\",\"cOppHead\":\"" + account + "\",\"iYear\":2023}";
}

test::SettingRow Row(const std::string& category, const std::string& write) {
    return {.key = "收发类别编码：" + category + "， ， ， ， ， ",
            .checks = {{"From rd_style  Where cRdCode='" + category + "' "}, test::AccountCheck("1401")},
            .match = "cRdCode = N'" + category + "' And isnull(cInvcCode,N'') = N''",
            .write = write,
            .stored = Stored(category, "1401"),
            .storedName = category};
}

TEST(OppositeSettingsAllocation, Edit) {
    FailEveryAllocation(
        {.name = "ClsOppSubject EDIT",
         .proc = "EDIT",
         .setup = "INSERT INTO rd_style (cRdCode) VALUES (N'1'), (N'2')\nGO\n"
                  "INSERT INTO code (iyear, ccode, bend) VALUES (2023, N'1401', 1)",
         .restore = "DELETE FROM IA_OppHead\nGO\n"
                    "INSERT INTO IA_OppHead (cRdCode, cOppHead, iYear) VALUES (N'1', N'1402', 2023)",
         .contents = {"select cRdCode, cOppHead, iYear from IA_OppHead"},
         .run = test::TransactOf<kovra::ClsOppSubject>(test::Request("EDIT", rows)),
         .rules = [](Play& play) {
             play.Put("1", Stored("1", "1402"));
             return test::PlaySettingsCall(play, [&] {
                 return PlaySettings(play, {Row("1", "Update IA_OppHead Set"), Row("2", "INSERT INTO IA_OppHead")});
             });
         }});
}

} // namespace
} // namespace opposite_settings_allocation
