// When the disk is made to take what was committed. A file system in between counts.

#include "ClsInvSubject/ClsInvSubject.h"
#include "ClsKovra/ClsKovra.h"
#include "ClsKovraProof/ClsKovraProof.h"
#include "ClsOppSubject/ClsOppSubject.h"
#include "ClsOppSubjectST/ClsOppSubjectST.h"
#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "cli/Commands.h"
#include "refhost/Environment.h"
#include "refhost/eai/Login.h"
#include "refhost/xml/FileText.h"
#include "tests/refhost/sql/Support.h"
#include "tests/support/Paths.h"
#include "tests/support/Program.h"
#include "tests/support/TestAccount.h"

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace test_sql {
namespace {

using refhost::sql::Mode;
using refhost::sql::OpenEmbedded;

/// Counts the flushes of the write-ahead log of an account account.db, and passes everything on to the system's own
/// file system.
class CountingFiles {
public:
    CountingFiles() {
        system_ = sqlite3_vfs_find(nullptr);
        vfs_ = *system_;
        vfs_.zName = "counting";
        vfs_.xOpen = OpenFile;
        sqlite3_vfs_register(&vfs_, 1);
        flushes = 0;
    }
    ~CountingFiles() {
        onFlush = nullptr;
        sqlite3_vfs_unregister(&vfs_);
        sqlite3_vfs_register(system_, 1);
    }
    CountingFiles(const CountingFiles&) = delete;
    CountingFiles& operator=(const CountingFiles&) = delete;

    static inline int flushes = 0;
    /// Called before each, where there is one.
    static inline std::function<void()> onFlush;

private:
    static int OpenFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
        const int code = system_->xOpen(system_, name, file, flags, outFlags);
        if (code == SQLITE_OK && (flags & SQLITE_OPEN_WAL) != 0 && std::string_view(name).ends_with("account.db-wal")) {
            systemSync_ = file->pMethods->xSync;
            logMethods_ = *file->pMethods;
            logMethods_.xSync = [](sqlite3_file* log, int how) {
                ++flushes;
                if (onFlush) {
                    onFlush();
                }
                return systemSync_(log, how);
            };
            file->pMethods = &logMethods_;
        }
        return code;
    }

    static inline sqlite3_vfs* system_ = nullptr;
    static inline sqlite3_io_methods logMethods_;
    static inline int (*systemSync_)(sqlite3_file*, int) = nullptr;
    sqlite3_vfs vfs_;
};

class Synchronous : public testing::Test {
protected:
    std::string Connection(const char* more) const {
        return "Provider=KovraAccount;Data Source=" + (folder_.path() / "account.db").string() + more;
    }
    /// Flushes while ten transactions are committed, and then while the connection is closed. Another one stays open.
    std::pair<int, int> Flushes(const char* more) {
        const auto keeper = OpenEmbedded(Connection(""), Mode::create);
        keeper->Execute("if object_id('t') is null create table t (x int)");
        keeper->Execute("insert into t values (0)"); // a new log's first page is flushed whatever was chosen
        auto db = OpenEmbedded(Connection(more), Mode::open);
        CountingFiles::flushes = 0;
        for (int i = 0; i < 10; ++i) {
            db->BeginTrans();
            db->Execute("insert into t values (1)");
            db->CommitTrans();
        }
        const int committed = std::exchange(CountingFiles::flushes, 0);
        db.reset();
        return {committed, CountingFiles::flushes};
    }

    CountingFiles files_;
    test::TemporaryFolder folder_;
};

TEST_F(Synchronous, NormalFlushesOnceWhenTheConnectionIsClosed) {
    EXPECT_EQ(Flushes(""), std::pair(0, 1));
    EXPECT_EQ(Flushes(";Synchronous=Normal"), std::pair(0, 1));
}

TEST_F(Synchronous, FullFlushesWithEachCommit) { EXPECT_EQ(Flushes(";synchronous=full"), std::pair(10, 0)); }

TEST_F(Synchronous, ClosingFlushesNothingWhereNothingWasWritten) {
    const auto keeper = OpenEmbedded(Connection(""), Mode::create);
    auto db = OpenEmbedded(Connection(""), Mode::open);
    CountingFiles::flushes = 0;
    EXPECT_EQ(Answer(*db, "select 1"), "1");
    db.reset();
    EXPECT_EQ(CountingFiles::flushes, 0);
}

/// Flushes from the beginning of a call of `Transact` up to the result that it hands out.
template <class Class> int FlushesUntilResult(const char* example) {
    const test::TestAccount account(test::AccountContent::demo);
    const auto keeper = OpenEmbedded(account.connectionString(), Mode::open);
    keeper->Execute("create table flushed (x int)"); // a new log's first page is flushed whatever was chosen
    refhost::Environment environment;
    refhost::Login hostLogin(account.LoginXml(), environment);
    Class instance(environment);
    const std::string request = refhost::xml::ReadXmlFile((test::SourceFolder() / "examples" / example).string());
    CountingFiles::flushes = 0;
    const std::string result = instance.Transact(request, &hostLogin);
    EXPECT_NE(result.find("code=\"0\""), std::string::npos) << result;
    return CountingFiles::flushes;
}

TEST(SynchronousImport, FlushesOnceBeforeItHandsItsResultOut) {
    const CountingFiles files;
    EXPECT_EQ(FlushesUntilResult<kovra::ClsInvSubject>("inventory-settings.xml"), 1);
    EXPECT_EQ(FlushesUntilResult<kovra::ClsOppSubject>("opposite-settings.xml"), 1);
    EXPECT_EQ(FlushesUntilResult<kovra::ClsOppSubjectST>("standard-cost-settings.xml"), 1);
    EXPECT_EQ(FlushesUntilResult<kovra::ClsKovra>("opening-balances.xml"), 1);
    EXPECT_EQ(FlushesUntilResult<kovra::ClsKovraProof>("provisions.xml"), 1);
    EXPECT_EQ(FlushesUntilResult<kovra::ClsPriceJustVou>("price-voucher.xml"), 1);
}

// What a journal says was accepted stays accepted whatever happens to the power.
TEST(SynchronousImport, FlushesEachRowBeforeTheJournalTellsOfIt) {
    const CountingFiles files;
    for (const char* more : {"", ";Synchronous=Normal;Commit=Grouped"}) {
        const test::TestAccount account(test::AccountContent::demo);
        const auto keeper = OpenEmbedded(account.connectionString(), Mode::open);
        keeper->Execute("create table flushed (x int)"); // a new log's first page is flushed whatever was chosen
        const auto path = [&](const char* name) { return (account.folder() / name).string(); };
        test::WriteBytes(path("login.xml"),
                         "<login QxDbName=\"" + account.connectionString() + more + "\" cIYear=\"2024\"/>");
        test::WriteBytes(path("request.xml"),
                         "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\">"
                         "<row><cWhCode>01</cWhCode><cInvHead>140301</cInvHead></row>"
                         "<row><cWhCode>02</cWhCode><cInvHead>140301</cInvHead></row>"
                         "<row><cWhCode>03</cWhCode><cInvHead>140301</cInvHead></row></qxinterface>");
        std::vector<std::ptrdiff_t> toldBefore;
        CountingFiles::onFlush = [&] {
            toldBefore.push_back(std::ranges::count(test::ReadText(path("journal")), '\n') -
                                 1); // without its beginning
        };
        cli::Console console(cli::Language::english);
        testing::internal::CaptureStdout();
        cli::TransactArguments arguments;
        arguments.className = "ClsInvSubject";
        arguments.login = path("login.xml");
        arguments.journal = path("journal");
        arguments.request = path("request.xml");
        arguments.quiet = true;
        const int status = cli::RunTransact(arguments, console);
        const std::string result = testing::internal::GetCapturedStdout();
        EXPECT_EQ(status, cli::exit_status::done) << result;
        CountingFiles::onFlush = nullptr;
        EXPECT_EQ(toldBefore, (std::vector<std::ptrdiff_t>{0, 1, 2})) << more;
    }
}

TEST_F(Synchronous, AnyOtherWordIsRefused) {
    try {
        OpenEmbedded(Connection(";Synchronous=Off"), Mode::create);
        FAIL();
    } catch (const host::Error& error) {
        EXPECT_EQ(error.description(), "The connection string's Synchronous is Full or Normal, not 'Off'.");
    }
}

} // namespace
} // namespace test_sql
