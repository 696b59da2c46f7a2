// Spreadsheets of 12 columns, read and checked.

#include "bench/parts/AllocatedBytes.h"
#include "import/rows/Spreadsheet.h"
#include "import/writing/Book.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr std::array columns = {"仓库编码", "存货编码", "数量",     "单价",    "金额",    "入库日期",
                                "批号",     "生产日期", "失效日期", "自由项1", "自由项2", "备注"};

/// What row `row` has in a column: texts, numbers and dates as opening balances have them.
std::string Cell(std::size_t row, std::size_t column) {
    const std::string number = std::to_string(row);
    switch (column) {
    case 0:
        return "0" + std::to_string(row % 9 + 1);
    case 1:
        return "I" + number;
    case 2:
        return std::to_string(row % 100 + 1);
    case 3:
        return "2.5";
    case 4:
        return std::to_string((row % 100 + 1) * 5 / 2) + (row % 2 == 0 ? ".5" : "");
    case 5:
    case 7:
    case 8:
        return "2023-01-05";
    default:
        return "文字" + number;
    }
}

bool IsNumber(std::size_t column) { return column >= 2 && column <= 4; }

/// A file in the system's temporary folder, removed at the end.
class File {
public:
    explicit File(const std::string& name) : path_(std::filesystem::temp_directory_path() / name) {}
    ~File() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    std::string path() const { return path_.string(); }

private:
    std::filesystem::path path_;
};

void WriteWorkbook(const std::string& path, std::size_t rows) {
    importing::Book book(path);
    lxw_worksheet& sheet = book.AddSheet("期初");
    for (std::size_t column = 0; column < columns.size(); ++column) {
        worksheet_write_string(&sheet, 0, static_cast<lxw_col_t>(column), columns[column], nullptr);
        for (std::size_t row = 1; row <= rows; ++row) {
            const std::string cell = Cell(row, column);
            const auto line = static_cast<lxw_row_t>(row);
            const auto at = static_cast<lxw_col_t>(column);
            IsNumber(column) ? worksheet_write_number(&sheet, line, at, std::stod(cell), nullptr)
                             : worksheet_write_string(&sheet, line, at, cell.c_str(), nullptr);
        }
    }
    book.Save();
}

void WriteCsv(const std::string& path, std::size_t rows) {
    std::ofstream file(path, std::ios::binary);
    for (std::size_t row = 0; row <= rows; ++row) {
        for (std::size_t column = 0; column < columns.size(); ++column) {
            file << (column == 0 ? "" : ",") << (row == 0 ? columns[column] : Cell(row, column));
        }
        file << "\r\n";
    }
}

/// Reads the file, with the memory that the sheet keeps, and the most that the process has taken, as counters.
void Read(benchmark::State& state, const std::string& name, void (*write)(const std::string&, std::size_t)) {
    const File file(std::to_string(getpid()) + name);
    const auto rows = static_cast<std::size_t>(state.range(0));
    write(file.path(), rows);
    malloc_trim(0);
    for (auto _ : state) {
        const double before = AllocatedBytes();
        importing::Spreadsheet spreadsheet(file.path(), {}, {}, nullptr);
        const importing::Sheet sheet = spreadsheet.Read({});
        if (sheet.rows.size() != rows || !sheet.faults.empty() || !sheet.rows.front().refusals.empty()) {
            state.SkipWithError("not read");
        }
        state.counters["MB kept"] = (AllocatedBytes() - before) / 1e6;
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["MB at most"] = static_cast<double>(usage.ru_maxrss) / 1e3;
}

void ReadWorkbook(benchmark::State& state) { Read(state, "bench.xlsx", WriteWorkbook); }
void ReadCsv(benchmark::State& state) { Read(state, "bench.csv", WriteCsv); }
BENCHMARK(ReadCsv)->Name("Spreadsheet/csv")->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadWorkbook)->Name("Spreadsheet/xlsx")->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
