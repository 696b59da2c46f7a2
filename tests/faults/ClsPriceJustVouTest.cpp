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

void DisturbEveryOperationOf(const std::string& name, const std::string& valuation,
                             const std::vector<PriceDocument>& documents) {
    DisturbEveryOperation(test::PriceCall(name, valuation, documents));
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
         .setup = test::PriceSetup("按存货核算"),
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
                           .setup = test::PriceSetup("按存货核算"),
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
