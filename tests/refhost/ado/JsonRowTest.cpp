#include "refhost/ado/JsonRow.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace {

/// A row of one column `v`.
std::string Json(const host::Value& value) {
    refhost::ResultSet result;
    result.fields = std::make_shared<refhost::Fields>(1, host::Field{.name = "v"});
    result.cells.Add(value);
    result.rowCount = 1;
    std::string json;
    refhost::AppendJsonRow(json, result, 0);
    return json;
}

TEST(JsonRow, DatesKeepTheirMilliseconds) {
    // Day 45047 is 2023-05-01.
    EXPECT_EQ(Json(host::Date{45047}), R"({"v":"2023-05-01"})");
    EXPECT_EQ(Json(host::Date{45047.25}), R"({"v":"2023-05-01 06:00:00"})");
    EXPECT_EQ(Json(host::Date{45047 + 0.003 / 86400}), R"({"v":"2023-05-01 00:00:00.003"})");
}

TEST(JsonRow, NumbersHaveAsFewDigitsAsTellThemApart) {
    EXPECT_EQ(Json(0.1), R"({"v":0.1})");
    EXPECT_EQ(Json(0.1F), R"({"v":0.1})");
    EXPECT_EQ(Json(16'777'216.0F), R"({"v":16777216})");
    EXPECT_EQ(refhost::PlainText(0.1F), "0.1");
}

TEST(JsonRow, TheLastMomentOfTheRangeStaysInItsYear) {
    EXPECT_EQ(Json(host::Date{2958465 + 86399.997 / 86400}), R"({"v":"9999-12-31 23:59:59.997"})");
}

} // namespace
