#include "tests/allocation/FailEveryAllocation.h"
#include "tests/support/rules/PriceRules.h"

#include <gtest/gtest.h>

namespace price_adjustments_allocation {
namespace {

using test::FailEveryAllocation;

// The work table that every call makes anew has the database plan every statement again: its allocations are failed
// in the database's own test.
TEST(PriceAdjustmentsAllocation, Add) {
    FailEveryAllocation(
        test::PriceCall("ADD", "按存货核算",
                        {{.ID = "P1",
                          .cMaker = "李工",
                          .cAccounter = "王会计",
                          .rows = {{.item = "1004", .price = "26.5", .stored = "26.5000000000", .adjusted = "150"}}}}),
        /*inDatabase=*/false);
}

} // namespace
} // namespace price_adjustments_allocation
