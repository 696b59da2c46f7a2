// `kovra login` and what a login file leaves to its surroundings: passwords, and the folder that it lies in.

#include "tests/cli/ProgramFixture.h"

namespace test {
namespace {

namespace fs = std::filesystem;

TEST_F(Program, LoginInitMakesAFileThatItsOwnerAloneCanRead) {
    const Ended run = Kovra("login init --account 002 --year 2025 --user u1 --name 王敏 mine.xml");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.error, "Made mine.xml, which you alone can read.\n"
                         "Next: kovra login check --login mine.xml\n");
    // Wine shows the rights of a user as those of the group too.
    const fs::perms shown = ProgramIsForWindows() ? ~fs::perms::group_all : fs::perms::mask;
    const auto rights = fs::status(Path("mine.xml")).permissions() & shown;
    EXPECT_EQ(rights, fs::perms::owner_read | fs::perms::owner_write);
    const std::string login = Read(Path("mine.xml"));
    for (const char* attribute : {"QxDbName=\"Provider=KovraAccount;Data Source=account.db\"", "cAcc_Id=\"002\"",
                                  "cIYear=\"2025\"", "cUserId=\"u1\"", "cUserName=\"王敏\"", "cUserPassWord=\"\"",
                                  "CurDate=\"20", "cServer=\"", "cSerial=\"", "iMonth=\"", "iStartPeriod=\"1\""}) {
        EXPECT_TRUE(Contains(login, attribute));
    }
}

TEST_F(Program, LoginInitEscapesWhatXmlReserves) {
    Kovra("login init --connection 'Driver=x;Pwd=a\"<&' mine.xml");
    EXPECT_TRUE(Contains(Read(Path("mine.xml")), "QxDbName=\"Driver=x;Pwd=a&quot;&lt;&amp;\""));
}

TEST_F(Program, LoginInitLeavesAnExistingFileAlone) {
    const std::string before = Read(Path("login.xml"));
    const Ended run = Kovra("login init login.xml");
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(Contains(run.error, "login.xml"));
    EXPECT_EQ(Read(Path("login.xml")), before);
}

TEST_F(Program, LoginInitThenAccountCreateThenCheck) {
    EXPECT_EQ(Kovra("login init --year 2024 --connection 'Provider=KovraAccount;Data Source=fresh.db' mine.xml").status,
              0);
    EXPECT_EQ(Kovra("login check --login mine.xml").status, 1);
    const Ended created = Kovra("account create --login mine.xml --demo");
    EXPECT_EQ(created.status, 0);
    EXPECT_EQ(created.output, "");
    EXPECT_EQ(created.error.rfind("Made an account: ", 0), 0U) << created.error;
    EXPECT_TRUE(Contains(created.error, "The demonstration company has 8 warehouses, 16 items, "));
    const Ended run = Kovra("login check --login mine.xml");
    EXPECT_EQ(run.status, 0) << run.output;
    EXPECT_TRUE(Contains(run.output, "\nDatabase: the embedded account database fresh.db\nVersion: SQLite 3."));
    EXPECT_TRUE(Contains(run.output, "\nInventory accounting starts on 2024-01-01.\nNo month of 2024 is closed.\n"));
    EXPECT_TRUE(Contains(run.output, "\nThe calendar of account 001 has 12 periods in 2024.\n"));
    EXPECT_TRUE(run.output.ends_with("\nThe inventory ledger holds 0 entries.\nThe login can be used.\n"));
}

TEST_F(Program, LoginCheckTellsOfEachAttribute) {
    Write("bad.xml", "<login QxDbName=\"Data Source=x\" cIYear=\"24\" CurDate=\"2024-02-30\" iMonth=\"13\" "
                     "cUserId=\"\" cUserPassWord=\"verysecret\" cAcc_Id=\"1\" cServer=\"s\" iStartPeriod=\"1\"/>");
    const Ended run = Kovra("login check --login bad.xml --lang zh");
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Contains(run.output, "属性"));
    EXPECT_TRUE(Contains(run.output, "没有指明数据库"));
    EXPECT_TRUE(Contains(run.output, "cIYear         24             不是四位数字的年度\n"));
    EXPECT_TRUE(Contains(run.output, "CurDate        2024-02-30     不是 YYYY-MM-DD 形式的日期\n"));
    EXPECT_TRUE(Contains(run.output, "iMonth         13             不是 1 到 12 的月份\n"));
    EXPECT_TRUE(Contains(run.output, "cUserName                     缺少；ClsPriceJustVou 需要它\n"));
    EXPECT_TRUE(Contains(run.output, "cUserPassWord  （不显示）     正确\n"));
    EXPECT_TRUE(Contains(run.output, "cUserId                       正确\n"));
    // The database, the year, the month, the date, the operator's name and the serial.
    EXPECT_TRUE(Contains(run.output, "登录文件有 6 处问题。\n"));
    EXPECT_FALSE(Contains(run.output, "verysecret"));
}

