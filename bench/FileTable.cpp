#include "bench/Measure.h"
#include "bench/Tables.h"
#include "bench/imports/FileAccount.h"
#include "bench/imports/RunImport.h"
#include "bench/imports/SystemCalls.h"
#include "refhost/OpenDatabase.h"

#include <fmt/format.h>

namespace bench {

void PrintFileTable(std::size_t rows, const std::string& folder) {
    const Import import = InventorySettings();
    const std::string request = import.request(rows);
    fmt::print("| import into a file | rows | Transact ms | processor ms | fcntl a row | pwrite a row | KB a row | "
               "pread a row | fdatasync |\n|---|---|---|---|---|---|---|---|---|\n");
    for (const std::string commit : {"Each", "Grouped"}) {
        const FileAccount account(folder);
        account.Fill(import.account(rows));
        const std::string connectionString = account.connectionString() + ";Commit=" + commit;
        const SystemCalls before = CountedSystemCalls();
        const Time time = Measure([&] { RunImport(import, request, connectionString, refhost::OpenExisting()); });
        const SystemCalls calls = CountedSystemCalls() - before;
        const auto each = [&](std::int64_t count) { return static_cast<double>(count) / static_cast<double>(rows); };
        fmt::print("| {}, Commit={} | {} | {:.0f} | {:.0f} | {:.2f} | {:.2f} | {:.1f} | {:.2f} | {} |\n", import.name,
                   commit, rows, time.wall * 1000, time.processor * 1000, each(calls.locks), each(calls.writes),
                   each(calls.bytesWritten) / 1024, each(calls.reads), calls.syncs);
    }
}

} // namespace bench
