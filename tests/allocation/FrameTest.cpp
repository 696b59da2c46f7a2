#include "ClsInvSubject/ClsInvSubject.h"
#include "tests/allocation/FailEveryAllocation.h"
#include "tests/support/Import.h"
#include "tests/support/rules/SettingRules.h"

#include <gtest/gtest.h>

namespace {

using test::FailEveryAllocation;
using test::Play;

/// A request that the frame answers by itself.
void FailEveryAllocationOf(const std::string& name, const std::string& proc,
                           const std::function<std::string(Play&)>& run) {
    FailEveryAllocation({.name = "frame, " + name,
                         .proc = proc,
                         .setup = "",
                         .restore = "DELETE FROM IA_HeadSet\nGO\nINSERT INTO IA_HeadSet (cWhCode) VALUES (N'01')",
                         .contents = {"select cWhCode from IA_HeadSet"},
                         .run = test::TransactOf<kovra::ClsInvSubject>(test::Request(proc, "")),
                         .rules =
                             [&](Play& play) {
                                 play.Put("01", R"({"cWhCode":"01"})");
                                 return test::PlaySettingsCall(play, [&] { return run(play); });
                             },
                         .connectionMore = ";Delete Star=Accept"});
}

TEST(FrameAllocation, NoRows) {
    FailEveryAllocationOf("no rows", "ADD", [](Play& play) { return PlaySettings(play, {}); });
}

TEST(FrameAllocation, NotOffered) {
    FailEveryAllocationOf("not offered", "DELETE",
                          [](Play& play) { return play.Refuse("710", "本模块暂不提供此功能！"); });
}

TEST(FrameAllocation, Empty) {
    FailEveryAllocationOf("EMPTY", "EMPTY", [](Play& play) { return test::PlayEmpty(play, "IA_HeadSet"); });
}

} // namespace
