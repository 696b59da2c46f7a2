#include "ModPub/Conversions.h"
#include "tests/support/ErrorOf.h"

#include <utility>

#include <gtest/gtest.h>

using namespace ModPub;
using namespace std::literals;
namespace en = host::error_number;

namespace {

const host::Value empty;
const host::Value null = host::Null{};
const host::Value bytes = host::Bytes{{1, 2}};

} // namespace

TEST(ToText, WritesEveryKindOfValue) {
    const std::pair<host::Value, std::string_view> table[] = {
        {{}, ""},
        {true, "True"},
        {false, "False"},
        {42, "42"},
        {std::int64_t{-9007199254740993}, "-9007199254740993"},
        {1.5, "1.5"},
        {1e15, "1E+15"},
        {0.1F, "0.1"},
        {16'777'216.0F, "1.677722E+07"},
        {host::Decimal{"12.5000"}, "12.5"},
        {host::Decimal{"1200"}, "1200"},
        {host::Decimal{"0.00"}, "0"},
        {host::Decimal{"-0.0"}, "0"},
        {host::Decimal{"123456789012345678901234.5"}, "123456789012345678901234.5"},
        {"仓库", "仓库"},
        {host::Date{45047}, "2023/5/1"},
    };
    for (const auto& [value, expected] : table)
        EXPECT_EQ(ToText(value), expected);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToText(null); }), en::invalidUseOfNull);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToText(bytes); }), en::typeMismatch);
}

TEST(ToDouble, ReadsEveryKindOfValue) {
    EXPECT_EQ(ToDouble(empty), 0);
    EXPECT_EQ(ToDouble(host::Value(true)), -1);
    EXPECT_EQ(ToDouble(host::Value(7)), 7);
    EXPECT_EQ(ToDouble(host::Value(2.5)), 2.5);
    EXPECT_EQ(ToDouble(host::Value(0.1F)), 0.100000001490116119384765625) << "a Single's number is what it holds";
    EXPECT_EQ(ToDouble(host::Value(host::Decimal{"-12.50"})), -12.5);
    EXPECT_EQ(ToDouble(host::Value("1,000")), 1000);
    EXPECT_EQ(ToDouble(host::Value(host::Date{45000.5})), 45000.5);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToDouble(null); }), en::invalidUseOfNull);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToDouble(bytes); }), en::typeMismatch);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToDouble(host::Value("x")); }), en::typeMismatch);
}

TEST(ToInt16, ReadsEveryKindOfValue) {
    EXPECT_EQ(ToInt16(empty), 0);
    EXPECT_EQ(ToInt16(host::Value(true)), -1);
    EXPECT_EQ(ToInt16(host::Value(2.5)), 2);
    EXPECT_EQ(ToInt16(host::Value(host::Decimal{"3.5"})), 4);
    EXPECT_EQ(ToInt16(host::Value("&HFFFF")), -1);
    EXPECT_EQ(ToInt32(host::Value("&HFFFF")), 65535);
    EXPECT_EQ(ToInt32(host::Value(70000)), 70000);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToInt16(host::Value(70000)); }), en::overflow);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToInt16(null); }), en::invalidUseOfNull);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToInt32(host::Value("")); }), en::typeMismatch);
}

TEST(ToBoolean, ReadsEveryKindOfValue) {
    EXPECT_FALSE(ToBoolean(empty));
    EXPECT_TRUE(ToBoolean(host::Value(true)));
    EXPECT_TRUE(ToBoolean(host::Value(2)));
    EXPECT_FALSE(ToBoolean(host::Value(0.0)));
    EXPECT_FALSE(ToBoolean(host::Value(host::Decimal{"0.00"})));
    EXPECT_TRUE(ToBoolean(host::Value("true")));
    EXPECT_EQ(test::ErrorNumberOf([] { return ToBoolean(null); }), en::invalidUseOfNull);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToBoolean(host::Value("")); }), en::typeMismatch);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToBoolean(bytes); }), en::typeMismatch);
}

TEST(ToDate, ReadsEveryKindOfValue) {
    EXPECT_EQ(ToDate(host::Value(host::Date{45000})), host::Date{45000});
    EXPECT_EQ(ToDate(host::Value("2023-03-15")), host::Date{45000});
    EXPECT_EQ(ToDate(host::Value(45000)), host::Date{45000});
    EXPECT_EQ(test::ErrorNumberOf([] { return ToDate(host::Value(20230501)); }), en::overflow);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToDate(host::Value("45000")); }), en::typeMismatch);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToDate(null); }), en::invalidUseOfNull);
}

TEST(FormatDate, WritesEveryKindOfValue) {
    EXPECT_EQ(FormatDate(empty), "");
    EXPECT_EQ(FormatDate(null), "");
    EXPECT_EQ(FormatDate(host::Value(host::Date{45000})), "2023-03-15");
    EXPECT_EQ(FormatDate(host::Value("2023/5/1")), "2023-05-01");
    EXPECT_EQ(FormatDate(host::Value("no date")), "no date");
    EXPECT_EQ(FormatDate(host::Value(45000)), "2023-03-15");
    EXPECT_EQ(FormatDate(host::Value(20230501)), "20230501");
    EXPECT_EQ(test::ErrorNumberOf([] { return FormatDate(bytes); }), en::typeMismatch);
}

TEST(RuntimeErrors, HaveTheDescriptionsOfAChineseSystem) {
    const std::pair<host::ErrorNumber, std::string_view> table[] = {
        {5, "无效的过程调用或参数"},
        {6, "溢出"},
        {7, "内存溢出"},
        {13, "类型不匹配"},
        {91, "对象变量或 With 块变量未设置"},
        {94, "无效使用 Null"},
        {429, "ActiveX 部件不能创建对象"},
        {438, "对象不支持该属性或方法"},
    };
    for (const auto& [number, description] : table) {
        try {
            RaiseRuntimeError(number);
        } catch (const host::Error& error) {
            EXPECT_EQ(error.number(), number);
            EXPECT_EQ(error.description(), description);
        }
    }
}
