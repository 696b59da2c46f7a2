// The program as a shell user meets it: exit status, standard output, standard error.

#include "refhost/sql/engine/EmbeddedDatabase.h"
#include "tests/cli/ProgramFixture.h"
#include "tests/support/TdsServer.h"

namespace test {
namespace {

namespace fs = std::filesystem;

TEST_F(Program, TellsItsVersion) {
    const Ended run = Kovra("--version");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output.rfind("kovra ", 0), 0U) << run.output;
}

TEST_F(Program, TellsItsUsage) {
    const Ended run = Kovra("--help");
    EXPECT_EQ(run.status, 0);
    for (const char* command : {"transact", "query", "sql", "account"}) {
        EXPECT_TRUE(Contains(run.output, command));
    }
}

TEST_F(Program, TellsItsExitStatusesInTheHelpOfEachCommand) {
    for (const char* command : {"--help", "transact --help", "account create --help"}) {
        const Ended run = Kovra(command);
        for (const char* status : {"\n  0  ", "\n  1  ", "\n  2  ", "\n  3  ", "\n  130  "}) {
            EXPECT_TRUE(Contains(run.output, status)) << command;
        }
    }
}

TEST_F(Program, SpeaksTheLanguageThatTheLocaleNames) {
    EXPECT_TRUE(Contains(Kovra("--help").output, "Usage: kovra"));
    EXPECT_TRUE(Contains(Kovra("--help", "LANG=zh_CN.UTF-8").output, "用法: kovra"));
    EXPECT_TRUE(Contains(Kovra("--help", "LANG=en_US.UTF-8 LC_MESSAGES=zh_CN.UTF-8").output, "用法: kovra"));
    EXPECT_TRUE(Contains(Kovra("--help", "LC_ALL=C LC_MESSAGES=zh_CN.UTF-8 LANG=zh_CN.UTF-8").output, "Usage: kovra"));
    EXPECT_TRUE(Contains(Kovra("--help", "LC_ALL= LANG=zh_CN.UTF-8").output, "用法: kovra"));
}

TEST_F(Program, SpeaksTheLanguageOfTheOptionWhereverItStands) {
    EXPECT_TRUE(Contains(Kovra("--lang zh --help").output, "用法: kovra"));
    EXPECT_TRUE(Contains(Kovra("transact --help --lang=zh").output, "用法: kovra transact"));
    EXPECT_TRUE(Contains(Kovra("--lang en --help", "LANG=zh_CN.UTF-8").output, "Usage: kovra"));
    EXPECT_EQ(Kovra("--lang fr --help").status, 2);
}

TEST_F(Program, TellsTheVersionsOfItsLibraries) {
    const Ended run = Kovra("--version");
    for (const char* library : {"\nlibxml2 2.", "\nSQLite 3.", "\nfmt ", "\nCLI11 "}) {
        EXPECT_TRUE(Contains(run.output, library));
    }
    EXPECT_TRUE(Contains(run.output, ProgramIsForWindows() ? "\nodbc32\n" : "\nunixODBC 2."));
}

TEST_F(Program, RefusesACallWithoutCommand) {
    const Ended run = Kovra("");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.error, "kovra: a command is missing\nkovra --help tells what there is\n");
}

TEST_F(Program, RefusesWhatItDoesNotKnow) {
    const Ended option = Kovra("transact --klass ClsKovra");
    EXPECT_EQ(option.status, 2);
    EXPECT_EQ(option.error, "kovra: --klass is not known here\nkovra transact --help tells what there is\n");
    const Ended command = Kovra("transakt --lang zh");
    EXPECT_EQ(command.status, 2);
    EXPECT_EQ(command.error, "kovra: 无法识别 transakt\n用法见 kovra --help\n");
}

