// How dates are written and read: the styles of CONVERT, and SET DATEFORMAT. The forms are those of the pages "CAST and
// CONVERT" and "SET DATEFORMAT" of the T-SQL reference.

#include "tests/refhost/sql/Places.h"
#include "tests/refhost/sql/Support.h"

#include <array>

namespace test_sql {
namespace {

class Styles : public AtEachPlace {};

INSTANTIATE_TEST_SUITE_P(On, Styles, testing::ValuesIn(Places()), PlaceName);

TEST_P(Styles, WriteDatesInEveryForm) {
    const auto check = [&](int style, const char* text) {
        EXPECT_EQ(
            Answer(Db(),
                   fmt::format("select convert(varchar(40), cast('2006-05-16 22:57:46.827' as datetime), {})", style)),
            fmt::format("'{}'", text))
            << style;
    };
    check(0, "May 16 2006 10:57PM");
    check(100, "May 16 2006 10:57PM");
    check(1, "05/16/06");
    check(101, "05/16/2006");
    check(2, "06.05.16");
    check(102, "2006.05.16");
    check(3, "16/05/06");
    check(103, "16/05/2006");
    check(4, "16.05.06");
    check(104, "16.05.2006");
    check(5, "16-05-06");
    check(105, "16-05-2006");
    check(6, "16 May 06");
    check(106, "16 May 2006");
    check(7, "May 16, 06");
    check(107, "May 16, 2006");
    check(8, "22:57:46");
    check(108, "22:57:46");
    check(9, "May 16 2006 10:57:46:827PM");
    check(109, "May 16 2006 10:57:46:827PM");
    check(10, "05-16-06");
    check(110, "05-16-2006");
    check(11, "06/05/16");
    check(111, "2006/05/16");
    check(12, "060516");
    check(112, "20060516");
    check(13, "16 May 2006 22:57:46:827");
    check(113, "16 May 2006 22:57:46:827");
    check(14, "22:57:46:827");
    check(114, "22:57:46:827");
    check(20, "2006-05-16 22:57:46");
    check(120, "2006-05-16 22:57:46");
    check(21, "2006-05-16 22:57:46.827");
    check(121, "2006-05-16 22:57:46.827");
    check(22, "05/16/06 10:57:46 PM");
    check(23, "2006-05-16");
    check(126, "2006-05-16T22:57:46.827");
    check(127, "2006-05-16T22:57:46.827");
}

TEST_P(Styles, DateFormatOrdersTheNumbersOfDates) {
    const auto month = [&](const char* text) {
        return Answer(Db(), fmt::format("select month(convert(datetime, '{0}')), month('{0}')", text));
    };
    EXPECT_EQ(month("01/02/2024"), "1 1");
    EXPECT_EQ(Answer(Db(), "set dateformat dmy"), "");
    EXPECT_EQ(month("01/02/2024"), "2 2");
    EXPECT_EQ(month("20240102"), "1 1"); // no order changes that
    // The older types read year, day, month then; the newer ones do not.
    EXPECT_EQ(Answer(Db(), "select month(cast('2024-02-01' as datetime)), month(cast('2024-02-01' as date))"), "1 2");
    EXPECT_EQ(Answer(Db(), "select isdate('31/12/2024'), try_convert(datetime, '12/31/2024')"), "1 Null");
    EXPECT_EQ(Answer(Db(), "create table t (d datetime)"), "");
    EXPECT_EQ(Answer(Db(), "insert into t values ('03/04/2024')"), "");
    EXPECT_EQ(Answer(Db(), "insert into t select '05/' + '06/2024'"), "");
    EXPECT_EQ(Answer(Db(), "select month(d) from t"), "4 | 6");
    EXPECT_EQ(Answer(Db(), "set dateformat mdy"), "");
    EXPECT_EQ(month("01/02/2024"), "1 1");
    EXPECT_EQ(Answer(Db(), "select convert(datetime, '31/12/2024', 103), isdate('31/12/2024')"), "#45657# 0");
    EXPECT_EQ(Answer(Db(), "set dateformat ymd"), "");
    EXPECT_EQ(month("24/01/02"), "1 1");
    EXPECT_EQ(Answer(Db(), "set dateformat ydm"), "");
    EXPECT_EQ(month("24/01/02"), "2 2");
    EXPECT_EQ(Answer(Db(), "select month(convert(datetime, '2024/01/02'))"), "2");
    EXPECT_EQ(Answer(Db(), "set dateformat myd"), "");
    EXPECT_EQ(month("01/2024/02"), "1 1");
    EXPECT_EQ(month("01/24/02"), "1 1");
    EXPECT_EQ(Answer(Db(), "set dateformat dym"), "");
    EXPECT_EQ(month("01/24/02"), "2 2");
    EXPECT_EQ(Answer(Db(), "select month(convert(datetime, '2024-01-02'))"), "2");
    EXPECT_EQ(Answer(Db(), "set dateformat nonsense"), "-2147217900: SET DATEFORMAT date order 'nonsense' is invalid.");
}

} // namespace
} // namespace test_sql
