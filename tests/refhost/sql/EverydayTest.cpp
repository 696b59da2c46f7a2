#include "tests/refhost/sql/Support.h"

#include <array>

namespace test_sql {
namespace {

TEST(Everyday, WritesReadsAndRefuses) {
    const auto db = OpenMemory();
    RunCases(*db,
             std::array{
                 Case{"create table t (AutoID int identity(1,1) not null, cCode nvarchar(5) not null, cName "
                      "nvarchar(20) null, iYear smallint, constraint PK_t primary key (cCode))",
                      ""},
                 Case{"insert into t (cCode, cName, iYear) values ('a', N'中文', 2023)", ""},
                 Case{"INSERT t VALUES ('b', Null, 2024)", ""},
                 Case{"select * from dbo.[T] order by AutoID", "1 'a' '中文' 2023 | 2 'b' Null 2024"},
                 Case{"select AutoID from t where cCode = 'A  ' and iyear = 2023", "1"},
                 Case{"update t set cName = 'x', iYear = iYear + 1 where cCode = N'b'", ""},
                 Case{"select cName, iYear from t where cCode = 'b'", "'x' 2025"},
                 Case{"select a.cCode, b.cName from t a left join t b on a.iYear = b.iYear - 2", "'a' 'x' | 'b' Null"},
                 Case{"IF EXISTS (SELECT * FROM sysobjects WHERE id = OBJECT_ID(N'[dbo].[t]') AND type = N'U')\r\n"
                      "BEGIN\r\nDROP TABLE [dbo].[t]\r\nEnd\r\n",
                      ""},
                 Case{"select * from t", "-2147217865: Invalid object name 't'."},
             });
}

TEST(Everyday, NamesTheTokenThatIsWrong) {
    const auto db = OpenMemory();
    db->Execute("create table IA_HeadSet (cInvCode nvarchar(20), iYear int, cWhCode nvarchar(10))");
    RunCases(*db, std::array{
                      Case{"Delete * From IA_HeadSet", "-2147217900: Incorrect syntax near '*'."},
                      Case{"Update IA_HeadSet Set \r\n cInvCode = Null \r\n iYear = 2023\r\nWhere cWhCode = 1",
                           "-2147217900: Incorrect syntax near 'iYear'."},
                      Case{"select cInvCode from IA_HeadSet where cInvCode = 'A'B' and  iYear =1",
                           "-2147217900: Incorrect syntax near 'B'."},
                      Case{"select cInvCode from IA_HeadSet where cInvCode = 'A",
                           "-2147217900: Unclosed quotation mark after the character string 'A'."},
                      Case{"insert into IA_HeadSet (cInvCode) values ('a' or 'b'='c')",
                           "-2147217900: Incorrect syntax near the keyword 'or'."},
                      Case{"insert into IA_HeadSet (cInvCode, iYear) values ('a', )",
                           "-2147217900: Incorrect syntax near ')'."},
                      Case{"select 1; drop table IA_HeadSet", "-2147217900: Incorrect syntax near the keyword 'drop'."},
                      Case{"select nosuch from IA_HeadSet", "-2147217900: Invalid column name 'nosuch'."},
                      Case{"select cInvCode from dbo.nosuch", "-2147217865: Invalid object name 'dbo.nosuch'."},
                      Case{"select count(*) from IA_HeadSet", "0"},
                  });
}

} // namespace
} // namespace test_sql
