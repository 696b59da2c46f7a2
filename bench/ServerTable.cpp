#include "bench/BareClient.h"
#include "bench/Measure.h"
#include "bench/Middle.h"
#include "bench/Tables.h"
#include "bench/imports/Import.h"
#include "bench/imports/RunImport.h"
#include "refhost/OpenDatabase.h"
#include "refhost/account/Account.h"
#include "refhost/ado/Connection.h"
#include "refhost/ado/ForwardingDatabase.h"
#include "tests/support/TdsServer.h"
#include "tests/support/TestAccount.h"

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <numeric>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <unistd.h>

namespace bench {
namespace {

/// A new account for one run of an import: a database that is made and dropped on a server that is there already, or a
/// server of the tests.
class ServerAccount {
public:
    ServerAccount(const std::string& server, const std::vector<std::string>& statements) : server_(server) {
        if (server.empty()) {
            own_.emplace();
            std::string batches;
            for (const std::string& statement : statements) {
                batches += statement + "\nGO\n";
            }
            own_->Run(batches);
            tds_ = std::make_unique<test::TdsServer>(own_->connectionString(), test::TdsServer::Manners());
            connectionString_ = tds_->ConnectionString();
            return;
        }
        refhost::OpenDatabase(server)->Execute("CREATE DATABASE [" + name_ + "]");
        connectionString_ = server + ";Database=" + name_;
        refhost::Connection connection(refhost::OpenExisting());
        connection.Open(connectionString_, "", "", host::command_option::unspecified);
        refhost::CreateAccount(connection, "001", false);
        for (const std::string& statement : statements) {
            connection.Execute(statement, host::command_option::unspecified);
        }
    }
    ~ServerAccount() {
        try {
            if (!server_.empty()) {
                refhost::OpenDatabase(server_)->Execute("DROP DATABASE [" + name_ + "]");
            }
        } catch (const host::Error& error) {
            fmt::print(stderr, "{} is left behind: {}\n", name_, error.description());
        }
    }
    ServerAccount(const ServerAccount&) = delete;
    ServerAccount& operator=(const ServerAccount&) = delete;

    const std::string& connectionString() const { return connectionString_; }

private:
    static std::string NewName() {
        static int count = 0;
        return "kovra_bench_" + std::to_string(getpid()) + "_" + std::to_string(++count);
    }

    std::string server_;
    std::string name_ = NewName();
    std::optional<test::TestAccount> own_;
    std::unique_ptr<test::TdsServer> tds_;
    std::string connectionString_;
};

/// What one statement took in each way.
struct Triple {
    using Way = std::pair<Time Triple::*, std::function<void()>>;

    Time ours;
    Time direct;
    Time prepared;
};

struct Comparison {
    std::vector<Triple> statements;
    /// Seconds of the processor that the statements took, and the whole import.
    double within = 0;
    double whole = 0;
};

/// Sends each statement of an import three times, one right after another: through the import's own connection, and by
/// bare clients to two servers of the same content. Which comes first is drawn by lot, and what the
/// machine does besides meets all three alike.
class ThreeWays : public refhost::ForwardingDatabase {
public:
    ThreeWays(std::shared_ptr<refhost::Database> inner, BareClient& direct, BareClient& prepared,
              Comparison& comparison)
        : ForwardingDatabase(std::move(inner)), direct_(direct), prepared_(prepared), comparison_(comparison) {}

    refhost::ResultSet Query(std::string_view sql) override {
        refhost::ResultSet result;
        Compare(sql, [&] { result = ForwardingDatabase::Query(sql); });
        return result;
    }
    void Execute(std::string_view sql) override {
        Compare(sql, [&] { ForwardingDatabase::Execute(sql); });
    }

private:
    void Compare(std::string_view sql, const std::function<void()>& run) {
        comparison_.within += MeasureThread([&] { CompareOne(refhost::odbc::ToUtf16(sql), run); }).processor;
    }

    void CompareOne(refhost::odbc::Utf16Text text, const std::function<void()>& run) {
        Triple& triple = comparison_.statements.emplace_back();
        std::array ways = {Triple::Way{&Triple::ours, run},
                           Triple::Way{&Triple::direct, [&] { direct_.Run(text, Way::direct); }},
                           Triple::Way{&Triple::prepared, [&] { prepared_.Run(text, Way::prepared); }}};
        std::ranges::shuffle(ways, order_);
        for (const auto& [time, send] : ways) {
            triple.*time = MeasureThread(send);
        }
    }

