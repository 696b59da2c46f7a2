#include "ClsPriceJustVou/ClsPriceJustVou.h"

#include "tests/faults/DisturbEveryOperation.h"
#include "tests/support/Import.h"
#include "tests/support/rules/PriceRules.h"

#include <gtest/gtest.h>

namespace price_adjustments_faults {
namespace {

using test::CallMarks;
using test::DisturbEveryOperation;
using test::Play;
using test::PriceDocument;
using test::PriceRules;

constexpr const char* setup = R"(INSERT INTO AccInformation (cSysID, cName, cValue) VALUES
(N'AA', N'iStrsQuanDecDgt', N'2'), (N'AA', N'iStrsPriDecDgt', N'4'), (N'ca', N'dCAFirstDate', N'2023-01-01'),
(N'ca', N'bRLOrST', N'1')
GO
INSERT INTO GL_mend (iyear, iperiod, iYPeriod, bflag_IA) VALUES (2022, 12, 202212, 1), (2023, 1, 202301, 0)
GO
INSERT INTO QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) VALUES (N'001', 2023, 1, '2023-01-01', '2023-01-30')
GO
INSERT INTO Warehouse (cWhCode, cWhValueStyle) VALUES (N'03', N'计划价法')
GO
INSERT INTO inventory (cInvCode, cValueType) VALUES (N'1004', N'计划价法'), (N'1007', N'计划价法')
GO
INSERT INTO InvCheckFreeIA870 (cInvCode) VALUES (N'1004'), (N'1007')
GO
INSERT INTO Ia_subsidiary (iYear, iMonth, cVouType, dVouDate, cWhCode, cInvCode, iAInQuantity, iAInPrice) VALUES
(2023, 0, N'34', '2022-12-31', N'03', N'1004', 100, 2500)
)";

std::string SetupBy(const std::string& valuation) {
    return std::string(setup) +
           "GO\nINSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'IA', N'cValueStyle', N'" + valuation +
           "')";
}

std::string Document(const PriceDocument& document) {
    std::string xml = "<row><header><ID>" + document.ID + "</ID><cMaker>" + document.cMaker + "</cMaker><cAccounter>" +
                      document.cAccounter + "</cAccounter><dCJVDate>2023-01-15</dCJVDate></header><body>";
    for (const test::PriceRow& row : document.rows) {
        xml += "<entry><cInvCode>" + row.item + "</cInvCode><iCJVACost>" + row.price + "</iCJVACost></entry>";
    }
    return xml + "</body></row>";
}

std::string Documents(const std::vector<PriceDocument>& documents) {
    std::string xml;
    for (const PriceDocument& document : documents) {
        xml += Document(document);
    }
    return xml;
}

void DisturbEveryOperationOf(const std::string& name, const std::string& valuation,
                             const std::vector<PriceDocument>& documents) {
    DisturbEveryOperation(
        {.name = "ClsPriceJustVou " + name,
         .proc = "ADD",
         .setup = SetupBy(valuation),
         .restore = test::priceRestore,
         .contents = test::priceContents,
         .run = test::TransactOf<kovra::ClsPriceJustVou>(test::Request("ADD", Documents(documents))),
         .rules = [&](Play& play) { return PriceRules(play, valuation == "按存货核算").Transact(documents); }});
}

const test::PriceRow item1004{.item = "1004", .price = "26.5", .stored = "26.5000000000", .adjusted = "150"};
const test::PriceRow item1007{.item = "1007", .price = "0.6", .stored = "0.6000000000", .adjusted = "0"};

TEST(PriceAdjustmentsFaults, AddSavesAndPosts) {
    // The second document has no work table, unless the first one stopped before it dropped it.
    DisturbEveryOperationOf("ADD", "按存货核算",
                            {{.ID = "P1", .cMaker = "", .cAccounter = "王会计", .rows = {item1004, item1007}},
                             {.ID = "P2", .cMaker = "李工", .cAccounter = "", .rows = {item1007}}});
}

TEST(PriceAdjustmentsFaults, AddRefusesARow) {
    DisturbEveryOperationOf("ADD, row refused", "按存货核算",
                            {{.ID = "P1",
                              .cMaker = "李工",
                              .cAccounter = "",
                              .rows = {item1004, {.item = "1007", .price = "x", .refusal = "数字不正确或小于零！"}}}});
}

TEST(PriceAdjustmentsFaults, AddByWarehouse) {
    DisturbEveryOperationOf("ADD by warehouse", "按仓库核算",
                            {{.ID = "P1", .cMaker = "李工", .cAccounter = "", .rows = {item1004}}});
}

/// A request that runs nothing past the frame.
void DisturbEveryOperationOfFrame(const std::string& proc, const std::function<std::string(Play&)>& run) {
    DisturbEveryOperation(
        {.name = "ClsPriceJustVou " + proc,
         .proc = proc,
         .setup = SetupBy("按存货核算"),
         .restore = test::priceRestore,
         .contents = test::priceContents,
         .run = test::TransactOf<kovra::ClsPriceJustVou>(test::Request(proc, "")),
         .rules = [&](Play& play) { return PriceRules(play, true).Frame([&] { return run(play); }); }});
}

TEST(PriceAdjustmentsFaults, Edit) {
    DisturbEveryOperationOfFrame("EDIT", [](Play& play) { return play.Refuse("710", "本模块暂不提供此功能"); });
}

TEST(PriceAdjustmentsFaults, Empty) {
    DisturbEveryOperationOfFrame("EMPTY", [](Play&) { return std::string(); });
}

TEST(PriceAdjustmentsFaults, GetStartEndDate) {
    DisturbEveryOperation({.name = "ClsPriceJustVou GetStartEndDate",
                           .proc = "EMPTY",
                           .setup = SetupBy("按存货核算"),
                           .restore = test::priceRestore,
                           .contents = test::priceContents,
                           .run =
                               [](host::Environment& environment, host::HostLogin& login, const CallMarks& marks) {
                                   kovra::ClsPriceJustVou instance(environment);
                                   instance.Transact(test::Request("EMPTY", ""), &login);
                                   test::TellMade(marks, instance);
                                   host::Value start;
                                   host::Value end;
                                   marks.begin();
                                   std::string told;
                                   try {
                                       EXPECT_TRUE(instance.GetStartEndDate(1, 2023, &start, &end));
                                       told = *start.As<std::string>() + " to " + *end.As<std::string>();
                                   } catch (const host::Error& error) {
                                       told = error.description();
                                   }
                                   marks.returned();
                                   return told;
                               },
                           .rules = [](Play& play) -> std::string {
                               PriceRules rules(play, true);
                               try {
                                   rules.StartEndDate();
                                   return "2023-01-01 to 2023-01-30";
                               } catch (const host::Error& error) {
                                   return error.description();
                               }
                           }});
}

} // namespace
} // namespace price_adjustments_faults
