#include "refhost/sql/engine/Backup.h"

#include "refhost/sql/engine/Storage.h"
#include "tests/refhost/sql/DatabaseFiles.h"
#include "tests/refhost/sql/Support.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Paths.h"

#include <filesystem>
#include <fstream>

namespace test_sql {
namespace {

using refhost::sql::BackUp;
using refhost::sql::CheckFiles;
using refhost::sql::Mode;
using refhost::sql::OpenEmbedded;
using refhost::sql::Restore;
using refhost::sql::Schema;

class Backup : public DatabaseFiles {
protected:
    /// A file of the first format.
    static std::string OldFile(const char* name) {
        return (test::SourceFolder() / "tests/refhost/sql/files/format0" / name).string();
    }
    template <class Call> static std::string ErrorOf(const Call& call) { return test::ErrorOf(call).description(); }
};

TEST_F(Backup, IsTheAccountAsItWasAtOneMoment) {
    const auto db = Create("a.db");
    db->Execute("create table t (x int)");
    db->Execute("insert into t values (1)");
    db->BeginTrans();
    db->Execute("insert into t values (2)");
    BackUp(Connection("a.db"), Schema::account, File("copy.db"));
    db->Execute("insert into t values (3)");
    db->CommitTrans();
    EXPECT_EQ(Answer(*db, "select x from t"), "1 | 2 | 3");
    EXPECT_EQ(Answer(*Create("copy.db"), "select x from t"), "1");
    EXPECT_FALSE(std::filesystem::exists(File("copy.db.part")));
}

TEST_F(Backup, OverwritesNothing) {
    Create("a.db");
    std::ofstream(File("kept.txt")) << "kept";
    EXPECT_EQ(ErrorOf([&] { BackUp(Connection("a.db"), Schema::account, File("kept.txt")); }),
              "The file \"" + File("kept.txt") + "\" exists already. Name another, or take it away.");
    EXPECT_EQ(std::filesystem::file_size(File("kept.txt")), 4U);
    EXPECT_NE(ErrorOf([&] { BackUp(Connection("a.db"), Schema::account, File("none/copy.db")); }), "");
    EXPECT_NE(ErrorOf([&] { BackUp(Connection("none.db"), Schema::account, File("copy.db")); }), "");
    EXPECT_FALSE(std::filesystem::exists(File("none.db")));
    EXPECT_FALSE(std::filesystem::exists(File("copy.db")));
}

TEST_F(Backup, KeepsTheFormatOfTheFile) {
    std::filesystem::copy_file(OldFile("account.db"), File("old.db"));
    BackUp(Connection("old.db"), Schema::account, File("copy.db"));
    refhost::sql::DatabaseHandle db;
    sqlite3* raw = nullptr;
    sqlite3_open(File("copy.db").c_str(), &raw);
    db.reset(raw);
    EXPECT_EQ(refhost::sql::FileFormat(db.get(), Schema::account), 0);
}

TEST_F(Backup, OfTheSystemDatabaseIsAFileOfItsOwn) {
    const auto db = Create("a.db");
    db->Execute("create table QxSystem..p (x int)");
    db->Execute("insert into QxSystem..p values (1)");
    BackUp(Connection("a.db"), Schema::system, File("system-copy.db"));
    db->Execute("update QxSystem..p set x = 2");
    db->Execute("create table t (x int)");
    Restore(Connection("a.db"), Schema::system, File("system-copy.db"));
    EXPECT_EQ(Answer(*db, "select x from QxSystem..p"), "1");
    EXPECT_EQ(Answer(*db, "select count(*) from t"), "0");
}

TEST_F(Backup, ACopyOfAnAccountHasItsNameAndItsSystemDatabase) {
    const auto db = Create("a.db");
    db->Execute("create table QxSystem..p (x int)");
    db->Execute("create table t (x int)");
    db->Execute("insert into t values (1)");
    std::filesystem::create_directory(File("copy"));
    const std::string copy = refhost::sql::CopyAccount(Connection("a.db") + ";Delete Star=Accept", File("copy"));
    EXPECT_EQ(copy, Connection("copy/a.db") + ";Delete Star=Accept");
    const auto copied = OpenEmbedded(copy, Mode::open);
    EXPECT_EQ(Answer(*copied, "insert into QxSystem..p values (7)"), "");
    EXPECT_EQ(Answer(*copied, "Delete * From t"), "");
    EXPECT_EQ(Answer(*copied, "select count(*) from a..t"), "0");
    EXPECT_EQ(Answer(*db, "select count(*) from a..t"), "1");
    EXPECT_EQ(Answer(*db, "select count(*) from QxSystem..p"), "0");
}

TEST_F(Backup, RestoringPutsItBackForWhoeverHasTheAccountOpen) {
    const auto db = Create("a.db");
    db->Execute("create table t (x int)");
    db->Execute("insert into t values (1)");
    BackUp(Connection("a.db"), Schema::account, File("copy.db"));
    const auto other = Create("a.db");
    EXPECT_EQ(Answer(*other, "insert into t values (2)"), "");
    EXPECT_EQ(Answer(*other, "create table u (x int)"), "");
    EXPECT_EQ(Answer(*other, "select x from u"), "");
    Restore(Connection("a.db"), Schema::account, File("copy.db"));
    EXPECT_EQ(Answer(*other, "select x from t"), "1");
    EXPECT_EQ(Answer(*other, "select x from u"), "-2147217865: Invalid object name 'u'.");
    EXPECT_EQ(Answer(*Create("a.db"), "select x from t"), "1");
    EXPECT_TRUE(CheckFiles(Connection("a.db")).empty());
    EXPECT_FALSE(std::filesystem::exists(File("a.db.part")));
}

TEST_F(Backup, RestoringMakesAFileThatIsGone) {
    Create("a.db")->Execute("create table t (x int)");
    BackUp(Connection("a.db"), Schema::account, File("copy.db"));
    std::filesystem::remove(File("a.db"));
    Restore(Connection("a.db"), Schema::account, File("copy.db"));
    EXPECT_EQ(Answer(*OpenEmbedded(Connection("a.db")), "select count(*) from t"), "0");
}

TEST_F(Backup, RestoringBringsAnOlderFormatUpToDate) {
    Create("a.db")->Execute("create table t (x int)");
    Restore(Connection("a.db"), Schema::account, OldFile("account.db"));
    for (const refhost::sql::FormatChange& change : refhost::sql::UpgradeFiles(Connection("a.db"))) {
        EXPECT_EQ(change.before, refhost::sql::formatVersion) << change.file;
    }
}

TEST_F(Backup, RestoringRefusesWhatIsNoBackupAndWhatIsNoAccount) {
    Create("a.db")->Execute("create table t (x int)");
    std::ofstream(File("text.txt")) << std::string(4096, 'x');
    EXPECT_EQ(ErrorOf([&] { Restore(Connection("a.db"), Schema::account, File("text.txt")); }),
              "The file is not an account database.");
    EXPECT_NE(ErrorOf([&] { Restore(Connection("a.db"), Schema::account, File("none.db")); }), "");
    EXPECT_EQ(ErrorOf([&] { Restore(Connection("text.txt"), Schema::account, File("a.db")); }),
              "The file is not an account database.");
    EXPECT_EQ(std::filesystem::file_size(File("text.txt")), 4096U);
    EXPECT_EQ(Answer(*Create("a.db"), "select count(*) from t"), "0");
}

TEST_F(Backup, RestoringGivesWayToAWriter) {
    const auto db = Create("a.db");
    db->Execute("create table t (x int)");
    BackUp(Connection("a.db"), Schema::account, File("copy.db"));
    db->BeginTrans();
    db->Execute("insert into t values (5)");
    EXPECT_EQ(
        ErrorOf([&] { Restore(Connection("a.db"), Schema::account, File("copy.db"), std::chrono::milliseconds(0)); }),
        "Lock request time out period exceeded.");
    db->CommitTrans();
    EXPECT_EQ(Answer(*db, "select x from t"), "5");
}

TEST_F(Backup, CheckingFindsDamage) {
    {
        const auto db = Create("a.db");
        db->Execute("create table t (x nvarchar(100))");
        db->Execute("insert into t values (null)");
        EXPECT_TRUE(CheckFiles(Connection("a.db")).empty());
        // A row that its table's definition does not allow.
        refhost::sql::Run(db->Handle(), "PRAGMA writable_schema = ON");
        refhost::sql::Run(db->Handle(), "UPDATE sqlite_schema SET sql = replace(sql, ' COLLATE', ' NOT NULL COLLATE') "
                                        "WHERE name = 't'");
    }
    const std::vector<std::string> faults = CheckFiles(Connection("a.db"));
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults.front(), File("a.db") + ": NULL value in t.x");
}

TEST_F(Backup, UpgradingTellsTheFormatsOfEachFile) {
    std::filesystem::copy_file(OldFile("account.db"), File("a.db"));
    std::filesystem::copy_file(OldFile("QxSystem.db"), File("QxSystem.db"));
    for (const std::int64_t before : {std::int64_t{0}, refhost::sql::formatVersion}) {
        const auto changes = refhost::sql::UpgradeFiles(Connection("a.db"));
        ASSERT_EQ(changes.size(), 2U);
        for (const refhost::sql::FormatChange& change : changes) {
            EXPECT_EQ(change.before, before);
            EXPECT_EQ(change.now, refhost::sql::formatVersion);
        }
        EXPECT_EQ(changes[1].file, File("QxSystem.db"));
    }
}

} // namespace
} // namespace test_sql
