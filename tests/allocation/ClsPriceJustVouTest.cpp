#include "ClsPriceJustVou/ClsPriceJustVou.h"

#include "tests/allocation/FailEveryAllocation.h"
#include "tests/support/Import.h"
#include "tests/support/rules/PriceRules.h"

#include <gtest/gtest.h>

namespace price_adjustments_allocation {
namespace {

using test::FailEveryAllocation;
using test::Play;
using test::PriceRules;

constexpr const char* setup = R"(INSERT INTO AccInformation (cSysID, cName, cValue) VALUES
(N'IA', N'cValueStyle', N'按存货核算'), (N'AA', N'iStrsQuanDecDgt', N'2'), (N'AA', N'iStrsPriDecDgt', N'4'),
(N'ca', N'dCAFirstDate', N'2023-01-01'), (N'ca', N'bRLOrST', N'1')
GO
INSERT INTO GL_mend (iyear, iperiod, iYPeriod, bflag_IA) VALUES (2022, 12, 202212, 1), (2023, 1, 202301, 0)
GO
INSERT INTO QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) VALUES (N'001', 2023, 1, '2023-01-01', '2023-01-30')
GO
INSERT INTO inventory (cInvCode, cValueType) VALUES (N'1004', N'计划价法'), (N'1007', N'计划价法')
GO
INSERT INTO InvCheckFreeIA870 (cInvCode) VALUES (N'1004'), (N'1007')
GO
INSERT INTO Ia_subsidiary (iYear, iMonth, cVouType, dVouDate, cWhCode, cInvCode, iAInQuantity, iAInPrice) VALUES
(2023, 0, N'34', '2022-12-31', N'03', N'1004', 100, 2500)
)";

constexpr const char* rows = "<row><header><ID>P1</ID><cMaker>李工</cMaker><cAccounter>王会计</"
                             "cAccounter><dCJVDate>2023-01-15</dCJVDate></header>"
                             "<body><entry><cInvCode>1004</cInvCode><iCJVACost>26.5</iCJVACost></entry></body></row>";

// The work table that every call makes anew has the database plan every statement again: its allocations are failed
// in the database's own test.
TEST(PriceAdjustmentsAllocation, Add) {
    FailEveryAllocation(
        {.name = "ClsPriceJustVou ADD",
         .proc = "ADD",
         .setup = setup,
         .restore = test::priceRestore,
         .contents = test::priceContents,
         .run = test::TransactOf<kovra::ClsPriceJustVou>(test::Request("ADD", rows)),
         .rules =
             [](Play& play) {
                 return PriceRules(play, true)
                     .Transact(
                         {{.ID = "P1",
                           .cMaker = "李工",
                           .cAccounter = "王会计",
                           .rows = {{.item = "1004", .price = "26.5", .stored = "26.5000000000", .adjusted = "150"}}}});
             }},
        /*inDatabase=*/false);
}

} // namespace
} // namespace price_adjustments_allocation
