// Commit=Grouped: the writes of a series are committed together.

#include "tests/refhost/sql/DatabaseFiles.h"
#include "tests/refhost/sql/Support.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>

namespace test_sql {
namespace {

using refhost::sql::EmbeddedDatabase;
using refhost::sql::Mode;
using refhost::sql::OpenEmbedded;

class Grouped : public DatabaseFiles {
protected:
    Grouped() { Create("a.db")->Execute("create table t (x int primary key, y nvarchar(max))"); }
    std::unique_ptr<EmbeddedDatabase> Open() const {
        return OpenEmbedded(Connection("a.db", ";commit=grouped"), Mode::open);
    }
    /// What a process that is killed now leaves: the account as its files have it.
    std::string Killed() const {
        for (const char* suffix : {"", "-wal"}) {
            std::filesystem::copy_file(File("a.db") + suffix, File("killed.db") + suffix,
                                       std::filesystem::copy_options::overwrite_existing);
        }
        std::filesystem::remove(File("killed.db-shm"));
        EmbeddedDatabase::Settings settings;
        settings.file = File("killed.db");
        // In a thread of its own, as another process has one.
        std::string rows;
        std::thread([&] { rows = Answer(*std::make_unique<EmbeddedDatabase>(settings), "select x from t"); }).join();
        return rows;
    }
};

TEST_F(Grouped, AKilledProcessLosesTheGroupAtHandAndNothingElse) {
    const auto db = Open();
    db->BeginSeries();
    db->Execute("insert into t (x) values (1)");
    db->Execute("insert into t (x) values (2)");
    EXPECT_EQ(Answer(*db, "select x from t"), "1 | 2");
    EXPECT_EQ(Killed(), "");
    db->EndSeries();
    EXPECT_EQ(Killed(), "1 | 2");
}

TEST_F(Grouped, OutsideOfASeriesEachStatementIsCommitted) {
    const auto db = Open();
    db->Execute("insert into t (x) values (1)");
    EXPECT_EQ(Killed(), "1");
}

TEST_F(Grouped, WithoutTheWordEachStatementIsCommitted) {
    const auto db = OpenEmbedded(Connection("a.db", ";Commit=Each"), Mode::open);
    db->BeginSeries();
    db->Execute("insert into t (x) values (1)");
    EXPECT_EQ(Killed(), "1");
    db->EndSeries();
}

TEST_F(Grouped, AGroupIsCommittedAfterTwentyMilliseconds) {
    std::chrono::steady_clock::time_point now;
    EmbeddedDatabase::Settings settings;
    settings.file = File("a.db");
    settings.grouped = true;
    settings.clock = [&] { return now; };
    EmbeddedDatabase db(settings);
    db.BeginSeries();
    db.Execute("insert into t (x) values (1)");
    now += std::chrono::milliseconds(20);
    db.Execute("insert into t (x) values (2)");
    EXPECT_EQ(Killed(), "");
    now += std::chrono::milliseconds(1);
    EXPECT_EQ(Answer(db, "select count(*) from t"), "2");
    EXPECT_EQ(Killed(), "1 | 2");
    db.EndSeries();
}

TEST_F(Grouped, AnotherConnectionOfTheThreadSeesAndWritesAtOnce) {
    const auto db = Open();
    const auto other = Open();
    db->BeginSeries();
    db->Execute("insert into t (x) values (1)");
    EXPECT_EQ(Answer(*other, "select x from t"), "1");
    db->Execute("insert into t (x) values (2)");
    other->Execute("insert into t (x) values (3)");
    db->Execute("insert into t (x) values (4)");
    other->BeginTrans();
    other->RollbackTrans();
    db->EndSeries();
    EXPECT_EQ(Answer(*other, "select x from t"), "1 | 2 | 3 | 4");
}

TEST_F(Grouped, ATransactionStandsForItself) {
    const auto db = Open();
    db->BeginSeries();
    db->Execute("insert into t (x) values (1)");
    db->BeginTrans();
    EXPECT_EQ(Killed(), "1");
    db->Execute("insert into t (x) values (2)");
    db->RollbackTrans();
    db->Execute("insert into t (x) values (3)");
    db->EndSeries();
    EXPECT_EQ(Killed(), "1 | 3");
}

TEST_F(Grouped, AnErrorUndoesItsStatementAlone) {
    const auto db = Open();
    db->BeginSeries();
    db->Execute("insert into t (x) values (1)");
    EXPECT_NE(Answer(*db, "insert into t (x) values (1)").find("Violation of PRIMARY KEY"), std::string::npos);
    db->Execute("insert into t (x) values (2)");
    db->EndSeries();
    EXPECT_EQ(Killed(), "1 | 2");
}

TEST_F(Grouped, ALostGroupIsToldOfUntilTheSeriesEnds) {
    const auto db = Open();
    db->BeginSeries();
    db->Execute("insert into t (x) values (1)");
    sqlite3_exec(db->Handle(), "pragma max_page_count = 1", nullptr, nullptr, nullptr);
    EXPECT_NE(Answer(*db, "insert into t values (2, replicate(cast('long' as nvarchar(max)), 2000))").find("full"),
              std::string::npos);
    constexpr const char* lost = "Rows that were written last are lost: ";
    EXPECT_NE(Answer(*db, "select x from t").find(lost), std::string::npos);
    try {
        db->EndSeries();
        FAIL();
    } catch (const host::Error& error) {
        EXPECT_TRUE(error.description().starts_with(lost)) << error.description();
    }
    EXPECT_EQ(Answer(*db, "select x from t"), "");
}

TEST_F(Grouped, AnyOtherWordIsRefused) {
    try {
        OpenEmbedded(Connection("a.db", ";Commit=Never"), Mode::open);
        FAIL();
    } catch (const host::Error& error) {
        EXPECT_EQ(error.description(), "The connection string's Commit is Each or Grouped, not 'Never'.");
    }
}

} // namespace
} // namespace test_sql