    /// The same in every run, and in step with nothing.
    std::minstd_rand order_;
    BareClient& direct_;
    BareClient& prepared_;
    Comparison& comparison_;
};

Comparison Compare(const Import& import, std::size_t rows, const std::string& server) {
    const std::vector<std::string> content = import.account(rows);
    const ServerAccount account(server, content);
    const ServerAccount accountOfDirect(server, content);
    const ServerAccount accountOfPrepared(server, content);
    BareClient direct(accountOfDirect.connectionString());
    BareClient prepared(accountOfPrepared.connectionString());
    const std::string request = import.request(rows);
    Comparison comparison;
    comparison.whole =
        MeasureThread([&] {
            RunImport(import, request, account.connectionString(), [&](const std::string& text) {
                return std::make_unique<ThreeWays>(refhost::OpenExisting()(text), direct, prepared, comparison);
            });
        }).processor;
    return comparison;
}

/// The mean of the middle half, in microseconds: at the ends something else had its turn.
template <class Value> double MiddleMean(const std::vector<Triple>& statements, const Value& value) {
    std::vector<double> values;
    for (const Triple& statement : statements) {
        values.push_back(value(statement));
    }
    std::ranges::sort(values);
    const std::size_t quarter = values.size() / 4;
    const auto at = [&](std::size_t index) { return values.begin() + static_cast<std::ptrdiff_t>(index); };
    return std::accumulate(at(quarter), at(values.size() - quarter), 0.0) /
           static_cast<double>(values.size() - 2 * quarter) * 1e6;
}

/// Microseconds for a statement.
struct ServerRound {
    double direct = 0;
    double prepared = 0;
    /// What the import's connection takes beyond the bare client, and what all else of the import takes.
    double byConnection = 0;
    double byRest = 0;
    double ourProcessor = 0;
    double directProcessor = 0;

    double Added() const { return (byConnection + byRest) / direct * 100; }
};

ServerRound RunRound(const Import& import, std::size_t rows, const std::string& server) {
    const Comparison comparison = Compare(import, rows, server);
    const std::vector<Triple>& all = comparison.statements;
    return {
        .direct = MiddleMean(all, [](const Triple& each) { return each.direct.wall; }),
        .prepared = MiddleMean(all, [](const Triple& each) { return each.prepared.wall; }),
        .byConnection = MiddleMean(all, [](const Triple& each) { return each.ours.wall - each.direct.wall; }),
        .byRest = (comparison.whole - comparison.within) / static_cast<double>(all.size()) * 1e6,
        .ourProcessor = MiddleMean(all, [](const Triple& each) { return each.ours.processor; }),
        .directProcessor = MiddleMean(all, [](const Triple& each) { return each.direct.processor; }),
    };
}

} // namespace

void PrintServerTable(std::size_t rows, int rounds, const std::string& server) {
    fmt::print("| import | rows | direct us | prepared us | the connection adds us | the rest adds us | added | "
               "processor us, direct | the connection |\n|---|---|---|---|---|---|---|---|---|\n");
    for (const Import& import : {InventorySettings(), OppositeSettings(), StandardCostSettings(), OpeningBalances()}) {
        std::vector<ServerRound> all;
        for (int round = 0; round < rounds; ++round) {
            all.push_back(RunRound(import, rows, server));
        }
        const auto middle = [&](double ServerRound::*part) {
            return Middle(all, [&](const ServerRound& round) { return round.*part; });
        };
        fmt::print("| {} | {} | {:.1f} | {:.1f} | {:.1f} | {:.1f} | {:.1f} % | {:.1f} | {:.1f} |\n", import.name, rows,
                   middle(&ServerRound::direct), middle(&ServerRound::prepared), middle(&ServerRound::byConnection),
                   middle(&ServerRound::byRest), Middle(all, [](const ServerRound& round) { return round.Added(); }),
                   middle(&ServerRound::directProcessor), middle(&ServerRound::ourProcessor));
        std::fflush(stdout);
    }
}

} // namespace bench
