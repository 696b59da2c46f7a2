// Foreign keys, computed columns, identity steps and changes of tables that are there; expectations from the pages
// "CREATE TABLE", "ALTER TABLE" and from sys.messages.

#include "tests/refhost/sql/Places.h"
#include "tests/refhost/sql/Support.h"

#include <array>

namespace test_sql {
namespace {

class TableChange : public AtEachPlace {};

INSTANTIATE_TEST_SUITE_P(On, TableChange, testing::ValuesIn(Places()), PlaceName);

TEST_P(TableChange, ForeignKeysHold) {
    Check(std::array{
        Case{"create table owner (code nvarchar(5) not null, year int not null, note nvarchar(9), constraint PK_owner "
             "primary key (code), constraint UQ_owner unique (code, year))",
             ""},
        Case{"insert into owner values (N'a', 2023, null), (N'b', 2024, null)", ""},
        Case{"create table part (id int primary key, code nvarchar(5) constraint FK_part references owner, year int, "
             "constraint FK_both foreign key (code, year) references owner (code, year))",
             ""},
        Case{"insert into part values (1, N'Ａ', 2023), (2, null, 5), (3, N'b', null)", ""},
        Case{"insert into part (id, code) values (4, N'x')",
             "-2147217873: The INSERT statement conflicted with the FOREIGN KEY constraint \"FK_part\". The conflict "
             "occurred in database \"account\", table \"dbo.owner\", column 'code'."},
        Case{"insert into part values (4, N'a', 2024)",
             "-2147217873: The INSERT statement conflicted with the FOREIGN KEY constraint \"FK_both\". The conflict "
             "occurred in database \"account\", table \"dbo.owner\"."},
        Case{"update part set year = 1999 where id = 1",
             "-2147217873: The UPDATE statement conflicted with the FOREIGN KEY constraint \"FK_both\". The conflict "
             "occurred in database \"account\", table \"dbo.owner\"."},
        Case{"delete owner where code = N'b'",
             "-2147217873: The DELETE statement conflicted with the REFERENCE constraint \"FK_part\". The conflict "
             "occurred in database \"account\", table \"dbo.part\", column 'code'."},
        Case{"update owner set code = N'c' where code = N'b'",
             "-2147217873: The UPDATE statement conflicted with the REFERENCE constraint \"FK_part\". The conflict "
             "occurred in database \"account\", table \"dbo.part\", column 'code'."},
        Case{"merge part p using (values (9, N'z')) s(id, code) on p.id = s.id when not matched then insert (id, code) "
             "values (s.id, s.code);",
             "-2147217873: The MERGE statement conflicted with the FOREIGN KEY constraint \"FK_part\". The conflict "
             "occurred in database \"account\", table \"dbo.owner\", column 'code'."},
        Case{"drop table owner",
             "-2147217900: Could not drop object 'owner' because it is referenced by a FOREIGN KEY constraint."},
        Case{"truncate table owner",
             "-2147217900: Cannot truncate table 'owner' because it is being referenced by a FOREIGN KEY constraint."},
        Case{"alter table owner drop constraint PK_owner",
             "-2147217900: The constraint 'PK_owner' is being referenced by table 'part', foreign key constraint "
             "'FK_part'."},
        Case{"select id, code, year from part order by id", "1 'Ａ' 2023 | 2 Null 5 | 3 'b' Null"},
        Case{"drop table part", ""},
        Case{"drop table owner", ""},
    });
}

TEST_P(TableChange, ForeignKeysCascade) {
    Check(std::array{
        Case{"create table a (id int primary key)", ""},
        Case{"create table b (id int primary key, a int default 1 references a on delete cascade on update cascade)",
             ""},
        Case{"create table c (id int primary key, b int references b (id) on delete set null)", ""},
        Case{"insert into a values (1), (2)", ""},
        Case{"insert into b values (10, 1), (20, 2)", ""},
        Case{"insert into c values (100, 10), (200, 20)", ""},
        Case{"update a set id = 3 where id = 2", ""},
        Case{"select id, a from b order by id", "10 1 | 20 3"},
        Case{"delete a where id = 1", ""},
        Case{"select id from b", "20"},
        Case{"select id, b from c order by id", "100 Null | 200 20"},
    });
}

TEST_P(TableChange, AForeignKeyMayPointAtItsOwnTable) {
    Check(std::array{
        Case{"create table tree (id int primary key, up int, constraint FK_up foreign key (up) references tree (id))",
             ""},
        Case{"insert into tree values (2, 1), (1, null)", ""},
        Case{"insert into tree values (3, 9)",
             "-2147217873: The INSERT statement conflicted with the FOREIGN KEY SAME TABLE constraint \"FK_up\". The "
             "conflict occurred in database \"account\", table \"dbo.tree\", column 'id'."},
        Case{"delete tree where id = 1",
             "-2147217873: The DELETE statement conflicted with the SAME TABLE REFERENCE constraint \"FK_up\". The "
             "conflict occurred in database \"account\", table \"dbo.tree\", column 'up'."},
        Case{"delete tree", ""},
        Case{"drop table tree", ""},
    });
}

TEST_P(TableChange, AForeignKeyThatTiesNothingIsRefused) {
    Check(std::array{
        Case{"create table a (id int primary key, x int, w nvarchar(3))", ""},
        Case{"create table b (a int constraint F references nowhere)",
             "-2147217900: Foreign key 'F' references invalid table 'nowhere'."},
        Case{"create table b (a int constraint F references a (y))",
             "-2147217900: Foreign key 'F' references invalid column 'y' in referenced table 'a'."},
        Case{"create table b (a int constraint F references a (x))",
             "-2147217900: There are no primary or candidate keys in the referenced table 'a' that match the "
             "referencing column list in the foreign key 'F'."},
        Case{"create table b (a bigint constraint F references a)",
             "-2147217900: Column 'a.id' is not the same data type as referencing column 'b.a' in foreign key 'F'."},
        Case{"select count(*) from sysobjects where name = 'b'", "0"}, // nothing is left of them
    });
}

TEST_P(TableChange, ConstraintsComeAndGo) {
    Check(std::array{
        Case{"create table a (id int primary key)", ""},
        Case{"create table t (id int, a int, n int constraint DF_n default 5)", ""},
        Case{"insert into t values (1, 7, -1)", ""},
        Case{"alter table t add constraint CK_n check (n > 0)",
             "-2147217873: The ALTER TABLE statement conflicted with the CHECK constraint \"CK_n\". The conflict "
             "occurred in database \"account\", table \"dbo.t\", column 'n'."},
        Case{"alter table t with nocheck add constraint CK_n check (n > 0)", ""},
        Case{"update t set n = -2", "-2147217873: The UPDATE statement conflicted with the CHECK constraint \"CK_n\". "
                                    "The conflict occurred in database \"account\", table \"dbo.t\", column 'n'."},
        Case{"alter table t add constraint FK_a foreign key (a) references a",
             "-2147217873: The ALTER TABLE statement conflicted with the FOREIGN KEY constraint \"FK_a\". The conflict "
             "occurred in database \"account\", table \"dbo.a\", column 'id'."},
        Case{"insert into a values (7)", ""},
        Case{"alter table t add constraint FK_a foreign key (a) references a, constraint UQ_id unique (id)", ""},
        Case{"delete a", "-2147217873: The DELETE statement conflicted with the REFERENCE constraint \"FK_a\". The "
                         "conflict occurred in database \"account\", table \"dbo.t\", column 'a'."},
        Case{"alter table t drop column a", "-2147217900: The object 'FK_a' is dependent on column 'a'."},
        Case{"alter table t drop column id", "-2147217900: The object 'UQ_id' is dependent on column 'id'."},
        Case{"alter table t drop column n", "-2147217900: The object 'CK_n' is dependent on column 'n'."},
        Case{"alter table t drop constraint FK_a, constraint CK_n, UQ_id", ""},
        Case{"alter table t drop column n", "-2147217900: The object 'DF_n' is dependent on column 'n'."},
        Case{"alter table t drop constraint DF_n", ""},
        Case{"insert into t (id) values (1)", ""},
        Case{"alter table t add constraint DF_a default 3 for a", ""},
        Case{"insert into t (id) values (2)", ""},
        Case{"select id, a, n from t order by id, n desc", "1 7 -1 | 1 Null Null | 2 3 Null"},
        Case{"delete a", ""},
        Case{"alter table t drop constraint nothing", "-2147217900: 'nothing' is not a constraint."},
        Case{"select name, type from sys.objects where parent_object_id = object_id('t')", "'DF_a' 'D '"},
    });
}

TEST_P(TableChange, ComputedColumnsFollowTheOthers) {
    Check(std::array{
        Case{"create table t (a int, b decimal(5,2), c as a * b persisted, d as isnull(left(w, 2), N'-'), w "
             "nvarchar(9))",
             ""},
        Case{"insert into t values (2, 1.5, N'abc')", ""},
        Case{"insert into t (a) values (3)", ""},
        Case{"select * from t", "2 1.50m 3.00m 'ab' 'abc' | 3 Null Null '-' Null"},
        Case{"update t set b = 2 where a = 3", ""},
        Case{"select c, d from t where c = 6", "6.00m '-'"},
        Case{"alter table t add e as a + 1", ""},
        Case{"create index ix on t (e)", ""},
        Case{"select a, e from t where e = 4", "3 4"},
        Case{"insert into t (c) values (1)",
             "-2147217900: The column \"c\" cannot be modified because it is either a computed column or is the result "
             "of a UNION operator."},
        Case{"update t set e = 1", "-2147217900: The column \"e\" cannot be modified because it is either a computed "
                                   "column or is the result of a UNION operator."},
        Case{"alter table t drop column a", "-2147217900: The column 'c' is dependent on column 'a'."},
        Case{"create table u (a int, b as a + 1, c as b + 1)",
             "-2147217900: Computed column 'b' in table 'u' is not allowed to be used in another computed-column "
             "definition."},
        // The server takes it: the moment is that of the query.
        Case{"create table u (a int, t as getdate())",
             "-2147467259: The embedded account database takes no moment in computed columns and checks."},
        Case{"select name, is_computed from sys.columns where object_id = object_id('t') and name in ('a', 'c')",
             "'a' False | 'c' True"},
    });
}

TEST_P(TableChange, ColumnsChangeTheirType) {
    Check(std::array{
        Case{"create table t (id int primary key, n int, w nvarchar(3), m nvarchar(9))", ""},
        Case{"create index ix on t (w)", ""},
        Case{"insert into t values (1, 5, N'abc', N'12'), (2, null, N'b', N'x')", ""},
        Case{"create view v as select id, n, w from t", ""},
        Case{"alter table t alter column n decimal(9,2)", ""},
        Case{"alter table t alter column w nvarchar(10)", ""}, // a longer one disturbs no index
        Case{"update t set w = N'longer' where id = 2", ""},
        Case{"select n, w from v order by id", "5.00m 'abc' | Null 'longer'"},
        Case{"select id from t where w = N'LONGER'", "2"},
        Case{"alter table t alter column w int", "-2147217900: The index 'ix' is dependent on column 'w'."},
        Case{"alter table t alter column id bigint",
             "-2147217900: The object 'PK__t__75D7831F' is dependent on column 'id'."},
        Case{"alter table t alter column n decimal(9,2) not null",
             "-2147217873: Cannot insert the value NULL into column 'n', table 'account.dbo.t'; column does not allow "
             "nulls. UPDATE fails."},
        Case{"alter table t alter column m int",
             "-2147217913: Conversion failed when converting the nvarchar value 'x' to data type int."},
        Case{"alter table t alter column m nvarchar(1)", "-2147217833: String or binary data would be truncated."},
        Case{"update t set m = N'7', n = 1 where id = 2", ""},
        Case{"alter table t alter column m int not null", ""},
        Case{"select m + 1 from t order by id", "13 | 8"},
        Case{"insert into t (id) values (3)",
             "-2147217873: Cannot insert the value NULL into column 'm', table 'account.dbo.t'; column does not allow "
             "nulls. INSERT fails."},
        Case{"alter table t alter column nowhere int",
             "-2147217900: ALTER TABLE ALTER COLUMN failed because column 'nowhere' does not exist in table 't'."},
    });
}

TEST_P(TableChange, AChangeRollsBackWithItsTransaction) {
    CheckBatches(std::array{
        Case{"create table a (id int primary key) create table t (n int)", ""},
        Case{"insert into t values (5)", "1 written"},
        Case{"begin tran alter table t alter column n nvarchar(9) alter table t add constraint CK check (n <> N'x') "
             "alter table t add c as n + N'!' rollback",
             ""},
        Case{"select n + 1 x from t", "rows(x) 6"},
        Case{"insert into t values (7)", "1 written"},
        Case{"begin tran save tran s alter table t add f int constraint FK references a rollback tran s insert into t "
             "values (8) commit",
             "1 written"},
        Case{"select n from t", "rows(n) 5 | 7 | 8"},
    });
}

TEST_P(TableChange, IdentityColumnsCountInTheirSteps) {
    Check(std::array{
        Case{"create table t (id int identity(10,5) primary key, a int not null)", ""},
        Case{"insert into t values (1), (2)", ""},
        Case{"insert into t values (null)",
             "-2147217873: Cannot insert the value NULL into column 'a', table 'account.dbo.t'; column does not allow "
             "nulls. INSERT fails."},
        Case{"insert into t select 3 union all select 4", ""}, // the number of the refused row does not come back
        Case{"select id, a from t order by id", "10 1 | 15 2 | 25 3 | 30 4"},
        Case{"select @@identity", "30m"},
        Case{"set identity_insert t on", ""},
        Case{"insert into t (id, a) values (101, 5)", ""},
        Case{"set identity_insert t off", ""},
        Case{"insert into t output inserted.id values (6)", "106"},
        Case{"truncate table t", ""},
        Case{"insert into t output inserted.id values (7)", "10"},
        Case{"create table down (id int identity(0,-1), a int)", ""},
        Case{"insert into down output inserted.id values (1), (2), (3)", "0 | -1 | -2"},
        Case{"create table tiny (id tinyint identity(200,50), a int)", ""},
        Case{"insert into tiny values (1), (2)", ""},
        Case{"insert into tiny values (3)",
             "-2147217833: Arithmetic overflow error converting IDENTITY to data type tinyint."},
        Case{"create table none (id int identity(1,0))",
             "-2147217900: Identity column 'id' contains invalid INCREMENT."},
    });
    CheckBatches(std::array{
        Case{"begin tran insert into down values (4) rollback insert into down values (5) select min(id) x from down",
             "1 written; 1 written; rows(x) -4"},
    });
}

} // namespace
} // namespace test_sql
