#include "bench/MemoryAccount.h"
#include "cli/Classes.h"
#include "refhost/Environment.h"
#include "refhost/eai/Login.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <utility>

#include <benchmark/benchmark.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* loginXml =
    "<login QxDbName=\"Provider=KovraAccount;Data Source=:memory:\" cAcc_Id=\"001\" cIYear=\"2023\" cUserId=\"demo\" "
    "cUserName=\"王会计\" cUserPassWord=\"\" CurDate=\"2023-01-15\" cServer=\"\" cSerial=\"\" iMonth=\"1\" "
    "iStartPeriod=\"1\"/>";

/// Tells the time of the statement that looks a row up among all rows staged before it: its time grows with the square
/// of the entries, whatever the rest does.
class RepetitionClock : public refhost::Database {
public:
    RepetitionClock(std::unique_ptr<refhost::Database> inner, double& seconds)
        : inner_(std::move(inner)), seconds_(seconds) {}

    refhost::ResultSet Query(std::string_view sql) override {
        if (!sql.starts_with("select count(cInvCode) as iCount from IA_tmpPriceJDATA")) {
            return inner_->Query(sql);
        }
        const Clock::time_point begin = Clock::now();
        refhost::ResultSet result = inner_->Query(sql);
        seconds_ += std::chrono::duration<double>(Clock::now() - begin).count();
        return result;
    }
    void Execute(std::string_view sql) override { inner_->Execute(sql); }
    void BeginTrans() override { inner_->BeginTrans(); }
    void CommitTrans() override { inner_->CommitTrans(); }
    void RollbackTrans() override { inner_->RollbackTrans(); }

private:
    std::unique_ptr<refhost::Database> inner_;
    double& seconds_;
};

std::string Item(std::size_t row) { return "I" + std::to_string(row); }

std::vector<std::string> Account(std::size_t rows) {
    std::vector<std::string> statements = {
        "insert into AccInformation (cSysID, cName, cValue) values (N'AA', N'iStrsPriDecDgt', N'4')",
        "insert into AccInformation (cSysID, cName, cValue) values (N'IA', N'cValueStyle', N'按存货核算')",
        "insert into GL_mend (iyear, iperiod, iYPeriod, bflag_IA) values (2023, 1, 202301, 0)",
        "insert into QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) "
        "values (N'001', 2023, 1, '2023-01-01', '2023-01-31')",
    };
    for (std::size_t row = 0; row < rows; ++row) {
        const std::string item = "'" + Item(row) + "'";
        statements.push_back("insert into inventory (cInvCode, cValueType, iInvRCost) values (" + item +
                             ", N'计划价法', 25)");
        statements.push_back("insert into InvCheckFreeIA870 (cInvCode, fInvRCost) values (" + item + ", 25)");
        statements.push_back("insert into Ia_subsidiary (cInvCode, dVouDate, iAInQuantity, iAInPrice) values (" + item +
                             ", '2022-12-31', 10, 250)");
    }
    return statements;
}

/// One document, saved and posted.
std::string Request(std::size_t rows) {
    std::string xml = "<qxinterface roottag=\"voucher\" docid=\"bench\" proc=\"ADD\"><voucher><header><ID>B1</ID>"
                      "<cMaker>李工</cMaker><cAccounter>王会计</cAccounter><dCJVDate>2023-01-15</dCJVDate></header>"
                      "<body>\n";
    for (std::size_t row = 0; row < rows; ++row) {
        xml +=
            "<entry><cInvCode>" + Item(row) + "</cInvCode><cWhCode>03</cWhCode><iCJVACost>26.5</iCJVACost></entry>\n";
    }
    return xml + "</body></voucher></qxinterface>";
}

/// Counters: entries a second, and how much of the time the repetition statement took.
void PriceVoucher(benchmark::State& state) {
    const std::size_t rows = static_cast<std::size_t>(state.range(0));
    const std::string request = Request(rows);
    const auto importClass = std::ranges::find(cli::ImportClasses(), "ClsPriceJustVou", &cli::ImportClass::name);
    double total = 0;
    double repetition = 0;
    for (auto _ : state) {
        bench::MemoryAccount account;
        account.Fill(Account(rows));
        const refhost::DatabaseOpener opener = account.Opener();
        refhost::Environment environment([&](const std::string& connectionString) {
            return std::make_unique<RepetitionClock>(opener(connectionString), repetition);
        });
        refhost::Login login(loginXml, environment);
        const Clock::time_point begin = Clock::now();
        const std::string result = importClass->transact(environment, request, &login);
        const double seconds = std::chrono::duration<double>(Clock::now() - begin).count();
        if (result.find("code=\"0\"") == std::string::npos || result.find("code=\"999\"") != std::string::npos) {
            throw std::runtime_error("the request is not accepted: " + result.substr(0, 300));
        }
        state.SetIterationTime(seconds);
        total += seconds;
    }
    const auto iterations = static_cast<double>(state.iterations());
    state.counters["rows/s"] = static_cast<double>(rows) * iterations / total;
    state.counters["repetition_ms"] = repetition * 1000 / iterations;
    state.counters["other_ms"] = (total - repetition) * 1000 / iterations;
}

BENCHMARK(PriceVoucher)->Arg(100)->Arg(1000)->Arg(10000)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
