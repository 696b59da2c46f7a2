#include "bench/RunProgram.h"
#include "bench/Tables.h"

#include <filesystem>

#include <fmt/format.h>

namespace bench {
namespace {

constexpr double megabyte = 1e6;

} // namespace

void PrintPeakTable(std::size_t rows, const std::string& folder, const std::string& program) {
    fmt::print("| import | rows | request MB | peak MB | bound MB |\n|---|---|---|---|---|\n");
    for (const Import& import : Imports()) {
        // The search for repetitions among a voucher's entries grows with their square.
        const std::size_t count = import.className == PriceVouchers().className ? rows / 10 : rows;
        const double peak = RunProgram(PrepareImport(import, count, folder, program), folder + "/result.xml").peak;
        const auto size = static_cast<double>(std::filesystem::file_size(folder + "/request.xml"));
        fmt::print("| {} | {} | {:.1f} | {:.0f} | {:.0f} |\n", import.name, count, size / megabyte, peak / megabyte,
                   (size * 6 + 20 * megabyte) / megabyte);
        std::fflush(stdout);
    }
}

} // namespace bench
