#include "ClsKovra/ClsKovra.h"

#include "tests/faults/DisturbEveryOperation.h"
#include "tests/support/Import.h"
#include "tests/support/rules/OpeningRules.h"

#include <vector>

#include <gtest/gtest.h>

namespace opening_balances_faults {
namespace {

using test::CallMarks;
using test::DisturbEveryOperation;
using test::OpeningRow;
using test::OpeningRules;
using test::Play;

constexpr const char* restore = "DELETE FROM Ia_subsidiary";

constexpr const char* contents = "select cWhCode, cInvCode, iAInQuantity, iInCost, iAInPrice, iDebitDifCost, cBatchIA, "
                                 "cName, cVouType, iYear from Ia_subsidiary";

const std::string rows =
    "<row><cWhCode>01</cWhCode><cInvCode>N1</cInvCode><iQuantity>1</iQuantity><iCost>2</iCost><iPrice>2</iPrice></row>"
    "<row><cWhCode>01</cWhCode><cInvCode>A1</cInvCode><iQuantity>-1</iQuantity><iCost>3</iCost><iPrice>-3</iPrice>"
    "<cBatchCode>B1</cBatchCode><dVouDate>2022-12-31</dVouDate><cItem_class>97</cItem_class>"
    "<cItemCode>RD01</cItemCode><cItemCName/><cName/></row>"
    "<row><cWhCode>01</cWhCode><cInvCode>X9</cInvCode><iPrice>1</iPrice></row>"
    "<row><cWhCode>01</cWhCode><cInvCode>N1</cInvCode><iPrice>1</iPrice><dVouDate>2022-12-31</dVouDate>"
    "<cDefine4>soon</cDefine4></row>"
    "<row><cWhCode>02</cWhCode><cInvCode>P1</cInvCode><iQuantity>10</iQuantity><iPrice>30</iPrice></row>"
    "<row><cWhCode>02</cWhCode><cInvCode>P1</cInvCode><iQuantity>0</iQuantity><iPrice>30</iPrice></row>"
    "<row><cWhCode>01</cWhCode><cInvCode>N1</cInvCode><iQuantity>5</iQuantity><iCost>2</iCost><iPrice>10</iPrice>"
    "<dVouDate>2022-12-30</dVouDate></row>";

/// A stored row of one item; the batch and the project's name are JSON.
std::string Stored(const std::string& warehouse, const std::string& item, const std::string& amounts,
                   const std::string& batchAndName) {
    return "{\"cWhCode\":\"" + warehouse + "\",\"cInvCode\":\"" + item + "\"," + amounts + "," + batchAndName +
           ",\"cVouType\":\"34\",\"iYear\":2023}";
}

const std::string neither = R"("cBatchIA":null,"cName":null)";

std::vector<OpeningRow> Rows() {
    return {
        {.warehouse = "01",
         .item = "N1",
         .stored = Stored("01", "N1", R"("iAInQuantity":1,"iInCost":2,"iAInPrice":2,"iDebitDifCost":null)", neither)},
        {.warehouse = "01",
         .item = "A1",
         .hasProject = true,
         .hasDate = true,
         .hasBatch = true,
         .isNegative = true,
         .stored = Stored("01", "A1", R"("iAInQuantity":-1,"iInCost":3,"iAInPrice":-3,"iDebitDifCost":null)",
                          R"("cBatchIA":"B1","cName":"主轴研制")")},
        {.warehouse = "01", .item = "X9", .unknownItem = "存货编码不合法。"},
        {.warehouse = "01", .item = "N1", .badDate = "表头自定义项4日期不合法！", .hasDate = true},
        {.warehouse = "02",
         .item = "P1",
         .averaged = false,
         .planned = true,
         .stored = Stored("02", "P1", R"("iAInQuantity":10,"iInCost":2.5,"iAInPrice":25,"iDebitDifCost":5)", neither)},
        {.warehouse = "02",
         .item = "P1",
         .badAmount = "计划价/售价法不允许导入数量为0的期初数据。",
         .averaged = false,
         .planned = true},
        {.warehouse = "01",
         .item = "N1",
         .hasDate = true,
         .stored = Stored("01", "N1", R"("iAInQuantity":5,"iInCost":2,"iAInPrice":10,"iDebitDifCost":null)", neither)},
    };
}

void DisturbEveryOperationOf(const std::string& proc) {
    DisturbEveryOperation({.name = "ClsKovra " + proc,
                           .proc = proc,
                           .setup = test::openingSetup,
                           .restore = restore,
                           .contents = {contents},
                           .run = test::TransactOf<kovra::ClsKovra>(test::Request(proc, rows)),
                           .rules = [](Play& play) { return OpeningRules(play).Transact(Rows()); }});
}

TEST(OpeningBalancesFaults, Add) { DisturbEveryOperationOf("ADD"); }

TEST(OpeningBalancesFaults, Edit) { DisturbEveryOperationOf("EDIT"); }

TEST(OpeningBalancesFaults, RefusedLedger) {
    DisturbEveryOperation(
        {.name = "ClsKovra ADD, ledger refused",
         .proc = "ADD",
         .setup = std::string(test::openingSetup) +
                  "GO\nINSERT INTO CostJustVouch (ID, cCode, dCJVDate) VALUES (1, N'1', '2023-01-02')",
         .restore = restore,
         .contents = {contents},
         .run = test::TransactOf<kovra::ClsKovra>(test::Request("ADD", rows)),
         .rules = [](Play& play) { return OpeningRules(play).RefusedTransact(); }});
}

/// An unknown item is shown to the user and counts as false; an error is the caller's.
TEST(OpeningBalancesFaults, InvCodeIsTorF) {
    DisturbEveryOperation({.name = "ClsKovra InvCodeIsTorF",
                           .proc = "ADD",
                           .setup = test::openingSetup,
                           .restore = restore,
                           .contents = {contents},
                           .run =
                               [](host::Environment& environment, host::HostLogin& login, const CallMarks& marks) {
                                   kovra::ClsKovra instance(environment);
                                   instance.Transact(test::Request("ADD", ""), &login);
                                   test::TellMade(marks, instance);
                                   marks.begin();
                                   std::string told;
                                   try {
                                       told = instance.InvCodeIsTorF("X9", "bInvBatch") ? "true" : "false";
                                   } catch (const host::Error& error) {
                                       told = error.description();
                                   }
                                   marks.returned();
                                   return told;
                               },
                           .rules = [](Play& play) -> std::string {
                               try {
                                   play.LookUp("SELECT bInvBatch FROM Inventory WHERE cInvCode='X9'");
                                   play.Do("ShowMessage", "该存货没有找到！");
                                   return "false";
                               } catch (const host::Error& error) {
                                   return error.description();
                               }
                           }});
}

} // namespace
} // namespace opening_balances_faults
