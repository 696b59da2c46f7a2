// How much memory a request takes at once, in bytes that are allocated: the same on every machine. SQLite's and
// libxml2's own are not in it; they do not grow with the request.

#include "bench/imports/Import.h"
#include "bench/imports/MemoryAccount.h"
#include "bench/imports/RunImport.h"
#include "tests/cost/CountingNew.h"
#include "tests/support/Sanitized.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace test_cost {
namespace {

/// The most that a request may have allocated beside its own text, in times its bytes.
struct PeakBound {
    bench::Import (*import)();
    double times;
    /// Where the sizes begin: from here on what grows to a limit of its own, such as statements that are kept, counts
    /// little.
    std::size_t rows = 1000;
};

void PrintTo(const PeakBound& bound, std::ostream* out) { *out << bound.import().name; }

// As counted and a twentieth more, so that nothing is held twice unnoticed: the request's text once more would be one
// time, its document three to four. The program `kovra` may take six times a request of 100,000 rows (10,000 of price
// vouchers) and 20 MB of the system, which bench/PeakTable.cpp measures: what is allocated here and not touched counts
// there as little as SQLite's own memory does here, and 7 of the 20 MB are left to it.
const PeakBound peakBounds[] = {
    {bench::InventorySettings, 4.9}, {bench::OppositeSettings, 6.0}, {bench::StandardCostSettings, 4.9},
    {bench::OpeningBalances, 5.3},   {bench::Provisions, 4.3},       {bench::PriceVouchers, 15.3, 2000},
};

struct Peak {
    /// Bytes of the request, and the most that were allocated beside it.
    double request = 0;
    double allocated = 0;
};

Peak PeakOf(const bench::Import& import, std::size_t rows) {
    const std::string request = import.request(rows);
    bench::MemoryAccount account;
    account.Fill(import.account(rows));
    const std::int64_t before = LiveBytes();
    BeginPeak();
    RunImport(import, request, bench::MemoryAccount::connectionString, account.Opener());
    return {static_cast<double>(request.size()), static_cast<double>(PeakBytes() - before)};
}

class PeakCost : public testing::TestWithParam<PeakBound> {};

TEST_P(PeakCost, StaysWithinItsBound) {
    if (test::sanitized) {
        GTEST_SKIP() << "a sanitizer's blocks have sizes of their own";
    }
    const bench::Import import = GetParam().import();
    // What every request takes, such as prepared statements.
    const Peak one = PeakOf(import, 1);
    // Documents take memory in pieces, each half as large again as the one before, which the system gives them as far
    // as they use it. Of several sizes the least is that of a request that fills its last piece.
    double least = std::numeric_limits<double>::max();
    const std::size_t first = GetParam().rows;
    for (std::size_t rows = first; rows <= first * 8 / 5; rows += first / 5) {
        const Peak many = PeakOf(import, rows);
        least = std::min(least, (many.allocated - one.allocated) / (many.request - one.request));
    }
    EXPECT_LE(least, GetParam().times);
    std::printf("%s: %.2f times the request (bound %.1f)\n", import.name.c_str(), least, GetParam().times);
}

INSTANTIATE_TEST_SUITE_P(Imports, PeakCost, testing::ValuesIn(peakBounds),
                         [](const auto& parameter) { return parameter.param.import().className; });

} // namespace
} // namespace test_cost
