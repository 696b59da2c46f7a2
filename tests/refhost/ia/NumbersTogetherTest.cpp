// Two imports of which the second asks for its numbers while the first has taken its own and not committed them yet.

#include "refhost/eai/Login.h"
#include "tests/support/FaultyEnvironment.h"
#include "tests/support/NumberedImport.h"
#include "tests/support/Paths.h"
#include "tests/support/TdsServer.h"

#include <optional>
#include <semaphore>
#include <string>
#include <thread>
#include <tuple>

#include <gtest/gtest.h>

namespace test {
namespace {

enum class Kind { embedded, throughDriver, server };

class NumbersTogether : public testing::TestWithParam<std::tuple<NumberedImport, Kind>> {
protected:
    NumbersTogether() {
        if (std::get<Kind>(GetParam()) == Kind::server) {
            server_.emplace(account_.connectionString(), TdsServer::Manners{});
        }
    }

    /// Imports the document of this number, with an environment, a connection and a login of its own.
    std::string Import(int number, Faults faults) const {
        FaultyEnvironment environment(std::move(faults));
        std::string loginXml = account_.LoginXml();
        const std::string embedded = account_.connectionString();
        loginXml.replace(loginXml.find(embedded), embedded.size(), ConnectionString());
        refhost::Login login(loginXml, environment);
        return Transact(import_, environment, login, RequestOf(import_, number, number + 1));
    }

    std::string ConnectionString() const {
        switch (std::get<Kind>(GetParam())) {
        case Kind::embedded:
            return account_.connectionString();
        case Kind::throughDriver:
            return "Driver=" + OdbcDriverPath() + ";" + account_.connectionString();
        case Kind::server:
            break;
        }
        return server_->ConnectionString();
    }

    const NumberedImport import_ = std::get<NumberedImport>(GetParam());
    const NumberedAccount account_{2};
    std::optional<TdsServer> server_;
};

TEST_P(NumbersTogether, AreTakenOneAfterTheOther) {
    std::binary_semaphore secondAsks(0);
    std::thread second;
    std::string secondResult;
    bool firstHasNumber = false;
    const auto startSecond = [&] {
        second = std::thread([&] {
            bool asked = false;
            secondResult = Import(1, {.transaction = [&](std::string_view operation) {
                                      if (operation == "BeginTrans" && !asked) {
                                          asked = true;
                                          secondAsks.release();
                                      }
                                  }});
        });
        secondAsks.acquire();
    };
    const std::string firstResult = Import(0, {.statement = [&](std::string_view sql) {
                                               if (firstHasNumber && !second.joinable()) {
                                                   startSecond();
                                               }
                                               firstHasNumber = firstHasNumber || sql.find("UPDLOCK") != sql.npos;
                                           }});
    ASSERT_TRUE(second.joinable());
    second.join();

    EXPECT_EQ(firstResult, AcceptedResult(import_, 0, 1));
    EXPECT_EQ(secondResult, AcceptedResult(import_, 1, 2));
    EXPECT_EQ(account_.Rows(import_.query), WrittenBy(import_, 0, 2));
    EXPECT_EQ(Halves(import_, account_), std::vector<std::string>());
    const std::string table = import_.className == std::string_view("ClsKovraProof") ? "IA_DecReady" : "CostJustVouch";
    EXPECT_EQ(account_.Rows("select count(distinct ID) as ids, max(ID) - min(ID) as apart from " + table),
              std::vector<std::string>{R"({"ids":2,"apart":1})"});
}

std::string NameOf(const testing::TestParamInfo<NumbersTogether::ParamType>& info) {
    const char* const kind = std::get<Kind>(info.param) == Kind::embedded        ? "Embedded"
                             : std::get<Kind>(info.param) == Kind::throughDriver ? "ThroughDriver"
                                                                                 : "Server";
    return std::get<NumberedImport>(info.param).className + std::string(kind);
}

INSTANTIATE_TEST_SUITE_P(On, NumbersTogether,
                         testing::Combine(testing::Values(NumberedImports()[4], NumberedImports()[5]),
                                          testing::Values(Kind::embedded, Kind::throughDriver, Kind::server)),
                         NameOf);

} // namespace
} // namespace test
