#include "bench/Measure.h"
#include "bench/Middle.h"
#include "bench/RunProgram.h"
#include "bench/Tables.h"
#include "bench/imports/FileAccount.h"
#include "bench/imports/RunImport.h"
#include "bench/imports/SystemCalls.h"
#include "refhost/OpenDatabase.h"

#include <fstream>
#include <vector>

#include <fmt/format.h>

namespace bench {
namespace {

struct Run {
    Time time;
    SystemCalls calls;
};

struct FileRound {
    Run each;
    Run grouped;
    Time script;
};

Run RunTransact(const Import& import, std::size_t rows, const std::string& folder, const std::string& request,
                const std::string& commit) {
    const FileAccount account(folder);
    account.Fill(import.account(rows));
    const std::string connectionString = account.connectionString() + ";Commit=" + commit;
    const SystemCalls before = CountedSystemCalls();
    const Time time = Measure([&] { RunImport(import, request, connectionString, refhost::OpenExisting()); });
    return {time, CountedSystemCalls() - before};
}

/// What the script says that its import took.
Time RunScript(const std::string& folder, const std::string& script) {
    const std::string said = folder + "/script.txt";
    RunProgram({"/usr/bin/python3", script, folder + "/script.db", folder + "/request.xml"}, said);
    Time time;
    std::ifstream(said) >> time.wall >> time.processor;
    return time;
}

void PrintRun(const Import& import, std::size_t rows, const std::vector<FileRound>& all, const char* commit,
              Run FileRound::*run) {
    const SystemCalls calls = (all.front().*run).calls;
    const auto each = [&](std::int64_t count) { return static_cast<double>(count) / static_cast<double>(rows); };
    const auto time = [&](double Time::*clock) {
        return Middle(all, [&](const FileRound& round) { return (round.*run).time.*clock * 1000; });
    };
    const auto ofScript = [&](double Time::*clock) {
        return Middle(all, [&](const FileRound& round) { return (round.*run).time.*clock / (round.script.*clock); });
    };
    fmt::print("| {}, Commit={} | {} | {:.0f} | {:.0f} | {:.2f} | {:.2f} | {:.2f} | {:.2f} | {:.1f} | {:.2f} | {} |\n",
               import.name, commit, rows, time(&Time::wall), time(&Time::processor), ofScript(&Time::wall),
               ofScript(&Time::processor), each(calls.locks), each(calls.writes), each(calls.bytesWritten) / 1024,
               each(calls.reads), calls.syncs);
}

} // namespace

void PrintFileTable(std::size_t rows, int rounds, const std::string& folder, const std::string& script) {
    const Import import = InventorySettings();
    const std::string request = import.request(rows);
    std::ofstream(folder + "/request.xml") << request;
    std::vector<FileRound> all;
    for (int round = 0; round < rounds; ++round) {
        all.push_back({RunTransact(import, rows, folder, request, "Each"),
                       RunTransact(import, rows, folder, request, "Grouped"), RunScript(folder, script)});
    }
    fmt::print("| import into a file | rows | ms | processor ms | of the script's ms | of its processor ms | "
               "fcntl a row | pwrite a row | KB a row | pread a row | fdatasync |\n"
               "|---|---|---|---|---|---|---|---|---|---|---|\n");
    PrintRun(import, rows, all, "Each", &FileRound::each);
    PrintRun(import, rows, all, "Grouped", &FileRound::grouped);
    const auto ofScript = [&](double Time::*clock) {
        return Middle(all, [&](const FileRound& round) { return round.script.*clock * 1000; });
    };
    fmt::print("| {}, by a script | {} | {:.0f} | {:.0f} | | | | | | | |\n", import.name, rows, ofScript(&Time::wall),
               ofScript(&Time::processor));
}

} // namespace bench
