#include "ClsKovraProof/ClsKovraProof.h"

#include "tests/faults/DisturbEveryOperation.h"
#include "tests/support/Import.h"
#include "tests/support/rules/ProvisionRules.h"

#include <vector>

#include <gtest/gtest.h>

namespace provisions_faults {
namespace {

using test::DisturbEveryOperation;
using test::Play;
using test::ProvisionDoc;
using test::ProvisionRules;

constexpr const char* setup = "INSERT INTO CurrentStock (cInvCode, iQuantity) VALUES (N'1001', 5), (N'1004', 1)";

constexpr const char* restore = R"(DELETE FROM IA_DecReady
GO
DELETE FROM IA_DecReadys
GO
INSERT INTO IA_DecReady (ID, cDecCode) VALUES (1, N'OLD1'), (2, N'OLD2')
GO
INSERT INTO IA_DecReadys (ID, cInvCode) VALUES (1, N'old1'), (2, N'old2')
)";

constexpr const char* heads = "select cDecCode from IA_DecReady";
constexpr const char* bodies = "select cInvCode from IA_DecReadys";

std::string Doc(const std::string& number, const std::string& entries, const std::string& vouchtype = "48") {
    return "<row><header><Deccode>" + number + "</Deccode><vouchtype>" + vouchtype + "</vouchtype></header><body>" +
           entries + "</body></row>";
}

std::string Entry(const std::string& item, const std::string& iQuantity = {}) {
    return "<entry><cInvCode>" + item + "</cInvCode><iQuantity>" + iQuantity +
           "</iQuantity><iThisPrice>1.5</iThisPrice></entry>";
}

std::string Rows() {
    return Doc("P1", Entry("1001", "3") + Entry("1002")) + "<row/>" + Doc("OLD1", Entry("1003")) +
           Doc("P2", Entry("1003"), "49") + Doc("OLD2", Entry("1003"), "49") + Doc("P3", Entry("1004", "2")) +
           Doc("P4", Entry("1005"));
}

const std::vector<ProvisionDoc> docs = {
    {.number = "P1", .items = {"1001", "1002"}},
    {.number = "", .noHeader = "没有header节点"},
    {.number = "OLD1", .storedItem = "old1", .items = {"1003"}},
    {.number = "P2", .badType = "vouchtype单据类型节点值非法!"},
    {.number = "OLD2", .badType = "vouchtype单据类型节点值非法!", .storedItem = "old2"},
    {.number = "P3", .saveRefusal = "存货1004现存量不足;"},
    {.number = "P4", .items = {"1005"}},
};

void DisturbEveryOperationOf(const std::string& proc) {
    DisturbEveryOperation({.name = "ClsKovraProof " + proc,
                           .proc = proc,
                           .setup = setup,
                           .restore = restore,
                           .contents = {heads, bodies},
                           .run = test::TransactOf<kovra::ClsKovraProof>(test::Request(proc, Rows())),
                           .rules = [&](Play& play) { return ProvisionRules(play, proc == "EDIT").Transact(docs); }});
}

TEST(ProvisionsFaults, Add) { DisturbEveryOperationOf("ADD"); }

TEST(ProvisionsFaults, Edit) { DisturbEveryOperationOf("EDIT"); }

} // namespace
} // namespace provisions_faults
