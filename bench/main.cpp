#include "bench/Tables.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr const char* usage =
    "usage: kovra-bench memory ROWS ROUNDS [CLASS] | vouchers ROWS | file ROWS ROUNDS FOLDER SCRIPT | "
    "server ROWS ROUNDS [CONNECTION] | peak ROWS FOLDER KOVRA | start FOLDER KOVRA\n";

void Run(const std::vector<std::string>& words) {
    const std::string_view table = words.empty() ? "" : words[0];
    const std::size_t rows = words.size() > 1 && table != "start" ? std::stoul(words[1]) : 0;
    if (table == "memory" && (words.size() == 3 || words.size() == 4)) {
        bench::PrintMemoryTable(rows, std::stoi(words[2]), words.size() == 4 ? words[3] : std::string());
    } else if (table == "vouchers" && words.size() == 2) {
        bench::PrintVoucherTable(rows);
    } else if (table == "file" && words.size() == 5) {
        bench::PrintFileTable(rows, std::stoi(words[2]), words[3], words[4]);
    } else if (table == "server" && (words.size() == 3 || words.size() == 4)) {
        bench::PrintServerTable(rows, std::stoi(words[2]), words.size() == 4 ? words[3] : std::string());
    } else if (table == "peak" && words.size() == 4) {
        bench::PrintPeakTable(rows, words[2], words[3]);
    } else if (table == "start" && words.size() == 3) {
        bench::PrintStartTable(words[1], words[2]);
    } else {
        std::fputs(usage, stderr);
        std::exit(2);
    }
}

} // namespace

int main(int count, char** arguments) {
    try {
        Run({arguments + 1, arguments + count});
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kovra-bench: %s\n", error.what());
        return 1;
    }
}
