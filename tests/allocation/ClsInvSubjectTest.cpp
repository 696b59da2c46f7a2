#include "ClsInvSubject/ClsInvSubject.h"

#include "tests/allocation/FailEveryAllocation.h"
#include "tests/support/Import.h"
#include "tests/support/rules/SettingRules.h"

#include <gtest/gtest.h>

namespace inventory_settings_allocation {
namespace {

using test::FailEveryAllocation;
using test::Play;

/// Two warehouses, the first of which has a setting already.
constexpr const char* rows = "<row><cWhCode>01</cWhCode><cInvHead>1401</cInvHead></row>"
                             "<row><cWhCode>02</cWhCode><cInvHead>1401</cInvHead></row>";

test::SettingRow Row(const std::string& warehouse) {
    return {.key = "仓库编码：" + warehouse + "， ， ",
            .checks = {{"From Warehouse  Where cWhCode='" + warehouse + "' "}, test::AccountCheck("1401")},
            .match = "Where cWhCode = '" + warehouse + "' And iyear = 2023"};
}

TEST(InventorySettingsAllocation, Add) {
    FailEveryAllocation(
        {.name = "ClsInvSubject ADD",
         .proc = "ADD",
         .setup = "INSERT INTO Warehouse (cWhCode) VALUES (N'01'), (N'02')\nGO\n"
                  "INSERT INTO code (iyear, ccode, bend) VALUES (2023, N'1401', 1)",
         .restore = "DELETE FROM IA_HeadSet\nGO\n"
                    "INSERT INTO IA_HeadSet (cWhCode, cInvHead, iYear) VALUES (N'01', N'1401', 2023)",
         .contents = {"select cWhCode, cInvHead, iYear from IA_HeadSet"},
         .run = test::TransactOf<kovra::ClsInvSubject>(test::Request("ADD", rows)),
         .rules = [](Play& play) {
             play.Put("01", R"({"cWhCode":"01","cInvHead":"1401","iYear":2023})");
             test::SettingRow added = Row("02");
             added.write = "INSERT INTO IA_HeadSet";
             added.stored = R"({"cWhCode":"02","cInvHead":"1401","iYear":2023})";
             added.storedName = "02";
             return test::PlaySettingsCall(play, [&] { return PlaySettings(play, {Row("01"), added}); });
         }});
}

} // namespace
} // namespace inventory_settings_allocation
