#include "ClsInvSubject/ClsInvSubject.h"

#include "tests/faults/SettingsCalls.h"

#include <gtest/gtest.h>

namespace inventory_settings_faults {
namespace {

using test::AccountCheck;
using test::CheckedCode;
using test::SettingRow;

constexpr const char* setup = R"(INSERT INTO Warehouse (cWhCode) VALUES (N'01'), (N'02'), (N'03')
GO
INSERT INTO inventoryclass (cInvCCode) VALUES (N'C1')
GO
INSERT INTO inventory (cInvCode, bService, bInvType, bPTOModel) VALUES (N'A1', 0, 0, 0), (N'A2', 0, 0, 0)
GO
INSERT INTO code (iyear, ccode, bend) VALUES (2023, N'1401', 1), (2023, N'1402', 1), (2023, N'1403', 1),
(2023, N'1404', 1), (2023, N'1405', 1)
)";

constexpr const char* restore = R"(DELETE FROM IA_HeadSet
GO
INSERT INTO IA_HeadSet (cWhCode, cInvHead, iYear) VALUES (N'02', N'1401', 2023)
GO
INSERT INTO IA_HeadSet (cInvCode, cInvHead, iYear) VALUES (N'A2', N'1401', 2023)
)";

constexpr const char* contents =
    "select cWhCode, cInvCCode, cInvHead, cDifHead, cOutHead, cEnDispHead, czyHead, cInvCode, iYear from IA_HeadSet";

/// A stored row: the texts as JSON, `null` or in quotes.
std::string Stored(const std::string& cWhCode, const std::string& cInvCCode, const std::string& heads,
                   const std::string& cInvCode) {
    return "{\"cWhCode\":" + cWhCode + ",\"cInvCCode\":" + cInvCCode + "," + heads + ",\"cInvCode\":" + cInvCode +
           ",\"iYear\":2023}";
}

const std::string oneHead = R"("cInvHead":"1401","cDifHead":null,"cOutHead":null,"cEnDispHead":null,"czyHead":null)";
const std::string otherHead = R"("cInvHead":"1402","cDifHead":null,"cOutHead":null,"cEnDispHead":null,"czyHead":null)";
const std::string everyHead =
    R"("cInvHead":"1401","cDifHead":"1402","cOutHead":"1403","cEnDispHead":"1404","czyHead":"1405")";

CheckedCode Item(const std::string& code) { return {"From inventory  Where cInvCode='" + code + "' and bService=0"}; }
CheckedCode Class(const std::string& code) { return {"From inventoryclass  Where cInvCCode='" + code + "'"}; }
CheckedCode Warehouse(const std::string& code) { return {"From Warehouse  Where cWhCode='" + code + "' "}; }

SettingRow EveryAccount() {
    return {.key = "仓库编码：01， ， 存货编码：A1",
            .checks = {Item("A1"), Warehouse("01"), AccountCheck("1401"), AccountCheck("1402"), AccountCheck("1403"),
                       AccountCheck("1404"), AccountCheck("1405")},
            .match = "Select AutoID From IA_HeadSet Where cWhCode = '01' And cInvCode = 'A1' And iyear = 2023",
            .write = "INSERT INTO IA_HeadSet",
            .stored = Stored(R"("01")", "null", everyHead, R"("A1")"),
            .storedName = "new item"};
}

SettingRow NewClass() {
    return {.key = "存货分类：C1， ",
            .checks = {Class("C1"), AccountCheck("1401")},
            .match = "Select AutoID From IA_HeadSet Where cInvCCode = 'C1' And iyear = 2023",
            .write = "INSERT INTO IA_HeadSet",
            .stored = Stored("null", R"("C1")", oneHead, "null"),
            .storedName = "new class"};
}

SettingRow NewWarehouse() {
    return {.key = "仓库编码：03， ， ",
            .checks = {Warehouse("03"), AccountCheck("1402")},
            .match = "Where cWhCode = '03' And iyear = 2023",
            .write = "INSERT INTO IA_HeadSet",
            .stored = Stored(R"("03")", "null", otherHead, "null"),
            .storedName = "new warehouse"};
}

/// Both an item and a class.
SettingRow ItemAndClass() { return {.key = "存货分类：C1， 存货编码：A1", .missing = "存货和存货分类不能同时存在。"}; }

SettingRow UnknownAccount() {
    CheckedCode unknown = AccountCheck("9999");
    unknown.refusal = "存货科目编码不合法。";
    return {.key = "仓库编码：01， ， ", .checks = {Warehouse("01"), unknown}};
}

const std::string rows =
    "<row><cWhCode>01</cWhCode><cInvCode>A1</cInvCode><cInvHead>1401</cInvHead><cDifHead>1402</cDifHead>"
    "<cOutHead>1403</cOutHead><cEnDispHead>1404</cEnDispHead><czyHead>1405</czyHead></row>"
    "<row><cInvCCode>C1</cInvCCode><cInvCode>A1</cInvCode><cInvHead>1401</cInvHead></row>"
    "<row><cWhCode>01</cWhCode><cInvHead>9999</cInvHead></row>"
    "<row><cInvCCode>C1</cInvCCode><cInvHead>1401</cInvHead></row>"
    "<row><cWhCode>02</cWhCode><cInvHead>1402</cInvHead></row>"
    "<row><cInvCode>A2</cInvCode><cInvHead>1402</cInvHead></row>"
    "<row><cWhCode>03</cWhCode><cInvHead>1402</cInvHead></row>";

const test::SettingsCalls<kovra::ClsInvSubject> calls{
    .className = "ClsInvSubject",
    .setup = setup,
    .restore = restore,
    .contents = contents,
    .rows = rows,
    .stored = {{"warehouse", Stored(R"("02")", "null", oneHead, "null")},
               {"item", Stored("null", "null", oneHead, R"("A2")")}}};

TEST(InventorySettingsFaults, Add) {
    calls.Disturb("ADD", {EveryAccount(),
                          ItemAndClass(),
                          UnknownAccount(),
                          NewClass(),
                          {.key = "仓库编码：02， ， ",
                           .checks = {Warehouse("02"), AccountCheck("1402")},
                           .match = "Where cWhCode = '02' And iyear = 2023"},
                          {.key = "存货编码：A2",
                           .checks = {Item("A2"), AccountCheck("1402")},
                           .match = "Where cInvCode = 'A2' And iyear = 2023"},
                          NewWarehouse()});
}

TEST(InventorySettingsFaults, Edit) {
    calls.Disturb("EDIT", {EveryAccount(),
                           ItemAndClass(),
                           UnknownAccount(),
                           NewClass(),
                           // Without an item code the update lacks a comma.
                           {.key = "仓库编码：02， ， ",
                            .checks = {Warehouse("02"), AccountCheck("1402")},
                            .match = "Where cWhCode = '02' And iyear = 2023",
                            .write = "Update IA_HeadSet Set",
                            .writeError = "Incorrect syntax near 'iYear'."},
                           {.key = "存货编码：A2",
                            .checks = {Item("A2"), AccountCheck("1402")},
                            .match = "Where cInvCode = 'A2' And iyear = 2023",
                            .write = "Update IA_HeadSet Set",
                            .stored = Stored("null", "null", otherHead, R"("A2")"),
                            .storedName = "item"},
                           NewWarehouse()});
}

TEST(InventorySettingsFaults, Empty) { calls.DisturbEmpty("IA_HeadSet"); }

} // namespace
} // namespace inventory_settings_faults