TEST_F(Program, SaysInChineseWhatIsWrongWithFilesAndNumbers) {
    const std::string lang = " --lang zh";
    const auto says = [&](const std::string& arguments, const std::string& words) {
        const Ended run = Kovra(arguments + lang);
        EXPECT_EQ(run.status, 2) << arguments;
        EXPECT_EQ(run.error.substr(0, run.error.find('\n')), "kovra: " + words) << arguments;
    };
    const std::string transact = "transact --class ClsInvSubject --login ";
    Write("request.xml", oneSetting);
    fs::create_directory(Path("folder"));
    says(transact + "login.xml nowhere.xml", "无法读取 'nowhere.xml'：没有这个文件或文件夹");
    says(transact + "login.xml folder", "无法读取 'folder'：这是一个文件夹");
    says(transact + "nowhere.xml request.xml", "无法读取 'nowhere.xml'：没有这个文件或文件夹");
    says(transact + "request.xml request.xml", "'request.xml'：登录文件的根元素是 <qxinterface>，应为 <login>");
    Write("other.xml", "<?xml version=\"1.0\" encoding=\"Klingon\"?><login/>");
    says(transact + "login.xml other.xml", "无法读取 'other.xml'：未知的编码 'Klingon'");
    Write("other.xml", "<?xml version=\"1.0\"?><a>\xB2\xD6</a>");
    says(transact + "login.xml other.xml", "无法读取 'other.xml'：文件不是有效的 UTF-8");
    Write("other.xml", "<?xml version=\"1.0\" encoding=\"GBK\"?><a>\xFF</a>");
    says(transact + "login.xml other.xml", "无法读取 'other.xml'：第 39 字节不属于编码 'CP936'");
    Write("other.xml", "<login QxDbName=\"${env:KOVRA_NOT_SET}\"/>");
    says(transact + "other.xml request.xml", "'other.xml'：环境变量 'KOVRA_NOT_SET' 没有设置");
    says("sql --login login.xml", "没有要运行的语句：请给出 -e 语句或一个文件");
    says("sql --login login.xml --timeout soon", "--timeout: 应为从 1 起的整数");
    says(transact + "login.xml --trace folder/none/trace.jsonl request.xml",
         "folder/none/trace.jsonl: 没有这个文件或文件夹");
    if (!ProgramIsForWindows()) {
        // There the system only says that the folder must not be written.
        says(transact + "login.xml --journal folder request.xml", "'folder': 这是一个文件夹");
    }
    Write("other.xml", "<conditions><rule/></conditions>");
    says("query --login login.xml --conditions other.xml request.xml",
         "'other.xml' 中有 <rule>；条件的写法是 <condition name operation value logic>");
}

TEST_F(Program, RefusesAnUnknownClassAndNamesTheClasses) {
    const Ended run = Kovra("transact --class ClsNobody --login login.xml request.xml");
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(Contains(run.error, "ClsNobody"));
    EXPECT_TRUE(Contains(run.error, "ClsPriceJustVou"));
}

TEST_F(Program, WritesTheResultWithOneLineFeed) {
    const Ended run = Transact(oneSetting);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, accepted);
}

TEST_F(Program, ReadsTheRequestFromStandardInput) {
    Write("request.xml", oneSetting);
    EXPECT_EQ(Kovra("transact --class ClsInvSubject --login login.xml - < request.xml").output, accepted);
    EXPECT_EQ(account().Rows("select cWhCode from IA_HeadSet").size(), 1U);
}

TEST_F(Program, WritesNothingForAnEmptyResult) {
    Write("login.xml", "<login QxDbName=\"" + account().connectionString() + ";Delete Star=Accept\" cIYear=\"2023\"/>");
    const Ended run = Transact("<qxinterface roottag=\"row\" docid=\"D\" proc=\"EMPTY\"/>");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "");
}

TEST_F(Program, ReadsTheEncodingThatTheRequestNames) {
    // "仓" is B2 D6 in GBK.
    account().Run("insert into Warehouse (cWhCode) values (N'仓')");
    const Ended run =
        Transact("<?xml version=\"1.0\" encoding=\"GBK\"?><qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\">"
                 "<row><cWhCode>\xB2\xD6</cWhCode><cInvHead>1405</cInvHead></row></qxinterface>");
    EXPECT_TRUE(Contains(run.output, "key=\"仓库编码：仓， ， \" code=\"0\""));
}

TEST_F(Program, AnswersATruncatedRequestWithItsErrorResult) {
    const Ended run = Transact("<qxinterface roottag=\"row\"><row>");
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.output, "<error code=\"100\" dsc=\"解析XML时发生错误,请你检查XML参数格式\"/>\n");
}

TEST_F(Program, AnswersALoginWithoutConnectionStringWith438) {
    Write("login.xml", "<login cIYear=\"2023\"/>");
    const Ended run = Transact(oneSetting);
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.output, "<error code=\"438\" dsc=\"对象不支持该属性或方法\"/>\n");
}

TEST_F(Program, AnswersADatabaseThatIsNotThereAndCreatesNothing) {
    Write("login.xml", "<login QxDbName=\"Provider=KovraAccount;Data Source=nowhere.db\" cIYear=\"2023\"/>");
    const Ended run = Transact(oneSetting);
    EXPECT_EQ(run.status, 3);
    EXPECT_TRUE(Contains(run.output, "<error code=\"-2147467259\""));
    EXPECT_FALSE(fs::exists(Path("nowhere.db")));
}

TEST_F(Program, RefusesARequestThatIsNotThere) {
    const Ended run = Kovra("transact --class ClsInvSubject --login login.xml nowhere.xml");
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(Contains(run.error, "nowhere.xml"));
}

