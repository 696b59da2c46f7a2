#include "host/Error.h"
#include "refhost/OpenDatabase.h"
#include "refhost/ado/JsonRow.h"
#include "tests/allocation/FailingNew.h"
#include "tests/support/TestAccount.h"

#include <cstdio>
#include <new>
#include <optional>

#include <gtest/gtest.h>

namespace {

using test::FailingNew;

/// A statement's answer as JSON lines, or the number of the error that it ends in.
std::string Told(const refhost::ResultSet& found) {
    std::string told;
    if (found.fields) {
        for (std::size_t row = 0; row < found.rowCount; ++row) {
            refhost::AppendJsonRow(told, found, row);
        }
    }
    return told;
}

class DatabaseAllocation : public testing::Test {
protected:
    DatabaseAllocation() {
        account.Run("INSERT INTO inventory (cInvCode, cInvName, iInvRCost) VALUES (N'A1', N'钢板', 2.5), "
                    "(N'A2', NULL, NULL)");
        database = refhost::OpenDatabase(account.connectionString());
    }

    /// Runs a statement until none of its allocations fails; each failure is std::bad_alloc and leaves the database as
    /// it was. The statement differs from run to run by its blanks, so that it is planned anew each time.
    void FailEveryAllocationOf(const std::string& sql, const std::string& expected) {
        std::size_t failures = 0;
        for (bool done = false; !done; ++failures) {
            const std::string padded = sql + std::string(failures, ' ');
            std::optional<refhost::ResultSet> found;
            std::optional<host::Error> raised;
            bool outOfMemory = false;
            FailingNew::Watch(failures + 1, FailingNew::Mode::once);
            try {
                found = database->Query(padded);
            } catch (const std::bad_alloc&) {
                outOfMemory = true;
            } catch (const host::Error& error) {
                const FailingNew::Pause pause;
                raised = error;
            }
            done = FailingNew::Stop() < failures + 1;
            if (!outOfMemory) {
                ASSERT_EQ(raised ? std::to_string(raised->number()) : Told(*found), expected) << sql;
            }
            ASSERT_EQ(Told(database->Query("SELECT COUNT(*) AS n FROM inventory WHERE cInvCode < N'B'")), "{\"n\":2}");
            ASSERT_NO_THROW(database->BeginTrans()) << "a transaction was left open";
            database->RollbackTrans();
        }
        std::printf("allocation: embedded database: %s: %zu failures\n", sql.c_str(), failures - 1);
        EXPECT_GT(failures, 1U);
    }

    test::TestAccount account;
    std::unique_ptr<refhost::Database> database;
};

TEST_F(DatabaseAllocation, LookUp) {
    FailEveryAllocationOf("Select cInvName, isnull(iInvRCost, 0) as p, left(cInvCode, 1) + N'x' as c From inventory "
                          "Where cInvCode = N'a1' and isnull(bPTOModel, 0) = 0",
                          R"({"cInvName":"钢板","p":2.5,"c":"Ax"})");
}

TEST_F(DatabaseAllocation, Grouping) {
    FailEveryAllocationOf("select top 1 max(cInvCode) as m, count(cInvName) as n from inventory "
                          "where len(cInvCode) = 2 group by bService order by max(cInvCode)",
                          R"({"m":"A2","n":1})");
}

TEST_F(DatabaseAllocation, ErrorOfAFunction) {
    FailEveryAllocationOf("select convert(int, cInvCode) as n from inventory", "-2147217913");
}

TEST_F(DatabaseAllocation, UnknownColumn) { FailEveryAllocationOf("select cNothing from inventory", "-2147217900"); }

TEST_F(DatabaseAllocation, Update) {
    FailEveryAllocationOf(
        "UPDATE inventory SET cInvStd = convert(nvarchar(20), iInvRCost) + N'!' WHERE cInvCode = N'A1'", "");
}

TEST_F(DatabaseAllocation, DuplicateKey) {
    FailEveryAllocationOf("INSERT INTO inventory (cInvCode) VALUES (N'A1')", "-2147217873");
}

} // namespace
