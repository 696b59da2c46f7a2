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
    std::string description;
};

class Diagnostics : public testing::TestWithParam<Case> {};

TEST_P(Diagnostics, BecomeTheNumberAndMessageOfAdo) {
    const host::Error error = ErrorOf(GetParam().diagnostic);
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
         "Incorrect syntax near '*'."},
        {"SyntaxNearKeyword",
         {"37000", 156, "[FreeTDS][SQL Server]Incorrect syntax near the keyword 'or'."},
         -2147217900,
         "Incorrect syntax near the keyword 'or'."},
        {"UnknownColumn",
         {"42S22", 207, "[Microsoft][ODBC Driver 17 for SQL Server][SQL Server]Invalid column name 'x'."},
         -2147217900,
         "Invalid column name 'x'."},
        {"UnknownTable",
         {"42S02", 208, "[FreeTDS][SQL Server]Invalid object name 'nowhere'."},
         -2147217865,
         "Invalid object name 'nowhere'."},
        {"UnknownTableByStateAlone", {"42S02", 0, "[Some][Driver]no such table"}, -2147217865, "no such table"},
        {"Truncated",
         {"22001", 8152, "[FreeTDS][SQL Server]String or binary data would be truncated."},
         -2147217833,
         "String or binary data would be truncated."},
        {"NullInNotNullColumn",
         {"23000", 515, "[FreeTDS][SQL Server]Cannot insert the value NULL into column 'a'."},
         -2147217873,
         "Cannot insert the value NULL into column 'a'."},
        {"DuplicateKey",
         {"23000", 2627, "[FreeTDS][SQL Server]Violation of PRIMARY KEY constraint 'pk'."},
         -2147217873,
         "Violation of PRIMARY KEY constraint 'pk'."},
        {"FailedConstraint",
         {"23000", 547, "[FreeTDS][SQL Server]The INSERT statement conflicted with the CHECK constraint."},
         -2147217873,
         "The INSERT statement conflicted with the CHECK constraint."},
        {"NoDate",
         {"22007", 241,
          "[FreeTDS][SQL Server]Conversion failed when converting date and/or time from character string."},
         -2147217913,
         "Conversion failed when converting date and/or time from character string."},
        {"NoNumber",
         {"22018", 245,
          "[FreeTDS][SQL Server]Conversion failed when converting the varchar value 'x' to data type int."},
         -2147217913,
         "Conversion failed when converting the varchar value 'x' to data type int."},
        {"LostConnection",
         {"08S01", 20047, "[FreeTDS][SQL Server]DBPROCESS is dead or not enabled"},
         -2147467259,
         "DBPROCESS is dead or not enabled"},
        {"MessageWithoutPrefix", {"HY000", 0, "plain"}, -2147467259, "plain"},
        {"BracketInsideTheMessage", {"HY000", 0, "[Driver]table [x] is locked"}, -2147467259, "table [x] is locked"},
    }),
    [](const auto& testCase) { return testCase.param.name; });

} // namespace
