#include "ClsKovraProof/ClsKovraProof.h"
#include "bench/imports/MemoryAccount.h"
#include "refhost/Environment.h"
#include "refhost/eai/Login.h"

#include <stdexcept>

#include <benchmark/benchmark.h>

namespace {

constexpr const char* loginXml =
    "<login QxDbName=\"Provider=KovraAccount;Data Source=:memory:\" cAcc_Id=\"001\" cIYear=\"2023\" cUserId=\"demo\" "
    "cUserPassWord=\"\" CurDate=\"2023-01-15\" cServer=\"\" cSerial=\"\"/>";

/// Issues of two rows each, with a customer.
std::vector<std::string> Documents(std::int64_t count) {
    std::vector<std::string> statements = {
        "insert into Customer (cCusCode, cCusAddress) values ('C1', N'上海市宝山区友谊路18号')"};
    for (std::int64_t id = 1; id <= count; ++id) {
        const std::string text = std::to_string(id);
        statements.push_back("insert into rdrecord (ID, bRdFlag, cVouchType, cBusType, cCode, cWhCode, dDate, cRdCode, "
                             "cCusCode, cMaker) values (" +
                             text + ", 0, '32', N'普通销售', 'CX" + text +
                             "', '01', '2023-01-15', '202', 'C1', N'王会计')");
        statements.push_back("insert into rdrecords (ID, cInvCode, iQuantity, iUnitCost, iPrice) values (" + text +
                             ", 'A', 2, 10.5, 21)");
        statements.push_back("insert into rdrecords (ID, cInvCode, iQuantity) values (" + text + ", 'B', 1)");
    }
    return statements;
}

void StockQuery(benchmark::State& state) {
    bench::MemoryAccount account;
    account.Fill(Documents(state.range(0)));
    refhost::Environment environment(account.Opener());
    refhost::Login login(loginXml, environment);
    kovra::ClsKovraProof instance(environment);
    instance.Transact("<q roottag=\"doc\" docid=\"\" proc=\"ADD\"/>", &login);
    const std::string request = "<q roottag=\"doc\"><storeinout type=\"出库单\"/></q>";
    std::size_t bytes = 0;
    for (auto _ : state) {
        std::string envelope = request;
        instance.QueryProc({}, envelope);
        bytes = envelope.size();
    }
    if (bytes < static_cast<std::size_t>(state.range(0)) * 100) {
        throw std::runtime_error("the documents were not found");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["bytes"] = static_cast<double>(bytes);
}

BENCHMARK(StockQuery)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace
