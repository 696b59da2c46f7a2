// What goes to a server and back, counted at the server: a statement is one message, and nothing is asked beside the
// statements.

#include "bench/imports/Import.h"
#include "bench/imports/RunImport.h"
#include "host/Error.h"
#include "refhost/OpenDatabase.h"
#include "refhost/odbc/OdbcDatabase.h"
#include "tests/support/TdsServer.h"
#include "tests/support/TestAccount.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace {

class RoundTrips : public testing::Test {
protected:
    template <class Work> int Of(const Work& work) {
        const int before = server_.Requests();
        work();
        return server_.Requests() - before;
    }

    test::TestAccount account_;
    test::TdsServer server_{account_.connectionString(), {}};
    std::unique_ptr<refhost::Database> database_ = refhost::odbc::OpenOdbc(server_.ConnectionString());
};

TEST_F(RoundTrips, OneAStatement) {
    EXPECT_EQ(Of([&] { database_->Query("select cInvCode, cInvName from inventory where cInvCode = '1'"); }), 1);
    EXPECT_EQ(Of([&] { database_->Execute("insert into inventory (cInvCode) values ('1')"); }), 1);
    EXPECT_EQ(Of([&] { database_->Query("select * from inventory"); }), 1);
    EXPECT_EQ(Of([&] { database_->Execute("update inventory set cInvName = 'x' where cInvCode = '1'"); }), 1);
    EXPECT_EQ(Of([&] { database_->Execute("delete inventory where cInvCode = '1'"); }), 1);
}

TEST_F(RoundTrips, OneAFailingStatement) {
    const auto refused = [&](const char* sql) {
        EXPECT_EQ(Of([&] { EXPECT_THROW(database_->Query(sql), host::Error) << sql; }), 1) << sql;
        EXPECT_EQ(Of([&] { EXPECT_THROW(database_->Execute(sql), host::Error) << sql; }), 1) << sql;
    };
    refused("select nothing from inventory");
    refused("select * from nowhere");
    refused("Delete * From inventory");
    refused("insert into inventory (cInvCode) values (null)");
    refused("insert into inventory (cInvCode, dSDate) values ('1', 'no date')");
    refused("select ' from inventory");
}

/// Its beginning and its end, and the statements between. FreeTDS takes one more: its end of a transaction in manual
/// commit begins the next, which leaving manual commit ends.
TEST_F(RoundTrips, ThreeMoreATransaction) {
    const auto run = [&] {
        database_->BeginTrans();
        database_->Execute("insert into inventory (cInvCode) values ('2')");
        database_->Query("select cInvCode from inventory");
        database_->CommitTrans();
    };
    EXPECT_EQ(Of(run), 2 + 3);
}

/// Every class: as many as its rows have statements, whatever lies between the class and the server.
TEST_F(RoundTrips, OfAnImportAreItsStatements) {
    struct Rule {
        bench::Import (*import)();
        /// Messages of a row: its statements, and what its transaction takes.
        int messages;
    };
    constexpr int rows = 3;
    for (const Rule& rule : {Rule{bench::InventorySettings, 6}, Rule{bench::OppositeSettings, 7},
                             Rule{bench::StandardCostSettings, 9}, Rule{bench::OpeningBalances, 9},
                             // A document: its number, two templates, the voucher's form, the month, stock and budget
                             // of three entries, the next number, head and entries; in a transaction from there on.
                             Rule{bench::Provisions, 1 + 2 + 1 + 1 + 3 * 2 + 1 + 1 + 3 + 3}}) {
        const bench::Import import = rule.import();
        const auto requests = [&](int count) {
            const test::TestAccount account;
            for (const std::string& statement : import.account(static_cast<std::size_t>(count))) {
                account.Run(statement);
            }
            const test::TdsServer server(account.connectionString(), {});
            RunImport(import, import.request(static_cast<std::size_t>(count)), server.ConnectionString(),
                      refhost::OpenExisting());
            return server.Requests();
        };
        EXPECT_EQ(requests(2 * rows) - requests(rows), rule.messages * rows) << import.name;
    }
}

} // namespace