TEST_F(Program, LoginCheckTellsThatTheAccountCannotBeOpened) {
    Write("lost.xml", "<login QxDbName=\"Provider=KovraAccount;Data Source=nowhere.db;Pwd=verysecret\"/>");
    const Ended run = Kovra("login check --login lost.xml");
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Contains(run.output, "The account cannot be opened: -2147467259: "));
    EXPECT_TRUE(Contains(run.output, "Pwd=***"));
    EXPECT_FALSE(Contains(run.output, "verysecret"));
    EXPECT_FALSE(fs::exists(Path("nowhere.db")));
}

TEST_F(Program, LoginCheckTellsOfClosedMonths) {
    account().Run("insert into GL_mend (iyear, iperiod, bflag_IA) values (2023, 0, 1), (2023, 1, 1), (2023, 12, 1), "
                  "(2022, 2, 1), (2023, 3, 0)");
    Write("login.xml", account().LoginXml());
    const Ended run = Kovra("login check --login login.xml");
    EXPECT_TRUE(Contains(run.output, "Closed months of 2023: 1, 12.\n"
                                     "December of 2023 is closed: account settings are refused.\n"));
}

TEST_F(Program, LooksForARelativeDataSourceBesideTheLogin) {
    fs::create_directory(Path("there"));
    Write("there/mine.xml",
          "<login QxDbName=\"Provider=KovraAccount; Data Source = my.db ;Delete Star=Accept\" cAcc_Id=\"1\" "
          "cIYear=\"2024\"/>");
    EXPECT_EQ(Kovra("account create --login there/mine.xml").status, 0);
    EXPECT_TRUE(fs::exists(Path("there/my.db")));
    EXPECT_TRUE(fs::exists(Path("there/QxSystem.db")));
    EXPECT_FALSE(fs::exists(Path("my.db")));
    EXPECT_EQ(Kovra("sql --login there/mine.xml -e 'select 1 as a'").output, "{\"a\":1}\n");
    EXPECT_EQ(Kovra("sql --login \"$PWD/there/mine.xml\" -e 'select 1 as a'").output, "{\"a\":1}\n");
    // An absolute one and one in memory stay what they are.
    Write("there/memory.xml", "<login QxDbName=\"Provider=KovraAccount;Data Source=:memory:\" cAcc_Id=\"1\"/>");
    EXPECT_EQ(Kovra("account create --login there/memory.xml").status, 0);
    Write("there/absolute.xml", account().LoginXml());
    EXPECT_EQ(Kovra("sql --login there/absolute.xml -e 'select 1 as a'").output, "{\"a\":1}\n");
}

TEST_F(Program, TakesAPasswordFromTheEnvironmentOrAFile) {
    // The driver opens its file whatever the password; the trace shows that one was given, and where it ends.
    const std::string driver = "Driver=" + OdbcDriverPath() + ";Data Source=account.db;";
    Write("env.xml", "<login QxDbName=\"" + driver + "Pwd=${env:KOVRA_TEST_PASSWORD};App=a\" cIYear=\"2023\"/>");
    Write("request.xml", oneSetting);
    const Ended run = Kovra("transact --class ClsInvSubject --login env.xml --trace trace.jsonl request.xml",
                            "KOVRA_TEST_PASSWORD='a;b}c'");
    EXPECT_EQ(run.status, 0) << run.error;
    EXPECT_TRUE(Contains(Read(Path("trace.jsonl")), "Data Source=account.db;Pwd=***;App=a\""));

    fs::create_directory(Path("there"));
    Write("there/secret", "s3cret\nnot this\n");
    Write("there/file.xml", "<login QxDbName=\"Provider=KovraAccount;Data Source=../account.db\" cIYear=\"2023\" "
                            "cUserPassWord=\"${file:secret}\"/>");
    EXPECT_TRUE(Contains(Kovra("login check --login there/file.xml").output, "cUserPassWord  (hidden)"));
}

TEST_F(Program, RefusesALoginWhosePasswordIsNotThere) {
    Write("env.xml", "<login QxDbName=\"Driver=x;Pwd=${env:KOVRA_TEST_NOT_SET}\"/>");
    const Ended variable = Kovra("login check --login env.xml");
    EXPECT_EQ(variable.status, 2);
    EXPECT_EQ(variable.error, "kovra: 'env.xml': the environment variable 'KOVRA_TEST_NOT_SET' is not set\n");
    Write("file.xml", "<login cUserPassWord=\"${file:nowhere}\"/>");
    const Ended file = Kovra("login check --login file.xml");
    EXPECT_EQ(file.status, 2);
    EXPECT_TRUE(Contains(file.error, "nowhere"));
}

TEST_F(Program, LeavesOtherTextsBetweenBracesAlone) {
    Write("plain.xml", "<login QxDbName=\"Provider=KovraAccount;Data Source=account.db;X=${other:y};Y=${\" "
                       "cUserPassWord=\"\"/>");
    EXPECT_TRUE(Contains(Kovra("login check --login plain.xml").output, "X=${other:y};Y=${"));
}

} // namespace
} // namespace test
