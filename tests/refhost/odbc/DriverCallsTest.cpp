// How often a statement calls the driver for what a driver may have to ask the server for: counted in the tests' own
// driver, behind the real driver manager.

#include "refhost/odbc/OdbcDatabase.h"
#include "tests/support/Paths.h"
#include "tests/support/TestAccount.h"

#include <map>
#include <memory>
#include <stdexcept>
#include <string>

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

using Calls = std::map<std::string, int>;

class DriverCalls : public testing::Test {
protected:
    DriverCalls() {
        database_->Execute("insert into inventory (cInvCode, cInvName) values ('1', N'钢板')");
        database_->Execute("insert into inventory (cInvCode, cInvName) values ('2', N'铜线')");
    }

    /// The functions that were called meanwhile, of those that describe, ask, prepare or set something up.
    template <class Work> Calls Of(const Work& work) const {
        Calls calls = Now();
        work();
        for (const auto& [function, count] : Now()) {
            calls[function] = count - calls[function];
        }
        std::erase_if(calls, [](const auto& call) { return call.second == 0; });
        return calls;
    }

    test::TestAccount account_;
    std::unique_ptr<refhost::Database> database_ =
        refhost::odbc::OpenOdbc("Driver=" + test::OdbcDriverPath() + ";" + account_.connectionString());

private:
    Calls Now() const {
        Calls calls;
        for (const char* function :
             {"SQLExecDirectW", "SQLDescribeColW", "SQLColAttributeW", "SQLGetInfoW", "SQLPrepareW", "SQLAllocHandle",
              "SQLSetStmtAttrW", "SQLSetConnectAttrW", "SQLEndTran", "SQLRowCount", "SQLFetch", "SQLGetData"}) {
            calls[function] = count_(function);
        }
        return calls;
    }

    using Count = int (*)(const char*);
    /// Of the library that the driver manager has loaded.
    static Count Find() {
        void* const driver = dlopen(test::OdbcDriverPath().c_str(), RTLD_NOW | RTLD_NOLOAD);
        void* const found = driver == nullptr ? nullptr : dlsym(driver, "KovraTestDriverCalls");
        if (found == nullptr) {
            throw std::runtime_error("the driver is not loaded");
        }
        dlclose(driver);
        return reinterpret_cast<Count>(found);
    }
    Count count_ = Find();
};

/// Sent as it stands; each column described once and each value fetched once; the fetch behind the last row finds none.
/// The statement's handle is the one of the statement before, with the settings that it has.
TEST_F(DriverCalls, OfAQuery) {
    EXPECT_EQ(Of([&] { database_->Query("select cInvCode, cInvName from inventory"); }),
              (Calls{{"SQLExecDirectW", 1}, {"SQLDescribeColW", 2}, {"SQLFetch", 2 + 1}, {"SQLGetData", 2 * 2}}));
}

TEST_F(DriverCalls, OfAQueryWithoutRows) {
    EXPECT_EQ(Of([&] { database_->Query("select cInvCode from inventory where cInvCode = '3'"); }),
              (Calls{{"SQLExecDirectW", 1}, {"SQLDescribeColW", 1}, {"SQLFetch", 1}}));
}

/// Of a decimal column it is asked besides whether it is one of money, which the driver knows from the answer.
TEST_F(DriverCalls, OfADecimalColumn) {
    EXPECT_EQ(Of([&] { database_->Query("select cast(1 as decimal(9, 2)) as a, cInvCode from inventory"); }),
              (Calls{{"SQLExecDirectW", 1},
                     {"SQLDescribeColW", 2},
                     {"SQLColAttributeW", 1},
                     {"SQLFetch", 2 + 1},
                     {"SQLGetData", 2 * 2}}));
}

TEST_F(DriverCalls, OfAStatementThatWrites) {
    EXPECT_EQ(Of([&] { database_->Execute("update inventory set cInvName = 'x'"); }), (Calls{{"SQLExecDirectW", 1}}));
    EXPECT_EQ(Of([&] { database_->Execute("delete inventory where cInvCode = '3'"); }), (Calls{{"SQLExecDirectW", 1}}));
}

/// Into manual commit, the end, and back. At the end the driver manager itself asks what becomes of open rows.
TEST_F(DriverCalls, OfATransaction) {
    EXPECT_EQ(Of([&] {
                  database_->BeginTrans();
                  database_->Execute("delete inventory where cInvCode = '1'");
                  database_->CommitTrans();
              }),
              (Calls{{"SQLExecDirectW", 1}, {"SQLSetConnectAttrW", 2}, {"SQLEndTran", 1}, {"SQLGetInfoW", 1}}));
}

/// What the other tests rest on.
TEST_F(DriverCalls, AreCountedByTheDriverItself) {
    const Calls calls = Of([&] {
        refhost::odbc::OpenOdbc("Driver=" + test::OdbcDriverPath() + ";" + account_.connectionString())
            ->Query("select cInvCode from inventory");
    });
    // The environment is the driver's already; the connection and its first statement are new, and the statement takes
    // its time limit.
    EXPECT_EQ(calls.at("SQLExecDirectW"), 1);
    EXPECT_EQ(calls.at("SQLSetStmtAttrW"), 1);
    EXPECT_GE(calls.at("SQLAllocHandle"), 2);
}

} // namespace
