#include "tests/refhost/sql/Places.h"
#include "tests/refhost/sql/Support.h"

#include <array>

namespace test_sql {
namespace {

class UpdateFrom : public AtEachPlace {};

INSTANTIATE_TEST_SUITE_P(On, UpdateFrom, testing::ValuesIn(Places()), PlaceName);

TEST_P(UpdateFrom, TakesItsTargetFromAJoinByAliasOrName) {
    Check(std::array{
        Case{"create table item (code nvarchar(5) not null primary key, price float, name nvarchar(9))", ""},
        Case{"create table news (code nvarchar(5), price float, name nvarchar(9))", ""},
        Case{"insert into item values ('a', 1, 'x'), ('b', 2, 'y')", ""},
        Case{"insert into news values ('A', 5, 'new')", ""},
        Case{"update i set price = n.price + i.price, name = n.name from item i inner join news n on "
             "i.code = n.code where n.price > 4",
             ""},
        Case{"select code, price, name from item order by code", "'a' 6r 'new' | 'b' 2r 'y'"},
        Case{"update item set price = n.price from news n inner join item on item.code = n.code", ""},
        Case{"select code, price from item order by code", "'a' 5r | 'b' 2r"},
        Case{"update i set name = n.name from item i left join news n on i.code = n.code", ""},
        Case{"select code, name from item order by code", "'a' 'new' | 'b' Null"},
    });
}

TEST_P(UpdateFrom, JoinsATargetThatTheClauseDoesNotName) {
    Check(std::array{
        Case{"create table item (code nvarchar(5), price float)", ""},
        Case{"create table news (code nvarchar(5), price float)", ""},
        Case{"insert into item values ('a', 1), ('b', 2)", ""},
        Case{"insert into news values ('b', 7)", ""},
        Case{"update item set price = n.price from news n where item.code = n.code", ""},
        Case{"select code, price from item order by code", "'a' 1r | 'b' 7r"},
    });
}

} // namespace
} // namespace test_sql
