#include "ClsKovra/ClsKovra.h"

#include "tests/allocation/FailEveryAllocation.h"
#include "tests/support/Import.h"
#include "tests/support/rules/OpeningRules.h"

#include <gtest/gtest.h>

namespace opening_balances_allocation {
namespace {

using test::FailEveryAllocation;
using test::OpeningRules;
using test::Play;

const std::string rows =
    "<row><cWhCode>01</cWhCode><cInvCode>N1</cInvCode><iQuantity>-1</iQuantity><iCost>2</iCost><iPrice>2</iPrice>"
    "<dVouDate>2022-12-31</dVouDate></row>"
    "<row><cWhCode>02</cWhCode><cInvCode>P1</cInvCode><iQuantity>10</iQuantity><iPrice>30</iPrice></row>";

TEST(OpeningBalancesAllocation, Add) {
    FailEveryAllocation({.name = "ClsKovra ADD",
                         .proc = "ADD",
                         .setup = test::openingSetup,
                         .restore = "DELETE FROM Ia_subsidiary",
                         .contents = {"select cInvCode, iAInQuantity, iAInPrice from Ia_subsidiary"},
                         .run = test::TransactOf<kovra::ClsKovra>(test::Request("ADD", rows)),
                         .rules = [](Play& play) {
                             return OpeningRules(play).Transact(
                                 {{.warehouse = "01",
                                   .item = "N1",
                                   .hasDate = true,
                                   .isNegative = true,
                                   .stored = R"({"cInvCode":"N1","iAInQuantity":-1,"iAInPrice":2})"},
                                  {.warehouse = "02",
                                   .item = "P1",
                                   .averaged = false,
                                   .planned = true,
                                   .stored = R"({"cInvCode":"P1","iAInQuantity":10,"iAInPrice":25})"}});
                         }});
}

} // namespace
} // namespace opening_balances_allocation
