#include "tests/refhost/sql/DatabaseFiles.h"
#include "tests/refhost/sql/Support.h"
#include "tests/support/ErrorOf.h"

#include <array>
#include <filesystem>
#include <fstream>

namespace test_sql {
namespace {

using refhost::sql::Mode;
using refhost::sql::OpenEmbedded;

class Durability : public DatabaseFiles {
protected:
    static host::ErrorNumber OpenError(const std::string& connection) {
        return test::ErrorNumberOf([&] { OpenEmbedded(connection); });
    }
};

TEST_F(Durability, AFileThatIsNotThereIsNotMade) {
    EXPECT_EQ(OpenError(Connection("none.db")), host::error_number::unspecified);
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
    EXPECT_EQ(OpenError("Provider=KovraAccount;Data Source=" + folder_.path().string()),
              host::error_number::unspecified);
    EXPECT_EQ(OpenError("Provider=KovraAccount"), host::error_number::unspecified);
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(Durability, AFileThatIsNoDatabaseIsRefusedAndKept) {
    std::ofstream(File("text.db"))
        << "this is no database, and long enough to have a header of 100 bytes if it were one: "
           "................................................";
    std::ofstream(File("empty.db")).flush();
    EXPECT_EQ(OpenError(Connection("text.db")), host::error_number::unspecified);
    EXPECT_EQ(OpenError(Connection("empty.db")), host::error_number::unspecified);
    EXPECT_EQ(std::filesystem::file_size(File("empty.db")), 0U);
    EXPECT_FALSE(std::filesystem::exists(File("QxSystem.db")));
}

TEST_F(Durability, ADamagedSystemDatabaseIsNoMissingOne) {
    Create("a.db");
    std::filesystem::remove(File("QxSystem.db"));
    EXPECT_EQ(OpenError(Connection("a.db")), 0);
    std::ofstream(File("QxSystem.db")) << std::string(4096, 'x');
    EXPECT_EQ(OpenError(Connection("a.db")), host::error_number::unspecified);
}

TEST_F(Durability, EverythingIsThereAfterReopening) {
    {
        const auto db = Create("a.db");
        db->Execute("create table t (id int identity(1,1) primary key, d decimal(20,4) default 1.5, ts timestamp)");
        db->Execute("create view v as select id, d from t where d > 1");
        db->Execute("create table QxSystem..p (x nvarchar(5))");
        db->Execute("insert into QxSystem..p values (N'甲')");
        db->Execute("insert into t (d) values (2)");
        db->Execute("insert into t default values");
        db->Execute("delete t where id = 2");
    }
    const auto db = OpenEmbedded("provider=kovraaccount;DATA SOURCE=" + File("a.db"), Mode::open);
    RunCases(*db, std::array{
                      Case{"select * from v", "1 2.0000m"},
                      Case{"select x from QxSystem.dbo.P", "'甲'"},
                      Case{"insert into t default values", ""},
                      Case{"select id, d, ts from t", "1 2.0000m 0x00000000000007D1 | 3 1.5000m 0x00000000000007D3"},
                      Case{"select db_name()", "'a'"},
                      Case{"select id from a..t where id = 3", "3"},
                  });
    // A second account in the folder shares the system database.
    const auto other = Create("b.db");
    EXPECT_EQ(Answer(*other, "select x from QxSystem..p"), "'甲'");
}

TEST_F(Durability, CommitsAreSeenByOthersAndSurviveWithoutClosing) {
    // Never closed: what stands in the files is all that a killed process leaves.
    auto* writer = Create("a.db").release();
    writer->Execute("create table t (x int)");
    writer->Execute("insert into t values (1)");
    writer->BeginTrans();
    writer->Execute("insert into t values (2)");
    for (const char* suffix : {"", "-wal"}) {
        std::filesystem::copy_file(File("a.db") + suffix, File("killed.db") + suffix);
    }
    EXPECT_EQ(Answer(*OpenEmbedded(Connection("killed.db")), "select x from t"), "1");
    EXPECT_EQ(Answer(*OpenEmbedded(Connection("a.db")), "select x from t"), "1");
    writer->CommitTrans();
    EXPECT_EQ(Answer(*OpenEmbedded(Connection("a.db")), "select x from t"), "1 | 2");
    delete writer;
}

TEST_F(Durability, DefinitionsThatAnotherConnectionChangesAreNoticed) {
    const auto one = Create("a.db");
    const auto two = OpenEmbedded(Connection("a.db"), Mode::open);
    one->Execute("create table t (x int)");
    EXPECT_EQ(Answer(*two, "insert into t values ('5')"), "");
    EXPECT_EQ(Answer(*two, "select * from t"), "5");
    one->Execute("drop table t");
    one->Execute("create table t (y nvarchar(3), x nvarchar(10))");
    // The same texts, which mean something else now.
    EXPECT_EQ(Answer(*two, "insert into t values ('5')"),
              "-2147217900: Column name or number of supplied values does not match table definition.");
    EXPECT_EQ(Answer(*two, "insert into t values ('5', 'six')"), "");
    EXPECT_EQ(Answer(*two, "select * from t"), "'5' 'six'");
    one->Execute("create view v as select x from t");
    EXPECT_EQ(Answer(*two, "select * from v"), "'six'");
    one->Execute("drop view v");
    one->Execute("create view v as select y as z from t");
    EXPECT_EQ(Answer(*two, "select * from v"), "'5'");
    EXPECT_EQ(two->Query("select * from v").fields->front().name, "z");
    one->Execute("drop view v");
    EXPECT_EQ(Answer(*two, "select * from v"), "-2147217865: Invalid object name 'v'.");
}

TEST_F(Durability, RowVersionsCountAcrossConnections) {
    const auto one = Create("a.db");
    const auto two = OpenEmbedded(Connection("a.db"), Mode::open);
    one->Execute("create table t (x int, ts timestamp)");
    one->Execute("insert into t (x) values (1)");
    two->Execute("insert into t (x) values (2)");
    one->Execute("insert into t (x) values (3)");
    EXPECT_EQ(Answer(*two, "select ts from t"), "0x00000000000007D1 | 0x00000000000007D2 | 0x00000000000007D3");
}

} // namespace
} // namespace test_sql
