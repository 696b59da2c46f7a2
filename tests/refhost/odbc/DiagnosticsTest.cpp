#include "refhost/odbc/Diagnostics.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using refhost::odbc::Diagnostic;
using refhost::odbc::ErrorOf;

struct Case {
    std::string name;
    Diagnostic diagnostic;
    host::ErrorNumber number;
    /// The server's own number, 0 where the driver speaks for itself.
    int native;
    std::string description;
};

class Diagnostics : public testing::TestWithParam<Case> {};

TEST_P(Diagnostics, BecomeTheNumberAndMessageOfAdo) {
    const host::Error error = ErrorOf(GetParam().diagnostic);
    EXPECT_EQ(error.native(), GetParam().native);
    EXPECT_EQ(error.number(), GetParam().number);
    EXPECT_EQ(error.description(), GetParam().description);
}

// States and native numbers as SQL Server's ODBC drivers report them (sys.messages).
INSTANTIATE_TEST_SUITE_P(
    SqlServer, Diagnostics,
    testing::ValuesIn(std::vector<Case>{
        {"Syntax",
         {"42000", 102, "[FreeTDS][SQL Server]Incorrect syntax near '*'."},
         -2147217900,
         102,
         "Incorrect syntax near '*'."},
        {"SyntaxNearKeyword",
         {"37000", 156, "[FreeTDS][SQL Server]Incorrect syntax near the keyword 'or'."},
         -2147217900,
         156,
         "Incorrect syntax near the keyword 'or'."},
        {"UnknownColumn",
         {"42S22", 207, "[Microsoft][ODBC Driver 17 for SQL Server][SQL Server]Invalid column name 'x'."},
         -2147217900,
         207,
         "Invalid column name 'x'."},
        {"UnknownTable",
         {"42S02", 208, "[FreeTDS][SQL Server]Invalid object name 'nowhere'."},
         -2147217865,
         208,
         "Invalid object name 'nowhere'."},
        {"UnknownTableByStateAlone", {"42S02", 0, "[Some][Driver]no such table"}, -2147217865, 0, "no such table"},
        {"Truncated",
         {"22001", 8152, "[FreeTDS][SQL Server]String or binary data would be truncated."},
         -2147217833,
         8152,
         "String or binary data would be truncated."},
        {"NullInNotNullColumn",
         {"23000", 515, "[FreeTDS][SQL Server]Cannot insert the value NULL into column 'a'."},
         -2147217873,
         515,
         "Cannot insert the value NULL into column 'a'."},
        {"DuplicateKey",
         {"23000", 2627, "[FreeTDS][SQL Server]Violation of PRIMARY KEY constraint 'pk'."},
         -2147217873,
         2627,
         "Violation of PRIMARY KEY constraint 'pk'."},
        {"FailedConstraint",
         {"23000", 547, "[FreeTDS][SQL Server]The INSERT statement conflicted with the CHECK constraint."},
         -2147217873,
         547,
         "The INSERT statement conflicted with the CHECK constraint."},
        {"NoDate",
         {"22007", 241,
          "[FreeTDS][SQL Server]Conversion failed when converting date and/or time from character string."},
         -2147217913,
         241,
         "Conversion failed when converting date and/or time from character string."},
        {"NoNumber",
         {"22018", 245,
          "[FreeTDS][SQL Server]Conversion failed when converting the varchar value 'x' to data type int."},
         -2147217913,
         245,
         "Conversion failed when converting the varchar value 'x' to data type int."},
        {"LostConnection",
         {"08S01", 20047, "[FreeTDS][SQL Server]DBPROCESS is dead or not enabled"},
         -2147467259,
         0,
         "DBPROCESS is dead or not enabled"},
        // Whatever SQLSTATE a driver gives: the server's number decides.
        {"Overflow",
         {"22003", 8115, "Arithmetic overflow error converting expression to data type int."},
         -2147217833,
         8115,
         "Arithmetic overflow error converting expression to data type int."},
        {"OverflowOfASmallType",
         {"22003", 220, "Arithmetic overflow error for data type tinyint, value = 300."},
         -2147217833,
         220,
         "Arithmetic overflow error for data type tinyint, value = 300."},
        {"CommitOfNothing",
         {"25000", 3902, "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."},
         -2147217900,
         3902,
         "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."},
        {"RollbackOfNothing",
         {"25000", 3903, "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."},
         -2147217900,
         3903,
         "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."},
        {"NoMoney",
         {"42000", 235, "Cannot convert a char value to money. The char value has incorrect syntax."},
         -2147217913,
         235,
         "Cannot convert a char value to money. The char value has incorrect syntax."},
        {"NoSmallMoney",
         {"42000", 293, "Cannot convert char value to smallmoney. The char value has incorrect syntax."},
         -2147217913,
         293,
         "Cannot convert char value to smallmoney. The char value has incorrect syntax."},
        {"TooFewValues",
         {"21S01", 213, "Column name or number of supplied values does not match table definition."},
         -2147217900,
         213,
         "Column name or number of supplied values does not match table definition."},
        {"Deadlock",
         {"40001", 1205,
          "Transaction (Process ID 52) was deadlocked on lock resources with another process and has been chosen as "
          "the deadlock victim. Rerun the transaction."},
         -2147467259,
         1205,
         "Transaction (Process ID 52) was deadlocked on lock resources with another process and has been chosen as the "
         "deadlock victim. Rerun the transaction."},
        {"UnlistedByItsState",
         {"42000", 50000, "A trigger's own words."},
         -2147217900,
         50000,
         "A trigger's own words."},
        {"TimeLimit", {"HYT00", 20003, "[FreeTDS][SQL Server]Timeout expired"}, -2147217871, 0, "Timeout expired"},
        {"LockTimeLimit",
         {"HYT00", 1222, "Lock request time out period exceeded."},
         -2147217871,
         1222,
         "Lock request time out period exceeded."},
        {"RefusedLogin",
         {"28000", 18456, "[FreeTDS][SQL Server]Login failed for user 'kovra'."},
         -2147217843,
         18456,
         "Login failed for user 'kovra'."},
        {"RefusedLoginByItsState",
         {"28000", 18452, "Login failed. The login is from an untrusted domain."},
         -2147217843,
         18452,
         "Login failed. The login is from an untrusted domain."},
        {"MissingRight",
         {"42000", 229, "The INSERT permission was denied on the object 'IA_HeadSet', database 'a', schema 'dbo'."},
         -2147217911,
         229,
         "The INSERT permission was denied on the object 'IA_HeadSet', database 'a', schema 'dbo'."},
        {"MissingRightToCreate",
         {"42000", 262, "CREATE DATABASE permission denied in database 'master'."},
         -2147217911,
         262,
         "CREATE DATABASE permission denied in database 'master'."},
        {"OverflowByItsState", {"22003", 50000, "out of range"}, -2147217833, 50000, "out of range"},
        {"DateOverflowByItsState", {"22008", 50000, "no such day"}, -2147217833, 50000, "no such day"},
        {"CardinalityByItsState", {"21000", 50000, "more than one"}, -2147217900, 50000, "more than one"},
        {"DivisionByZero",
         {"22012", 8134, "Divide by zero error encountered."},
         -2147467259,
         8134,
         "Divide by zero error encountered."},
        {"InvalidLength",
         {"42000", 537, "Invalid length parameter passed to the LEFT or SUBSTRING function."},
         -2147217900,
         537,
         "Invalid length parameter passed to the LEFT or SUBSTRING function."},
        {"MessageWithoutPrefix", {"HY000", 0, "plain"}, -2147467259, 0, "plain"},
        {"BracketInsideTheMessage", {"HY000", 0, "[Driver]table [x] is locked"}, -2147467259, 0, "table [x] is locked"},
    }),
    [](const auto& testCase) { return testCase.param.name; });

} // namespace
