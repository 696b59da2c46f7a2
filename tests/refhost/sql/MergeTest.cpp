// MERGE and OUTPUT; expectations from the pages "MERGE (Transact-SQL)" and "OUTPUT clause (Transact-SQL)".

#include "tests/refhost/sql/Places.h"
#include "tests/refhost/sql/Support.h"

#include <array>

namespace test_sql {
namespace {

class Merge : public AtEachPlace {
protected:
    Merge() {
        Run("create table stock (id int not null primary key, n int not null, name nvarchar(5), constraint CK_n check "
            "(n >= 0))");
        Run("insert into stock values (1, 10, N'一'), (2, 20, N'二'), (3, 30, N'三')");
        Run("create table news (id int, n int)");
        Run("insert into news values (2, 5), (3, -30), (4, 40)");
    }
};

INSTANTIATE_TEST_SUITE_P(On, Merge, testing::ValuesIn(Places()), PlaceName);

TEST_P(Merge, WritesWhatMatchesAndWhatDoesNot) {
    CheckBatches(std::array{
        Case{"merge into stock as t using news as s on t.id = s.id "
             "when matched and t.n + s.n = 0 then delete "
             "when matched then update set n += s.n, name = N'新' "
             "when not matched by target then insert (id, n) values (s.id, s.n) "
             "when not matched by source and t.id = 1 then update set name = default;",
             "4 written"},
        Case{"select id, n, name from stock order by id", "rows(id,n,name) 1 10 Null | 2 25 '新' | 4 40 Null"},
        Case{"merge stock using (values (1), (9)) s(id) on stock.id = s.id when not matched by source then delete;",
             "2 written"},
        Case{"select id from stock", "rows(id) 1"},
        Case{"with s as (select 1 id, 7 n) merge stock t using s on s.id = t.id when matched then update set n = s.n;",
             "1 written"},
        Case{"select n from stock", "rows(n) 7"},
        Case{"declare @n int = 8 merge stock t using (select 1 id) s on s.id = t.id when matched then update set n = "
             "@n; print @@rowcount",
             "1 written; says 1"},
        Case{"select n from stock", "rows(n) 8"},
    });
}

TEST_P(Merge, TellsEachActionWithItsRows) {
    Check(std::array{
        Case{"merge stock t using (select id, n from news where id <> 3) s on t.id = s.id "
             "when matched then update set n = s.n "
             "when not matched then insert (id, n) values (s.id, s.n) "
             "when not matched by source and t.id = 3 then delete "
             "output $action, deleted.id, deleted.n, inserted.id, inserted.n, s.n;",
             "'DELETE' 3 30 Null Null Null | 'UPDATE' 2 20 2 5 5 | 'INSERT' Null Null 4 40 40"},
        Case{"select id, n from stock order by id", "1 10 | 2 5 | 4 40"},
    });
}

TEST_P(Merge, IsWholeOrNotAtAll) {
    Check(std::array{
        Case{"merge stock t using news s on t.id = s.id when matched then update set n = s.n when not matched then "
             "insert (id, n) values (s.id, s.n);",
             "-2147217873: The MERGE statement conflicted with the CHECK constraint \"CK_n\". The conflict occurred in "
             "database \"account\", table \"dbo.stock\", column 'n'."},
        Case{"merge stock t using news s on 1 = 0 when not matched then insert (id, n) values (s.id, 0);",
             "-2147217873: Violation of PRIMARY KEY constraint 'PK__stock__75D7831F'. Cannot insert duplicate key in "
             "object 'dbo.stock'. The duplicate key value is (2)."},
        Case{"merge stock t using news s on t.id = s.id when not matched then insert (id) values (s.id);",
             "-2147217873: Cannot insert the value NULL into column 'n', table 'account.dbo.stock'; column does not "
             "allow nulls. INSERT fails."},
        Case{"select id, n from stock order by id", "1 10 | 2 20 | 3 30"},
    });
}

TEST_P(Merge, RefusesWhatTheServerRefuses) {
    Check(std::array{
        Case{"merge stock t using news s on t.id = s.id when matched then delete",
             "-2147217900: A MERGE statement must be terminated by a semi-colon (;)."},
        Case{"merge stock t using (values (1), (1)) s(id) on t.id = s.id when matched then update set n = 1;",
             "-2147217900: The MERGE statement attempted to UPDATE or DELETE the same row more than once. This happens "
             "when a target row matches more than one source row. A MERGE statement cannot UPDATE/DELETE the same row "
             "of the target table multiple times. Refine the ON clause to ensure a target row matches at most one "
             "source row, or use the GROUP BY clause to group the source rows."},
        Case{"merge stock t using news s on t.id = s.id when matched then insert (id) values (1);",
             "-2147217900: An action of type 'INSERT' is not allowed in the 'WHEN MATCHED' clause of a MERGE "
             "statement."},
        Case{"merge stock t using news s on t.id = s.id when matched then update set n = 1 when matched and s.n = 1 "
             "then delete;",
             "-2147217900: In a MERGE statement, a 'WHEN MATCHED' clause with a search condition cannot appear after a "
             "'WHEN MATCHED' clause with no search condition."},
        // The server deletes one row.
        Case{"merge top (1) stock t using news s on t.id = s.id when matched then delete;",
             "-2147467259: The embedded database has no TOP of a MERGE."},
        Case{"select sum(n) from stock", "60"},
    });
}

TEST_P(Merge, WritesThroughAView) {
    Check(std::array{
        Case{"create view shown as select id as code, n from stock where id < 3", ""},
        Case{"merge shown v using news s on v.code = s.id when matched then update set n = s.n output inserted.code, "
             "deleted.n, inserted.n;",
             "2 20 5"},
        Case{"select id, n from stock order by id", "1 10 | 2 5 | 3 30"},
    });
}

class Output : public AtEachPlace {
protected:
    Output() {
        Run("create table t (id int identity(10,1) primary key, a nvarchar(5) default N'd', n int)");
        Run("insert into t (a, n) values ('x', 1), ('y', 2), ('z', 3)");
    }
};

INSTANTIATE_TEST_SUITE_P(On, Output, testing::ValuesIn(Places()), PlaceName);

TEST_P(Output, TellsWhatWasThereAndWhatIs) {
    Check(std::array{
        Case{"insert into t (a) output inserted.id, inserted.a + '!' values ('p'), (default)", "13 'p!' | 14 'd!'"},
        Case{"insert into t output inserted.* select a, n * 10 from t where id = 12", "15 'z' 30"},
        Case{"insert into t output inserted.id default values", "16"},
        Case{"update t set n = n + 1, a = upper(a) output deleted.n, inserted.n, inserted.a where id < 12",
             "1 2 'X' | 2 3 'Y'"},
        Case{"update top (1) t set n = 0 output deleted.id where id >= 12", "12"},
        Case{"delete t output deleted.*, 'gone' as w where id = 15", "15 'z' 30 'gone'"},
        Case{"delete x output deleted.id, y.w from t x join (values (13, 'w')) y(id, w) on x.id = y.id", "13 'w'"},
        Case{"update x set n = y.n output inserted.n - isnull(deleted.n, 0), y.n from t x, (values (14, 5)) y(id, n) "
             "where x.id = y.id",
             "5 5"},
        Case{"select id, a, n from t order by id", "10 'X' 2 | 11 'Y' 3 | 12 'z' 0 | 14 'd' 5 | 16 'd' Null"},
        Case{"update t set n = 1 output sum(inserted.n)",
             "-2147217900: An aggregate may not appear in the OUTPUT clause."},
        Case{"insert into t (a) output deleted.id values ('q')",
             "-2147217900: The multi-part identifier \"deleted.id\" could not be bound."},
        Case{"update t set n = 1 output inserted.nowhere", "-2147217900: Invalid column name 'nowhere'."},
    });
}

TEST_P(Output, GoesIntoATable) {
    CheckBatches(std::array{
        Case{"create table log (at int identity(1,1), was int, becomes int, w nvarchar(3) default N'w')", ""},
        Case{"update t set n = n * 2 output deleted.n, inserted.n into log (was, becomes) where id > 10", "2 written"},
        Case{"select at, was, becomes, w from log", "rows(at,was,becomes,w) 1 2 4 'w' | 2 3 6 'w'"},
        Case{"declare @t table (id int, a nvarchar(9)) delete t output deleted.id, deleted.a into @t output deleted.n "
             "where id = 12 select id, a from @t",
             "rows(n) 6; rows(id,a) 12 'z'"},
        // One that fails leaves nothing, neither here nor there.
        Case{"update t set n = 0 output inserted.n, inserted.n, 'long' into log (was, becomes, w)",
             "-2147217833: String or binary data would be truncated."},
        Case{"update t set n = 0 output inserted.n into log (was, becomes)",
             "-2147217900: Column name or number of supplied values does not match table definition."},
        Case{"select sum(n) s, (select count(*) from log) c from t", "rows(s,c) 5 2"},
    });
}

TEST_P(Output, TellsOfWritesThroughViews) {
    Check(std::array{
        Case{"create view v as select id as code, n as number from t where n < 3", ""},
        Case{"update v set number = 0 output inserted.code, deleted.number, inserted.number", "10 1 0 | 11 2 0"},
        Case{"insert into v (number) output inserted.code values (7)", "13"},
        Case{"delete v output deleted.code where number = 0", "10 | 11"},
        Case{"select id from t order by id", "12 | 13"},
    });
}

TEST_P(Output, AnIdentityNumberOfARefusedRowDoesNotComeBack) {
    Check(std::array{
        Case{"create unique index u on t (a)", ""},
        Case{"insert into t (a) output inserted.id values ('x')",
             "-2147217873: Cannot insert duplicate key row in object 'dbo.t' with unique index 'u'. The duplicate key "
             "value is (x)."},
        Case{"insert into t (a) output inserted.id values ('new')", "14"},
    });
}

} // namespace
} // namespace test_sql
