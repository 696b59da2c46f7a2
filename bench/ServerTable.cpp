#include "bench/Measure.h"
#include "bench/Middle.h"
#include "bench/RecordStatements.h"
#include "bench/Tables.h"
#include "bench/imports/Import.h"
#include "bench/imports/RunImport.h"
#include "refhost/OpenDatabase.h"
#include "refhost/account/Account.h"
#include "refhost/ado/Connection.h"
#include "refhost/odbc/Handle.h"
#include "refhost/odbc/Statement.h"
#include "refhost/odbc/Utf16.h"
#include "tests/support/TdsServer.h"
#include "tests/support/TestAccount.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <unistd.h>

namespace bench {
namespace {

using refhost::odbc::Check;
using refhost::odbc::Utf16Text;

/// How a text goes to the server.
enum class Way { direct, prepared };

/// No more than ODBC takes to have a text run: sent, its rows fetched, its further answers asked for. Nothing is read
/// of a row, nothing described; one statement handle serves all.
class BareClient {
public:
    explicit BareClient(const std::string& connectionString) {
        SQLHANDLE handle = nullptr;
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &handle);
        environment_ = refhost::odbc::EnvironmentHandle(handle);
        SQLSetEnvAttr(handle, SQL_ATTR_ODBC_VERSION, refhost::odbc::AttributeNumber(SQL_OV_ODBC3), 0);
        connection_ = refhost::odbc::Allocate<refhost::odbc::ConnectionHandle>(environment_);
        Utf16Text text = refhost::odbc::ToUtf16(connectionString);
        Check(SQLDriverConnectW(connection_.get(), nullptr, text.data(), static_cast<SQLSMALLINT>(text.size()), nullptr,
                                0, nullptr, SQL_DRIVER_NOPROMPT),
              SQL_HANDLE_DBC, connection_.get());
        statement_ = refhost::odbc::Allocate<refhost::odbc::StatementHandle>(connection_);
    }
    ~BareClient() {
        statement_ = {};
        SQLDisconnect(connection_.get());
    }
    BareClient(const BareClient&) = delete;
    BareClient& operator=(const BareClient&) = delete;

    /// Throws host::Error when the server refuses the text.
    void Run(Utf16Text& text, Way way) {
        SQLHSTMT statement = statement_.get();
        const auto size = static_cast<SQLINTEGER>(text.size());
        if (way == Way::direct) {
            Check(SQLExecDirectW(statement, text.data(), size), SQL_HANDLE_STMT, statement);
        } else {
            Check(SQLPrepareW(statement, text.data(), size), SQL_HANDLE_STMT, statement);
            Check(SQLExecute(statement), SQL_HANDLE_STMT, statement);
        }
        do {
            SQLSMALLINT columns = 0;
            SQLNumResultCols(statement, &columns);
            while (columns > 0 && SQL_SUCCEEDED(SQLFetch(statement))) {
            }
        } while (SQL_SUCCEEDED(SQLMoreResults(statement)));
        SQLFreeStmt(statement, SQL_CLOSE);
    }

private:
    refhost::odbc::EnvironmentHandle environment_;
    refhost::odbc::ConnectionHandle connection_;
    refhost::odbc::StatementHandle statement_;
};

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
    std::string server_;
    std::string name_ = "kovra_bench_" + std::to_string(getpid());
    std::optional<test::TestAccount> own_;
    std::unique_ptr<test::TdsServer> tds_;
    std::string connectionString_;
};

struct ServerRound {
    Time transact;
    Time direct;
    Time prepared;
};

Time Replay(const Import& import, std::size_t rows, const std::string& server, std::vector<Utf16Text>& texts, Way way) {
    const ServerAccount account(server, import.account(rows));
    return Measure([&] {
        BareClient client(account.connectionString());
        for (Utf16Text& text : texts) {
            client.Run(text, way);
        }
    });
}

ServerRound RunRound(const Import& import, std::size_t rows, const std::string& request, const std::string& server,
                     std::vector<Utf16Text>& texts) {
    ServerRound round;
    {
        const ServerAccount account(server, import.account(rows));
        round.transact =
            Measure([&] { RunImport(import, request, account.connectionString(), refhost::OpenExisting()); });
    }
    round.direct = Replay(import, rows, server, texts, Way::direct);
    round.prepared = Replay(import, rows, server, texts, Way::prepared);
    return round;
}

} // namespace

void PrintServerTable(std::size_t rows, int rounds, const std::string& server) {
    fmt::print("| import | rows | Transact ms | direct ms | prepared ms | Transact / direct | "
               "processor ms | direct processor ms | Transact / direct |\n|---|---|---|---|---|---|---|---|---|\n");
    for (const Import& import : {InventorySettings(), OppositeSettings(), StandardCostSettings(), OpeningBalances()}) {
        const std::string request = import.request(rows);
        std::vector<Utf16Text> texts;
        for (const std::string& statement : RecordStatements(import, rows, request)) {
            texts.push_back(refhost::odbc::ToUtf16(statement));
        }
        std::vector<ServerRound> all;
        for (int round = 0; round < rounds; ++round) {
            all.push_back(RunRound(import, rows, request, server, texts));
        }
        const auto milliseconds = [&](Time ServerRound::*run, double Time::*clock) {
            return Middle(all, [&](const ServerRound& round) { return round.*run.*clock * 1000; });
        };
        const auto ratio = [&](double Time::*clock) {
            return Middle(all, [&](const ServerRound& round) { return round.transact.*clock / round.direct.*clock; });
        };
        fmt::print("| {} | {} | {:.0f} | {:.0f} | {:.0f} | {:.2f} | {:.0f} | {:.0f} | {:.2f} |\n", import.name, rows,
                   milliseconds(&ServerRound::transact, &Time::wall), milliseconds(&ServerRound::direct, &Time::wall),
                   milliseconds(&ServerRound::prepared, &Time::wall), ratio(&Time::wall),
                   milliseconds(&ServerRound::transact, &Time::processor),
                   milliseconds(&ServerRound::direct, &Time::processor), ratio(&Time::processor));
        std::fflush(stdout);
    }
}

} // namespace bench
