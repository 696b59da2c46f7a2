#include "bench/ImportBench.h"

#include "bench/MemoryAccount.h"
#include "bench/Replay.h"
#include "cli/Classes.h"
#include "refhost/Environment.h"
#include "refhost/eai/Login.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include <benchmark/benchmark.h>

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* loginXml =
    "<login QxDbName=\"Provider=KovraAccount;Data Source=:memory:\" cAcc_Id=\"001\" cIYear=\"2023\" cUserId=\"demo\" "
    "cUserName=\"王会计\" cUserPassWord=\"\" CurDate=\"2023-01-15\" cServer=\"\" cSerial=\"\" iMonth=\"1\" "
    "iStartPeriod=\"1\"/>";

double Seconds(Clock::time_point begin) { return std::chrono::duration<double>(Clock::now() - begin).count(); }

/// Runs the request on an account; throws unless every row was accepted.
double RunTransact(const Import& import, const std::string& request, const refhost::DatabaseOpener& opener) {
    refhost::Environment environment(opener);
    refhost::Login login(loginXml, environment);
    const auto importClass = std::ranges::find(cli::ImportClasses(), import.className, &cli::ImportClass::name);
    const Clock::time_point begin = Clock::now();
    const std::string result = importClass->transact(environment, request, &login);
    const double seconds = Seconds(begin);
    if (result.find("code=\"0\"") == std::string::npos || result.find("code=\"101\"") != std::string::npos ||
        result.find("code=\"999\"") != std::string::npos || result.starts_with("<error")) {
        throw std::runtime_error("the request is not accepted: " + result.substr(0, 300));
    }
    return seconds;
}

double RunReplay(const Import& import, std::size_t rows, const std::vector<std::string>& statements) {
    MemoryAccount account;
    account.Fill(import.account(rows));
    Replay replay(account.database(), statements);
    const Clock::time_point begin = Clock::now();
    replay.Run();
    return Seconds(begin);
}

void Measure(benchmark::State& state, const Import& import, std::size_t rows) {
    const std::string request = import.request(rows);
    std::vector<std::string> statements;
    {
        MemoryAccount account;
        account.Fill(import.account(rows));
        RunTransact(import, request, account.RecordingOpener(statements));
    }
    double transact = 0;
    double replay = 0;
    for (auto _ : state) {
        MemoryAccount account;
        account.Fill(import.account(rows));
        const double seconds = RunTransact(import, request, account.Opener());
        state.SetIterationTime(seconds);
        transact += seconds;
        replay += RunReplay(import, rows, statements);
    }
    state.counters["rows/s"] =
        benchmark::Counter(static_cast<double>(rows) * static_cast<double>(state.iterations()) / transact);
    state.counters["statements"] = static_cast<double>(statements.size());
    state.counters["ratio"] = transact / replay;
}

} // namespace

void RegisterImport(const std::string& name, const Import& import, const std::vector<std::size_t>& rows) {
    for (const std::size_t count : rows) {
        benchmark::RegisterBenchmark((name + "/" + std::to_string(count)).c_str(),
                                     [import, count](benchmark::State& state) { Measure(state, import, count); })
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
}

} // namespace bench
