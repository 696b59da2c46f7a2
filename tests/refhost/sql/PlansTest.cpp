#include "tests/refhost/sql/Support.h"

#include <algorithm>
#include <random>

namespace test_sql {
namespace {

/// How SQLite would find the rows: the last line of its query plan, that of the innermost table.
std::string Search(refhost::sql::EmbeddedDatabase& db, const std::string& sql) {
    const std::string explain = "EXPLAIN QUERY PLAN " + db.Translate(sql).text;
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(db.Handle(), explain.c_str(), -1, &raw, nullptr) != SQLITE_OK) {
        return sqlite3_errmsg(db.Handle());
    }
    const refhost::sql::StatementHandle statement(raw);
    std::string last;
    while (sqlite3_step(raw) == SQLITE_ROW) {
        last = reinterpret_cast<const char*>(sqlite3_column_text(raw, 3));
    }
    return last;
}

TEST(Plans, StatementsOfOneShapeShareOne) {
    const auto db = OpenMemory();
    db->Execute("create table t (c nvarchar(20), n int, d datetime, q decimal(20,4))");
    const std::size_t before = db->TranslationCount();
    for (int i = 1; i <= 50; ++i) {
        const std::string number = std::to_string(i);
        db->Execute("insert into t (c, n, d, q) values (N'名" + number + "', " + number + ", '2023-01-" +
                    std::string(i % 28 < 9 ? "0" : "") + std::to_string(i % 28 + 1) + "', cast(" + number +
                    ".25 as decimal(38,4)))");
        EXPECT_EQ(Answer(*db, "select n from t where c = N'名" + number + "' and isnull(c, N'') = N'名" + number + "'"),
                  number);
        db->Execute("update t set n = -" + number + " where c = N'名" + number + "'");
        db->Execute("delete t where n = -" + number + " and q = " + number + ".25");
    }
    EXPECT_EQ(db->TranslationCount() - before, 4U);
    EXPECT_EQ(db->PlanCount(), 4U);
    EXPECT_EQ(Answer(*db, "select count(*) from t"), "0");
}

TEST(Plans, LiteralsThatShapeTheAnswerHaveTheirOwn) {
    const auto db = OpenMemory();
    db->Execute("create table t (n int)");
    db->Execute("insert into t values (1), (2), (3)");
    EXPECT_EQ(Answer(*db, "select top 1 n from t"), "1");
    EXPECT_EQ(Answer(*db, "select top 2 n from t"), "1 | 2");
    EXPECT_EQ(db->Query("select 'ab' as x").fields->front().definedSize, 2);
    EXPECT_EQ(db->Query("select 'abcd' as x").fields->front().definedSize, 4);
    EXPECT_EQ(Answer(*db, "select isnull(Null, 'a')"), "'a'");
    EXPECT_EQ(Answer(*db, "select isnull(n, 5) from t where n = 1"), "1");
    EXPECT_EQ(Answer(*db, "select convert(varchar(10), 12, 0)"), "'12'");
    EXPECT_EQ(Answer(*db, "select 1.5 * 2"), "3.0m");
    EXPECT_EQ(Answer(*db, "select 1.25 * 2"), "2.50m");
    EXPECT_EQ(Answer(*db, "select n from t order by 1"), "1 | 2 | 3");
    EXPECT_EQ(Answer(*db, "select n from t order by 2"),
              "-2147217900: The ORDER BY position number 2 is out of range of the number of items in the select list.");
}

TEST(Plans, AreBounded) {
    const auto db = OpenMemory();
    for (int i = 0; i < 5000; ++i) {
        db->Execute("select 1 as c" + std::to_string(i));
    }
    EXPECT_LE(db->PlanCount(), 1024U);
}

TEST(Plans, KeysAreLookedUpInIndexes) {
    const auto db = OpenMemory();
    db->Execute("create table IA_OppHead (AutoID int identity(1,1) primary key, cRdCode nvarchar(12), cInvcCode "
                "nvarchar(12), cInvCode nvarchar(60), cDepCode nvarchar(12), iYear smallint)");
    db->Execute("create index ix on IA_OppHead (cInvCode, cDepCode, cInvcCode, cRdCode, iYear)");
    db->Execute(
        "create table code (iyear smallint not null, ccode nvarchar(40) not null, bend bit, primary key (ccode, "
        "iyear))");
    EXPECT_EQ(Search(*db, "select ccode from code where ccode = '1' and  bend =1 and iyear =2023").substr(0, 40),
              "SEARCH t0 USING INDEX code|PK__code__75D");
    const std::string all = "(<expr>=? AND <expr>=? AND <expr>=? AND <expr>=? AND iYear=?)";
    for (const char* condition : {
             "isnull(cRdCode,N'') = N'101' And isnull(cInvcCode,N'') = N'' And isnull(cInvCode,N'') = N'A' And "
             "isnull(cDepCode,N'') = N'' And iyear = 2023",
             "cRdCode = N'101' And isnull(cInvcCode,N'') = N'' And isnull(cInvCode,N'') = N'' And cDepCode = N'02' And "
             "iyear = 2023",
             "isnull(cRdCode,N'') = N'' And isnull(cInvcCode,N'') = N'' And cInvCode = N'A1' And isnull(cDepCode,N'') "
             "= "
             "N'' And iyear = 2023",
         }) {
        EXPECT_EQ(Search(*db, std::string("Select AutoID From IA_OppHead Where ") + condition),
                  "SEARCH t0 USING INDEX IA_OppHead|ix " + all)
            << condition;
    }
    EXPECT_EQ(Search(*db, "Select AutoID From IA_OppHead Where cInvCode = 'A1' And cDepCode = '02' And iyear = 2023"),
              "SEARCH t0 USING INDEX IA_OppHead|ix (<expr>=? AND <expr>=?)");
    EXPECT_EQ(
        Search(*db, "Select b.AutoID From code a inner join IA_OppHead b on a.ccode = b.cInvCode and a.iyear = 2023")
            .substr(0, 39),
        "SEARCH t1 USING INDEX IA_OppHead|ix (<e");
    EXPECT_EQ(Search(*db, "Select b.AutoID From code a left join IA_OppHead b on a.ccode = b.cInvCode"),
              "SEARCH t1 USING INDEX IA_OppHead|ix (<expr>=?) LEFT-JOIN");
    EXPECT_EQ(Search(*db, "Select (Select max(b.AutoID) From IA_OppHead b Where b.cInvCode = a.ccode) From code a"),
              "SEARCH t1 USING INDEX IA_OppHead|ix (<expr>=?)");
    // Null is not the empty text, whatever the index holds.
    db->Execute("insert into IA_OppHead (cInvCode, cDepCode) values (Null, ''), ('', Null)");
    EXPECT_EQ(Answer(*db, "select AutoID from IA_OppHead where cInvCode = ''"), "2");
    EXPECT_EQ(Answer(*db, "select AutoID from IA_OppHead where cInvCode <= 'x'"), "2");
    EXPECT_EQ(Answer(*db, "select AutoID from IA_OppHead where isnull(cInvCode, '') = ''"), "1 | 2");
    EXPECT_EQ(Answer(*db, "select AutoID from IA_OppHead where cInvCode = cDepCode"), "");
    db->Execute("insert into code (iyear, ccode) values (2023, ''), (2023, 'a')");
    db->Execute("insert into IA_OppHead (cInvCode) values ('A '), ('a')");
    EXPECT_EQ(
        Answer(*db,
               "select a.ccode, b.AutoID from code a left join IA_OppHead b on a.ccode = b.cInvCode order by 1, 2"),
        "'' 2 | 'a' 3 | 'a' 4");
}

TEST(Plans, TranslationsTellTheirParameters) {
    const auto db = OpenMemory();
    db->Execute("create table t (c nvarchar(20), n int)");
    const refhost::sql::Translation translation = db->Translate("insert into t values (N'it''s', '7')");
    EXPECT_EQ(translation.text, "INSERT INTO main.\"t\" (\"c\", \"n\") VALUES (?1, ?2)");
    ASSERT_EQ(translation.parameters.size(), 2U);
    EXPECT_EQ(Show(translation.parameters[0]), "'it's'");
    EXPECT_EQ(Show(translation.parameters[1]), "7");
}

TEST(Robustness, AnyTextGivesAnAnswerOrAnError) {
    const auto db = OpenMemory();
    db->Execute("create table t (a nvarchar(10), n int, d decimal(10,2), dt datetime)");
    db->Execute("insert into t values (N'甲', 1, 1.5, '2023-01-01')");
    const std::vector<std::string> pieces{
        "select",
        "top",
        "1",
        "*",
        "from",
        "t",
        "where",
        "a",
        "=",
        "'x'",
        "N'中'",
        "and",
        "or",
        "(",
        ")",
        ",",
        "n",
        "d",
        "dt",
        "+",
        "-",
        "/",
        "0",
        "2.5",
        "1e400",
        "99999999999999999999999999999999999999999",
        "null",
        "is",
        "not",
        "in",
        "like",
        "between",
        "case",
        "when",
        "then",
        "end",
        "isnull(",
        "cast(",
        "as",
        "int",
        "decimal(38,4)",
        "insert into",
        "values",
        "update",
        "set",
        "delete",
        "group by",
        "order by",
        "union",
        "exists",
        "sum(",
        "count(",
        "left(",
        "convert(varchar(5),",
        ";",
        "'",
        "[",
        "]",
        "\"",
        "/*",
        "--",
        "\n",
        "0x",
        "0xZ",
        "@@identity",
        ".",
        "..",
        "%",
        "create table u (",
        "drop table u",
        "begin",
        "if",
        std::string(1, '\0'),
        "\xff\xfe",
        "\x01",
        "create view w as",
        "create index",
        "identity(1,1)",
        "default",
    };
    std::mt19937 random(42);
    std::size_t answered = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string sql;
        const std::size_t length = 1 + random() % 14;
        for (std::size_t k = 0; k < length; ++k) {
            sql += pieces[random() % pieces.size()];
            sql += random() % 8 == 0 ? "" : " ";
        }
        const std::string answer = Answer(*db, sql);
        answered += answer.rfind("-21", 0) == 0 ? 0U : 1U;
        EXPECT_EQ(answer.find("near \""), std::string::npos) << sql << "\n" << answer; // SQLite's own syntax error
        EXPECT_EQ(answer.find("no such"), std::string::npos) << sql << "\n" << answer;
    }
    EXPECT_GT(answered, 0U);
}

