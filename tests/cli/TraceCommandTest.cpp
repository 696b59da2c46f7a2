// `kovra trace show`, and times in a trace.

#include "tests/cli/ProgramFixture.h"

namespace test {
namespace {

constexpr const char* timed =
    "{\"op\":\"Connect\",\"connection\":\"Provider=KovraAccount;Pwd=***\",\"user\":\"\",\"password\":\"\","
    "\"options\":-1,\"us\":1500}\n"
    "{\"op\":\"Open\",\"sql\":\"select *\\r\\n from code where ccode = '1405'\",\"cursor\":3,\"lock\":1,"
    "\"options\":1,\"location\":2,\"us\":250}\n"
    "{\"op\":\"Open\",\"sql\":\"select *\\r\\n from code where ccode = 'it''s'\",\"cursor\":3,\"lock\":1,"
    "\"options\":1,\"location\":2,\"us\":20}\n"
    "{\"op\":\"Execute\",\"sql\":\"delete from 仓库\",\"options\":-1,\"error\":-2147217865,\"us\":7}\n"
    "{\"op\":\"CommitTrans\",\"us\":30}\n";

TEST_F(Program, ShowsATraceInOrderWithItsSlowestAndRepeatedStatements) {
    Write("trace.jsonl", timed);
    const Ended run = Kovra("trace show trace.jsonl");
    EXPECT_EQ(run.status, 0) << run.error;
    EXPECT_EQ(run.output, "Line     ms  Operation    Error        Statement\n"
                          "----  -----  -----------  -----------  ----------------------------------------\n"
                          "   1  1.500  Connect                   Provider=KovraAccount;Pwd=***\n"
                          "   2  0.250  Open                      select * from code where ccode = '1405'\n"
                          "   3  0.020  Open                      select * from code where ccode = 'it''s'\n"
                          "   4  0.007  Execute      -2147217865  delete from 仓库\n"
                          "   5  0.030  CommitTrans\n"
                          "\n"
                          "The slowest:\n"
                          "Line     ms  Statement\n"
                          "----  -----  ----------------------------------------\n"
                          "   1  1.500  Provider=KovraAccount;Pwd=***\n"
                          "   2  0.250  select * from code where ccode = '1405'\n"
                          "   5  0.030  CommitTrans\n"
                          "   3  0.020  select * from code where ccode = 'it''s'\n"
                          "   4  0.007  delete from 仓库\n"
                          "\n"
                          "Statements that come more than once, whatever their values:\n"
                          "Times     ms  Statement\n"
                          "-----  -----  ----------------------------------\n"
                          "    2  0.270  select * from code where ccode = ?\n"
                          "\n"
                          "Operations: 5, failed: 1.\n"
                          "Time in the database: 1.807 ms.\n");
}

TEST_F(Program, ShowsATraceWithoutTimesInChinese) {
    Write("trace.jsonl", "{\"op\":\"BeginTrans\"}\r\n{\"op\":\"ConnectionLost\",\"description\":\"gone\"}\n");
    EXPECT_EQ(Kovra("trace show trace.jsonl --lang zh").output, "行  毫秒  操作            错误  语句\n"
                                                                "--  ----  --------------  ----  ----\n"
                                                                " 1        BeginTrans\n"
                                                                " 2        ConnectionLost        gone\n"
                                                                "\n"
                                                                "操作 2 次，失败 0 次。\n"
                                                                "跟踪中没有用时；加上 --trace-times 才会写出。\n");
}

TEST_F(Program, RefusesAFileThatIsNoTrace) {
    Write("trace.jsonl", "{\"op\":\"BeginTrans\"}\n<a/>\n");
    const Ended run = Kovra("trace show trace.jsonl");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.error, "kovra: line 2 is no line of a trace\n");
}

TEST_F(Program, WritesTimesWhereTheyAreAskedFor) {
    Transact(oneSetting, "--trace plain.jsonl");
    EXPECT_FALSE(Contains(Read(Path("plain.jsonl")), "\"us\":"));
    Transact(oneSetting, "--trace timed.jsonl --trace-times");
    std::istringstream lines(Read(Path("timed.jsonl")));
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        EXPECT_TRUE(Contains(line, ",\"us\":")) << line;
    }
    EXPECT_GE(count, 4U);
    EXPECT_TRUE(Contains(Kovra("trace show timed.jsonl").output, "Time in the database: "));
}

} // namespace
} // namespace test
