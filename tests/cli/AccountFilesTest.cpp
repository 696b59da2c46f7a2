// `kovra account backup`, `restore`, `check` and `upgrade`.

#include "tests/cli/ProgramFixture.h"

#include <cstdio>

namespace test {
namespace {

namespace fs = std::filesystem;
using AccountFiles = Program;

TEST_F(AccountFiles, ABackupPutsAnImportBack) {
    const Ended backup = Kovra("account backup --login login.xml copy.db");
    EXPECT_EQ(backup.status, 0);
    EXPECT_EQ(backup.error, "Copied the account to copy.db. QxSystem.db is a file of its own; --system copies it.\n");
    EXPECT_EQ(Transact(oneSetting).output, accepted);
    EXPECT_EQ(account().Rows("select cWhCode from IA_HeadSet").size(), 1U);
    const Ended restored = Kovra("account restore --login login.xml copy.db");
    EXPECT_EQ(restored.status, 0);
    EXPECT_EQ(restored.error, "The account has the content of copy.db now.\n");
    EXPECT_TRUE(account().Rows("select cWhCode from IA_HeadSet").empty());
    EXPECT_EQ(account().Rows("select cWhCode from Warehouse").size(), 1U);
}

TEST_F(AccountFiles, ABackupOverwritesNothing) {
    Write("copy.db", "kept");
    const Ended run = Kovra("account backup --login login.xml copy.db");
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Contains(run.error, "The file \"copy.db\" exists already. Name another, or take it away."));
    EXPECT_EQ(Read(Path("copy.db")), "kept");
    EXPECT_EQ(Kovra("account backup --login login.xml").status, 2);
}

TEST_F(AccountFiles, TheSystemDatabaseIsCopiedOnItsOwn) {
    account().Run("insert into QxSystem..UA_Period (cAcc_Id, iYear, iId) values ('001', 2031, 1)");
    EXPECT_EQ(Kovra("account backup --login login.xml --system --lang zh system.db").error,
              "系统数据库已备份到 system.db。\n");
    account().Run("delete QxSystem..UA_Period");
    EXPECT_EQ(Kovra("account restore --login login.xml --system --lang zh system.db").error,
              "系统数据库已恢复为 system.db 的内容。\n");
    EXPECT_EQ(account().Rows("select iYear from QxSystem..UA_Period where iYear = 2031").size(), 1U);
}

TEST_F(AccountFiles, CheckingTellsDamage) {
    const Ended sound = Kovra("account check --login login.xml");
    EXPECT_EQ(sound.status, 0);
    EXPECT_EQ(sound.output, "");
    EXPECT_EQ(sound.error, "The account's files are sound.\n");
    // A page in the file's middle that is none.
    std::FILE* file = std::fopen(Path("account.db").c_str(), "r+b");
    ASSERT_NE(file, nullptr);
    std::fseek(file, static_cast<long>(fs::file_size(Path("account.db")) / 2 / 4096 * 4096), SEEK_SET);
    const std::string page(4096, '\x7f');
    EXPECT_EQ(std::fwrite(page.data(), 1, page.size(), file), page.size());
    std::fclose(file);
    const Ended damaged = Kovra("account check --login login.xml --lang zh");
    EXPECT_EQ(damaged.status, 1);
    EXPECT_TRUE(Contains(damaged.output, "account.db: "));
    EXPECT_EQ(damaged.error, "账套的数据库文件已损坏，可用 kovra account restore 从备份恢复。\n");
}

TEST_F(AccountFiles, UpgradingTellsTheFormats) {
    fs::create_directory(Path("old"));
    fs::copy_file(SourceFolder() / "tests/refhost/sql/files/format0/account.db", Path("old/old.db"));
    Write("old.xml",
          "<login QxDbName=\"Provider=KovraAccount;Data Source=old/old.db\" cAcc_Id=\"001\" cIYear=\"2024\"/>");
    EXPECT_EQ(Kovra("account upgrade --login old.xml").error, "Brought old/old.db from format 0 to format 2.\n");
    EXPECT_EQ(Kovra("account upgrade --login old.xml").error, "old/old.db has format 2 already.\n");
}

TEST_F(AccountFiles, AreOfEmbeddedAccountsAlone) {
    Write("odbc.xml", "<login QxDbName=\"Driver=" + OdbcDriverPath() + "\" cAcc_Id=\"001\" cIYear=\"2024\"/>");
    for (const char* command : {"backup --login odbc.xml copy.db", "restore --login odbc.xml copy.db",
                                "check --login odbc.xml", "upgrade --login odbc.xml"}) {
        const Ended run = Kovra(std::string("account ") + command);
        EXPECT_EQ(run.status, 2) << command;
        EXPECT_TRUE(Contains(run.error, "this login's account is on a server")) << command;
    }
}

} // namespace
} // namespace test