TEST(Robustness, DeepAndLongStatementsAreBounded) {
    const auto db = OpenMemory();
    const auto repeat = [](const std::string& text, int times) {
        std::string all;
        for (int i = 0; i < times; ++i) {
            all += text;
        }
        return all;
    };
    const std::string deep =
        "-2147217900: Some part of your SQL statement is nested too deeply. Rewrite the query or break "
        "it up into smaller queries.";
    for (const int times : {100000, 30}) {
        EXPECT_EQ(Answer(*db, "select " + repeat("(", times) + "1" + repeat(")", times)), times > 1000 ? deep : "1");
        EXPECT_EQ(Answer(*db, "select 1 where " + repeat("not ", times) + "1=1"), times > 1000 ? deep : "1");
    }
    EXPECT_EQ(Answer(*db, "select " + repeat("- ", 100000) + "1"), deep);
    EXPECT_EQ(Answer(*db, "select 1 where " + repeat("(", 100000)), deep);
    EXPECT_EQ(Answer(*db, "select " + repeat("case when 1=1 then ", 100000) + "1"), deep);
    EXPECT_EQ(Answer(*db, "select 0 where " + repeat("1=0 or ", 5000) + "1=1"), "0");
    EXPECT_EQ(Answer(*db, "select " + repeat("1+", 100000) + "1"), deep);
    EXPECT_EQ(Answer(*db, "select 0 where 1 in (" + repeat("0,", 5000) + "1)"), "0");
    EXPECT_EQ(Answer(*db, "select len('" + repeat("ab", 500000) + "')"), "1000000");
    EXPECT_EQ(Answer(*db, repeat("/*", 100000)), "-2147217900: Missing end comment mark '*/'.");
}

TEST(Robustness, TextsHoldAnyBytes) {
    const auto db = OpenMemory();
    db->Execute("create table t (c nvarchar(20))");
    const std::string odd("a\0b\xff\xc3", 5);
    EXPECT_EQ(Answer(*db, "insert into t values (N'" + odd + "')"), "");
    EXPECT_EQ(Answer(*db, "select c from t where c = N'" + odd + "'"), "'" + odd + "'");
    EXPECT_EQ(Answer(*db, "select isnull(c, N'" + odd + "') from t"), "'" + odd + "'");
    // Without N it goes through the code page, which has no such bytes.
    EXPECT_EQ(Answer(*db, "select '" + odd + "'"), "'" + std::string("a\0b??", 5) + "'");
}

} // namespace
} // namespace test_sql