TEST_F(Program, RefusesAFolderAsRequest) {
    fs::create_directory(Path("folder"));
    const Ended run = Kovra("transact --class ClsInvSubject --login login.xml folder");
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(Contains(run.error, "folder"));
}

TEST_F(Program, RefusesBytesThatAreNotInTheirEncoding) {
    const Ended run = Transact("<?xml version=\"1.0\" encoding=\"UTF-8\"?><a>\xFF\xFE\xFA</a>");
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(Contains(run.error, "request.xml"));
}

TEST_F(Program, RefusesAnEncodingThatNobodyKnows) {
    const Ended run = Transact("<?xml version=\"1.0\" encoding=\"x-none\"?><a/>");
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(Contains(run.error, "x-none"));
}

TEST_F(Program, RefusesLoginsThatAreNone) {
    Write("request.xml", oneSetting);
    for (const char* login : {"", "no xml", "<other/>", "<login"}) {
        Write("bad.xml", login);
        const Ended run = Kovra("transact --class ClsInvSubject --login bad.xml request.xml");
        EXPECT_EQ(run.status, 2) << login;
        EXPECT_FALSE(run.error.empty()) << login;
    }
    EXPECT_EQ(Kovra("transact --class ClsInvSubject --login nowhere.xml request.xml").status, 2);
}

TEST_F(Program, ImportsNothingWhenTheTraceCannotBeWritten) {
    const Ended run = Transact(oneSetting, "--trace nowhere/trace.jsonl");
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(Contains(run.error, "nowhere/trace.jsonl"));
    EXPECT_TRUE(account().Rows("select * from IA_HeadSet").empty());
}

TEST_F(Program, TracesWithoutPasswords) {
    Write("login.xml", "<login QxDbName=\"" + account().connectionString() + ";Pwd=verysecret\" cIYear=\"2023\"/>");
    Transact(oneSetting, "--trace trace.jsonl");
    const std::string trace = Read(Path("trace.jsonl"));
    EXPECT_TRUE(Contains(trace, ";Pwd=***\""));
    EXPECT_EQ(trace.find("verysecret"), std::string::npos);
}

TEST_F(Program, SqlWritesEachRowAsAJsonObject) {
    const Ended run =
        Kovra("sql --login login.xml -e \"select 1 as a, N'仓\\\"' as b, null as c, cast(2.50 as decimal(5,2)) as d\"");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "{\"a\":1,\"b\":\"仓\\\"\",\"c\":null,\"d\":2.50}\n");
}

TEST_F(Program, SqlRunsTheBatchesOfAFile) {
    Write("script.sql", "create table t (a int)\nGO\ninsert into t (a) values (7)\ngo\nselect a from t\n");
    EXPECT_EQ(Kovra("sql --login login.xml script.sql").output, "{\"a\":7}\n");
}

TEST_F(Program, SqlShowsEveryResultOfABatchAndSaysTheRestOnStandardError) {
    const Ended run = Kovra("sql --lang en --login login.xml -e \"create table t (a int) insert into t values (1), (2) "
                            "select a from t select 'x' as b print 'done'\"");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "{\"a\":1}\n{\"a\":2}\n{\"b\":\"x\"}\n");
    EXPECT_EQ(run.error, "(2 rows)\ndone\n");
}

TEST_F(Program, SqlHandsOverWhatCameBeforeAnErrorAndBehindIt) {
    const Ended run =
        Kovra("sql --login login.xml -e \"select 1 as a select 1/0 as b select 2 as c\" -e \"select 3 as d\"");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "{\"a\":1}\n{\"c\":2}\n");
    EXPECT_EQ(run.error, "-2147467259: Divide by zero error encountered.\n");
}

TEST_F(Program, SqlWritesTablesAndCsv) {
    const std::string statement =
        " -e \"select N'仓,库' as n, cast(1.5 as decimal(5,2)) as d, null as e union all select 'b', 12, 7\"";
    EXPECT_EQ(Kovra("sql --lang en --login login.xml --format table" + statement).output, "n          d     e\n"
                                                                                          "-----  -----  ----\n"
                                                                                          "仓,库   1.50  NULL\n"
                                                                                          "b      12.00     7\n"
                                                                                          "(2 rows)\n");
    EXPECT_EQ(Kovra("sql --login login.xml --format csv" + statement).output,
              "n,d,e\r\n\"仓,库\",1.50,\r\nb,12.00,7\r\n");
    EXPECT_EQ(Kovra("sql --login login.xml --format xml" + statement).status, 2);
}

