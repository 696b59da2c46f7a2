#include "bench/Apart.h"
#include "bench/Measure.h"
#include "bench/Middle.h"
#include "bench/RecordStatements.h"
#include "bench/Tables.h"
#include "bench/imports/HandAccount.h"
#include "bench/imports/MemoryAccount.h"
#include "bench/imports/RawStatements.h"
#include "bench/imports/RunImport.h"

#include <vector>

#include <fmt/format.h>

namespace bench {
namespace {

/// Seconds of the processor for the three ways of one import.
struct MemoryRound {
    double transact = 0;
    double replay = 0;
    double hand = 0;
};

double RunTransact(const Import& import, std::size_t rows, const std::string& request) {
    MemoryAccount account;
    account.Fill(import.account(rows));
    return Measure([&] { RunImport(import, request, MemoryAccount::connectionString, account.Opener()); }).processor;
}

double RunReplay(const Import& import, std::size_t rows, const Texts& statements) {
    MemoryAccount account;
    account.Fill(import.account(rows));
    RawStatements raw(account.database().Handle());
    AddTranslated(raw, account.database(), statements);
    return Measure([&] { raw.Run(); }).processor;
}

double RunHandWritten(const Import& import, std::size_t rows) {
    if (import.addHandWritten == nullptr) {
        return 0;
    }
    MemoryAccount account;
    account.Fill(import.account(rows));
    const HandAccount hand(account.database().Handle());
    if (import.handIndexes != nullptr) {
        refhost::sql::Run(hand.Handle(), import.handIndexes);
    }
    RawStatements raw(hand.Handle());
    for (std::size_t row = 0; row < rows; ++row) {
        import.addHandWritten(raw, row);
    }
    return Measure([&] { raw.Run(); }).processor;
}

/// Each in a process of its own, as a program runs: none finds its memory in the disorder that another left.
MemoryRound RunRound(const Import& import, std::size_t rows, const std::string& request, const Texts& statements) {
    return {.transact = SecondsApart([&] { return RunTransact(import, rows, request); }),
            .replay = SecondsApart([&] { return RunReplay(import, rows, statements); }),
            .hand = SecondsApart([&] { return RunHandWritten(import, rows); })};
}

std::string Ratio(double ratio) { return fmt::format("{:.2f}", ratio); }

} // namespace

void PrintMemoryTable(std::size_t rows, int rounds, const std::string& className) {
    fmt::print("| import | rows | statements a row | Transact ms | replay ms | by hand ms | Transact / replay | "
               "replay / by hand |\n|---|---|---|---|---|---|---|---|\n");
    for (const Import& import :
         {InventorySettings(), OppositeSettings(), StandardCostSettings(), OpeningBalances(), Provisions()}) {
        if (!className.empty() && className != import.className) {
            continue;
        }
        const std::string request = import.request(rows);
        const Texts statements = RecordStatements(import, rows, request);
        std::vector<MemoryRound> all;
        for (int round = 0; round < rounds; ++round) {
            all.push_back(RunRound(import, rows, request, statements));
        }
        const auto milliseconds = [&](double MemoryRound::*part) {
            return Middle(all, [&](const MemoryRound& round) { return round.*part * 1000; });
        };
        const double byHand = milliseconds(&MemoryRound::hand);
        fmt::print(
            "| {} | {} | {:.1f} | {:.0f} | {:.0f} | {} | {} | {} |\n", import.name, rows,
            static_cast<double>(statements.size()) / static_cast<double>(rows), milliseconds(&MemoryRound::transact),
            milliseconds(&MemoryRound::replay), byHand > 0 ? fmt::format("{:.0f}", byHand) : "-",
            Ratio(Middle(all, [](const MemoryRound& round) { return round.transact / round.replay; })),
            byHand > 0 ? Ratio(Middle(all, [](const MemoryRound& round) { return round.replay / round.hand; })) : "-");
        std::fflush(stdout);
    }
}

} // namespace bench
