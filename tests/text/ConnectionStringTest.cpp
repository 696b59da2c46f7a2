#include "text/ConnectionString.h"

#include <optional>

#include <gtest/gtest.h>

using text::ConnectionStringValue;
using text::MaskPasswords;
using text::WithConnectionStringValue;

TEST(ConnectionStringValue, IgnoresLetterCaseAndBlanksAroundKeysAndValues) {
    EXPECT_EQ(ConnectionStringValue("Provider=KovraAccount; data SOURCE = a b.db ;X=1", "Data Source"), "a b.db");
    EXPECT_EQ(ConnectionStringValue("provider=KovraAccount", "PROVIDER"), "KovraAccount");
}

TEST(ConnectionStringValue, TakesTheFirstOfTwoAndNothingForNone) {
    EXPECT_EQ(ConnectionStringValue("a=1;A=2", "a"), "1");
    EXPECT_EQ(ConnectionStringValue("a=1", "b"), std::nullopt);
    EXPECT_EQ(ConnectionStringValue("", "a"), std::nullopt);
    EXPECT_EQ(ConnectionStringValue("a=;b=2", "a"), "");
}

TEST(ConnectionStringValue, ReadsWhatStandsBetweenBracesOrQuotes) {
    EXPECT_EQ(ConnectionStringValue("Driver={ODBC; Driver};DSN=x", "driver"), "ODBC; Driver");
    EXPECT_EQ(ConnectionStringValue("Driver={ODBC; Driver};DSN=x", "dsn"), "x");
    EXPECT_EQ(ConnectionStringValue("a=\"1;2\";b='3;4'", "a"), "1;2");
    EXPECT_EQ(ConnectionStringValue("a=\"1;2\";b='3;4'", "b"), "3;4");
    EXPECT_EQ(ConnectionStringValue("a={never closed;b=2", "b"), "2");
}

TEST(WithConnectionStringValue, ReplacesTheFirstValueAlone) {
    EXPECT_EQ(WithConnectionStringValue("A=1; data source = x.db ;Data Source=y", "Data Source", "z/x.db"),
              "A=1; data source =z/x.db;Data Source=y");
    EXPECT_EQ(WithConnectionStringValue("A=1", "B", "2"), "A=1");
}

TEST(MaskPasswords, HidesEveryPasswordAndNothingElse) {
    EXPECT_EQ(MaskPasswords("UID=sa;PWD=secret;Database=x"), "UID=sa;PWD=***;Database=x");
    EXPECT_EQ(MaskPasswords("Password = {a;b} ;Pwd=c"), "Password =***;Pwd=***");
    // A doubled brace does not end a value.
    EXPECT_EQ(MaskPasswords("Pwd={a}};b};Database=x"), "Pwd=***;Database=x");
    EXPECT_EQ(MaskPasswords("Data Source=password.db"), "Data Source=password.db");
}
