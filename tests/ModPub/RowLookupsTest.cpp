#include "ModPub/RowLookups.h"

#include "tests/support/ErrorOf.h"
#include "tests/support/TestAccount.h"
#include "tests/support/WatchedHost.h"

#include <string>

#include <gtest/gtest.h>

namespace test {
namespace {

class RowLookups : public testing::Test {
protected:
    RowLookups() {
        account.Run("INSERT INTO Warehouse (cWhCode, cWhName) VALUES (N'01', N'Main'), (N'02', NULL)");
        state.connection = environment.CreateConnection();
        state.connection->Open(account.connectionString(), "", "", host::command_option::unspecified);
    }

    TestAccount account;
    int created = 0;
    int opened = 0;
    WatchedEnvironment environment{[this](const HostOperation& operation) {
        created += static_cast<int>(operation.kind == HostOperation::Kind::creation && operation.name == "Recordset");
        opened += static_cast<int>(operation.recordset != 0 && operation.name == "Open");
    }};
    ModPub::ImportState state{environment};
    ModPub::RowLookups lookups{state};
};

TEST_F(RowLookups, CreateNoRecordsetBeforeTheFirst) { EXPECT_EQ(created, 0); }

TEST_F(RowLookups, OpenTheClosedRecordsetAgain) {
    EXPECT_TRUE(lookups.Find({"select cWhCode from Warehouse where cWhCode='", "01", "'"}));
    EXPECT_FALSE(lookups.Find({"select cWhCode from Warehouse where cWhCode='", "03", "'"}));
    const auto row = lookups.FirstRow<2>({"select cWhCode,cWhName from Warehouse where cWhCode='", "02", "'"});
    ASSERT_TRUE(row);
    EXPECT_EQ((*row)[0], host::Value("02"));
    EXPECT_TRUE((*row)[1].IsNull());
    EXPECT_FALSE(lookups.FirstRow<1>({"select cWhCode from Warehouse where cWhCode='04'"}));
    EXPECT_EQ(created, 1);
    EXPECT_EQ(opened, 4);
}

TEST_F(RowLookups, LeaveNothingOfAnEarlierText) {
    EXPECT_FALSE(lookups.Find({"select cWhCode from Warehouse where cWhCode='01' and cWhName='", "Other", "'"}));
    EXPECT_TRUE(lookups.Find({"select cWhCode from Warehouse"}));
}

TEST_F(RowLookups, GiveTheRecordsetOpen) {
    host::Recordset& recordset = lookups.Open({"select cWhCode from Warehouse"});
    EXPECT_EQ(recordset.RecordCount(), 2);
    // Whoever opens it closes it.
    EXPECT_EQ(ErrorNumberOf([&] { return lookups.Find({"select cWhCode from Warehouse"}); }),
              host::error_number::objectOpen);
    recordset.Close();
    EXPECT_TRUE(lookups.Find({"select cWhCode from Warehouse"}));
    EXPECT_EQ(created, 1);
}

} // namespace
} // namespace test
