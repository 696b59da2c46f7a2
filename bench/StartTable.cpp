#include "bench/RunProgram.h"
#include "bench/Tables.h"

#include <algorithm>
#include <vector>

#include <fmt/format.h>

namespace bench {

void PrintStartTable(const std::string& folder, const std::string& program) {
    constexpr std::size_t rounds = 21;
    const Import import = InventorySettings();
    std::vector<Time> times;
    for (std::size_t round = 0; round < rounds; ++round) {
        times.push_back(RunProgram(PrepareImport(import, 1, folder, program), folder + "/result.xml").time);
    }
    const auto middle = [&](double Time::*part) {
        std::ranges::nth_element(times, times.begin() + rounds / 2, {}, part);
        return times[rounds / 2].*part * 1000;
    };
    fmt::print("| kovra transact of one row | ms | processor ms | bound ms |\n|---|---|---|---|\n"
               "| {}, on a file | {:.1f} | {:.1f} | 10 |\n",
               import.name, middle(&Time::wall), middle(&Time::processor));
}

} // namespace bench
