// In a series the lock of a statement is kept for the next one: what others do goes on as without.

#include "tests/refhost/sql/Support.h"
#include "tests/support/TestAccount.h"

#include <filesystem>
#include <string>

namespace test_sql {
namespace {

using refhost::sql::EmbeddedDatabase;
using refhost::sql::Mode;
using refhost::sql::OpenEmbedded;

class KeptReadLock : public testing::Test {
protected:
    KeptReadLock() {
        db_->Execute("create table t (x int, y nvarchar(max))");
        db_->BeginSeries();
    }

    std::string Path() const { return (folder_.path() / "a.db").string(); }
    std::unique_ptr<EmbeddedDatabase> Open() const {
        return OpenEmbedded("Provider=KovraAccount;Data Source=" + Path(), Mode::create);
    }
    /// Has another connection move the whole log into the database; whether that was possible.
    bool OtherEmptiesLog() const {
        return sqlite3_wal_checkpoint_v2(other_->Handle(), "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr) ==
               SQLITE_OK;
    }
    std::uintmax_t LogSize() const { return std::filesystem::file_size(Path() + "-wal"); }

    test::TemporaryFolder folder_;
    std::unique_ptr<EmbeddedDatabase> db_ = Open();
    std::unique_ptr<EmbeddedDatabase> other_ = Open();
};

TEST_F(KeptReadLock, EachReadsWhatTheOtherHasWritten) {
    const std::string count = "select count(*) from t";
    for (int written = 0; written < 10; ++written) {
        EXPECT_EQ(Answer(*db_, count), std::to_string(2 * written));
        EXPECT_EQ(Answer(*db_, "insert into t (x) values (1)"), "");
        EXPECT_EQ(Answer(*other_, count), std::to_string(2 * written + 1));
        EXPECT_EQ(Answer(*other_, "insert into t (x) values (2)"), "");
    }
    EXPECT_EQ(Answer(*db_, "select sum(x) from t"), "30");
}

TEST_F(KeptReadLock, ALongLogIsMovedIntoTheDatabase) {
    // 16 MB are moved behind the commit that reaches them, and the next write begins anew.
    const std::string insert = "insert into t (x, y) values (1, N'" + std::string(1'000'000, 'x') + "')";
    for (int written = 1; written <= 50; ++written) {
        db_->Execute(insert);
        EXPECT_EQ(Answer(*db_, "select count(*) from t"), std::to_string(written));
        EXPECT_LT(LogSize(), 18'000'000U) << written;
    }
    EXPECT_GT(std::filesystem::file_size(Path()), 30'000'000U);
}

TEST_F(KeptReadLock, AnotherMovesTheLogWhenTheSeriesHasEnded) {
    EXPECT_EQ(Answer(*db_, "insert into t (x) values (1)"), "");
    EXPECT_EQ(Answer(*db_, "select x from t"), "1");
    sqlite3_busy_timeout(other_->Handle(), 0);
    EXPECT_FALSE(OtherEmptiesLog());
    db_->EndSeries();
    EXPECT_TRUE(OtherEmptiesLog());
    EXPECT_EQ(LogSize(), 0U);
    db_->BeginSeries();
    // Now all stands in the database, and a lock that tells so is not kept over a write.
    for (int x = 2; x <= 4; ++x) {
        EXPECT_EQ(Answer(*db_, "select max(x) from t"), std::to_string(x - 1));
        EXPECT_EQ(Answer(*db_, "insert into t (x) values (" + std::to_string(x) + ")"), "");
    }
    EXPECT_EQ(Answer(*other_, "select sum(x) from t"), "10");
}

} // namespace
} // namespace test_sql
