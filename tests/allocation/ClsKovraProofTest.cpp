#include "ClsKovraProof/ClsKovraProof.h"

#include "tests/allocation/FailEveryAllocation.h"
#include "tests/support/Import.h"
#include "tests/support/rules/ProvisionRules.h"

#include <gtest/gtest.h>

namespace provisions_allocation {
namespace {

using test::FailEveryAllocation;
using test::Play;
using test::ProvisionRules;

std::string Doc(const std::string& number, const std::string& item) {
    return "<row><header><Deccode>" + number + "</Deccode><vouchtype>48</vouchtype></header><body><entry><cInvCode>" +
           item + "</cInvCode></entry></body></row>";
}

TEST(ProvisionsAllocation, Edit) {
    FailEveryAllocation(
        {.name = "ClsKovraProof EDIT",
         .proc = "EDIT",
         .setup = "",
         .restore = "DELETE FROM IA_DecReady\nGO\nDELETE FROM IA_DecReadys\nGO\n"
                    "INSERT INTO IA_DecReady (ID, cDecCode) VALUES (1, N'OLD1')\nGO\n"
                    "INSERT INTO IA_DecReadys (ID, cInvCode) VALUES (1, N'old1')",
         .contents = {"select cDecCode from IA_DecReady", "select cInvCode from IA_DecReadys"},
         .run = test::TransactOf<kovra::ClsKovraProof>(test::Request("EDIT", Doc("OLD1", "1003"))),
         .rules = [](Play& play) {
             return ProvisionRules(play, true).Transact({{.number = "OLD1", .storedItem = "old1", .items = {"1003"}}});
         }});
}

} // namespace
} // namespace provisions_allocation