TEST_F(Program, SqlEndsABatchWhenItsTimeIsOver) {
    const Ended run = Kovra("sql --login login.xml --timeout 1 -e \"while 1 = 1 print 'on'\"");
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Contains(run.error, "-2147217871: Query timeout expired\n"));
    EXPECT_EQ(Kovra("sql --login login.xml --timeout 0 -e 'select 1'").status, 2);
}

TEST_F(Program, SqlReportsAnErrorByNumberAndMessage) {
    const Ended run = Kovra("sql --login login.xml -e 'select * from nowhere'");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.error, "-2147217865: Invalid object name 'nowhere'.\n");
}

TEST_F(Program, SqlRefusesACallWithoutStatements) { EXPECT_EQ(Kovra("sql --login login.xml").status, 2); }

TEST_F(Program, AccountCreateLeavesAnExistingAccountWhole) {
    Transact(oneSetting);
    const Ended run = Kovra("account create --login login.xml --demo");
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Contains(run.error, "The database holds an account already."));
    EXPECT_EQ(account().Rows("select cWhCode from IA_HeadSet").size(), 1U);
    EXPECT_EQ(account().Rows("select cWhCode from Warehouse").size(), 1U);
}

TEST_F(Program, AccountCreateMakesAFileWithACompany) {
    Write("new.xml", "<login QxDbName=\"Provider=KovraAccount;Data Source=new.db\" cAcc_Id=\"001\" cIYear=\"2024\"/>");
    EXPECT_EQ(Kovra("account create --login new.xml --demo").status, 0);
    EXPECT_TRUE(fs::exists(Path("new.db")));
    EXPECT_EQ(Kovra("sql --login new.xml -e \"select count(*) as n from AccInformation where cSysID='IA'\"").status, 0);
}

TEST_F(Program, WorksAlikeBehindOdbc) {
    // Empty databases, as an administrator hands them out.
    refhost::sql::OpenEmbedded("Provider=KovraAccount;Data Source=" + Path("server.db"), refhost::sql::Mode::create);
    Write("odbc.xml", "<login QxDbName=\"Driver=" + OdbcDriverPath() +
                          ";Data Source=server.db;Pwd=verysecret\" "
                          "cAcc_Id=\"001\" cIYear=\"2024\"/>");
    const Ended created = Kovra("account create --login odbc.xml --demo");
    EXPECT_EQ(created.status, 0) << created.error;
    EXPECT_EQ(Kovra("sql --login odbc.xml -e \"select bend from code where ccode = '140301' and iyear = 2024\"").output,
              "{\"bend\":true}\n");
    Write("setting.xml", "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\"><row><cWhCode>01</cWhCode>"
                         "<cInvHead>140301</cInvHead></row></qxinterface>");
    EXPECT_EQ(Kovra("transact --class ClsInvSubject --login odbc.xml setting.xml").output, accepted);
    const Ended refused = Kovra("sql --login odbc.xml -e 'select * from nowhere'");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.error, "-2147217865: Invalid object name 'nowhere'.\n");
}

// By the driver of FreeTDS; kovra.exe goes to it through the ODBC of its system.
TEST_F(Program, ImportsIntoASqlServer) {
    const TdsServer server(account().connectionString(), {});
    Write("server.xml", "<login QxDbName=\"" + server.ConnectionString() + "\" cAcc_Id=\"001\" cIYear=\"2023\"/>");
    Write("settings.xml", "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\">"
                          "<row><cWhCode>01</cWhCode><cInvHead>1405</cInvHead></row>"
                          "<row><cWhCode>不存在</cWhCode><cInvHead>1405</cInvHead></row></qxinterface>");
    const Ended imported = Kovra("transact --class ClsInvSubject --login server.xml settings.xml");
    EXPECT_EQ(imported.status, 1) << imported.error;
    EXPECT_EQ(imported.output, "<qxinterface docid=\"D\" proc=\"ADD\">"
                               "<item key=\"仓库编码：01， ， \" code=\"0\" dsc=\"ok\"/>"
                               "<item key=\"仓库编码：不存在， ， \" code=\"101\" dsc=\"仓库编码不合法。\"/>"
                               "</qxinterface>\n");
    EXPECT_EQ(account().Rows("select cWhCode, cInvHead, iYear from IA_HeadSet"),
              std::vector<std::string>{R"({"cWhCode":"01","cInvHead":"1405","iYear":2023})"});
    EXPECT_EQ(Kovra("sql --login server.xml -e \"select cWhName from Warehouse where cWhName = N'原料库'\"").output,
              "{\"cWhName\":\"原料库\"}\n");
    const Ended refused = Kovra("sql --login server.xml -e 'select * from nowhere'");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.error, "-2147217865: Invalid object name 'nowhere'.\n");
}

} // namespace
} // namespace test
