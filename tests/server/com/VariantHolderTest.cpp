#include "server/com/VariantHolder.h"

#include "server/com/BString.h"
#include "tests/support/com/ExpectError.h"
#include "tests/support/com/ReplacedImport.h"

#include <cstdint>
#include <cstdlib>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using host::Value;
using server::BString;
using server::VariantHolder;
using test::ExpectError;

/// A value as it comes back out of a VARIANT.
Value ThroughVariant(const Value& value) { return server::ToValue(VariantHolder(value).Get()); }

VARIANT Plain(VARTYPE type) {
    VARIANT variant;
    VariantInit(&variant);
    V_VT(&variant) = type;
    return variant;
}

/// What is left of memory that has ended: small pieces.
void* AllocateLittle(std::size_t size) {
    constexpr std::size_t left = 64 << 10;
    return size > left ? nullptr : std::calloc(1, size);
}

/// How often a VARIANT was cleared, and how often that failed, as it does for one whose array is locked.
int cleared = 0;
int notCleared = 0;
HRESULT STDAPICALLTYPE ClearAndCount(VARIANT* variant) {
    static const auto original = reinterpret_cast<HRESULT(STDAPICALLTYPE*)(VARIANT*)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), "VariantClear")));
    const HRESULT status = original(variant);
    ++(SUCCEEDED(status) ? cleared : notCleared);
    return status;
}

} // namespace

TEST(VariantHolder, EveryValueComesBackAsItWas) {
    const Value values[] = {
        {},
        host::Null{},
        true,
        false,
        0,
        -1,
        std::int64_t{2147483647},
        std::int64_t{-2147483648LL},
        std::int64_t{2147483648LL},
        std::int64_t{INT64_MIN},
        0.1,
        0.1F,
        -1e300,
        host::Date{45047.5},
        host::Date{-1.25},
        "",
        "仓库",
        std::string("a\0b", 3),
        std::string("a\xED\xA0\x80z"),
        "😀",
        host::Bytes{{}},
        host::Bytes{{0, 255, 16}},
    };
    for (const Value& value : values)
        EXPECT_EQ(ThroughVariant(value), value) << "value " << &value - values;
}

TEST(VariantHolder, DecimalsKeepTheirScale) {
    for (const char* const number :
         {"0", "-1", "1.50", "0.000001", "-0.10", "100", "79228162514264337593543950335",
          "7.9228162514264337593543950335", "1234567890123456789012.500000", "0.0000000000000000000000000001"})
        EXPECT_EQ(ThroughVariant(host::Decimal{number}), Value(host::Decimal{number})) << number;
    // A VARIANT has 96 bits: zeros behind the point that do not fit are left out.
    EXPECT_EQ(ThroughVariant(host::Decimal{"79228162514264337593543950335.0"}),
              Value(host::Decimal{"79228162514264337593543950335"}));
}

TEST(VariantHolder, DecimalThatIsTooLongOrNoneIsRefused) {
    ExpectError(6, "溢出", [] { VariantHolder{Value(host::Decimal{"79228162514264337593543950336"})}; });
    ExpectError(13, "类型不匹配", [] { VariantHolder{Value(host::Decimal{"abc"})}; });
}

TEST(VariantHolder, ReadsEveryTypeThatComesIn) {
    VARIANT variant = Plain(VT_I1);
    V_I1(&variant) = -128;
    EXPECT_EQ(server::ToValue(variant), Value(-128));
    variant = Plain(VT_UI1);
    V_UI1(&variant) = 255;
    EXPECT_EQ(server::ToValue(variant), Value(255));
    variant = Plain(VT_I2);
    V_I2(&variant) = -32768;
    EXPECT_EQ(server::ToValue(variant), Value(-32768));
    variant = Plain(VT_UI2);
    V_UI2(&variant) = 65535;
    EXPECT_EQ(server::ToValue(variant), Value(65535));
    variant = Plain(VT_INT);
    V_INT(&variant) = -7;
    EXPECT_EQ(server::ToValue(variant), Value(-7));
    variant = Plain(VT_UI4);
    V_UI4(&variant) = 4294967295U;
    EXPECT_EQ(server::ToValue(variant), Value(std::int64_t{4294967295}));
    variant = Plain(VT_UINT);
    V_UINT(&variant) = 4294967295U;
    EXPECT_EQ(server::ToValue(variant), Value(std::int64_t{4294967295}));
    variant = Plain(VT_R4);
    V_R4(&variant) = 0.5F;
    EXPECT_EQ(server::ToValue(variant), Value(0.5F));
    variant = Plain(VT_CY);
    V_CY(&variant).int64 = -125000;
    EXPECT_EQ(server::ToValue(variant), Value(host::Decimal{"-12.5000"}));
    variant = Plain(VT_BSTR);
    V_BSTR(&variant) = nullptr;
    EXPECT_EQ(server::ToValue(variant), Value(""));
    variant = Plain(VT_BOOL);
    V_BOOL(&variant) = 1;
    EXPECT_EQ(server::ToValue(variant), Value(true));
}

TEST(VariantHolder, SinglesHaveTheTextOfTheirOwnDigits) {
    VARIANT variant = Plain(VT_R4);
    V_R4(&variant) = 0.1F;
    EXPECT_EQ(server::ToText(variant), "0.1");
    V_R4(&variant) = 16'777'216.0F;
    EXPECT_EQ(server::ToText(variant), "1.677722E+07");
}

TEST(VariantHolder, WhatNoValueHoldsIsATypeMismatch) {
    for (const int type : {int{VT_ERROR}, int{VT_DISPATCH}, int{VT_UNKNOWN}, VT_ARRAY | VT_VARIANT}) {
        const VARIANT variant = Plain(static_cast<VARTYPE>(type));
        ExpectError(13, "类型不匹配", [&] { server::ToValue(variant); });
    }
}

TEST(VariantHolder, ArrayIsUnlockedWhenMemoryEnds) {
    const VariantHolder bytes{Value(host::Bytes{std::vector<std::uint8_t>(1 << 20)})};
    {
        const test::ReplacedImport clearing(nullptr, "VariantClear", ClearAndCount);
        const test::ReplacedImport memory(nullptr, "malloc", AllocateLittle);
        EXPECT_THROW(server::ToValue(bytes.Get()), std::bad_alloc);
    }
    EXPECT_GT(cleared, 0) << "the copy that was read";
    EXPECT_EQ(notCleared, 0) << "its array is still locked";
    EXPECT_EQ(server::ToValue(bytes.Get()), Value(host::Bytes{std::vector<std::uint8_t>(1 << 20)}));
}

TEST(VariantHolder, ReferencesAreFollowed) {
    VariantHolder text(std::string("abc"));
    EXPECT_EQ(server::ToText(VariantHolder::ByReference(text).Get()), "abc");
    EXPECT_EQ(server::ToText(VariantHolder::VariantReference(text).Get()), "abc");
    VariantHolder number(7);
    EXPECT_EQ(server::ToInt(VariantHolder::ByReference(number).Get()), 7);
    VariantHolder decimal{Value(host::Decimal{"1.50"})};
    EXPECT_EQ(server::ToValue(VariantHolder::VariantReference(decimal).Get()), Value(host::Decimal{"1.50"}));
    EXPECT_EQ(server::ToValue(VariantHolder::ByReference(decimal).Get()), Value(host::Decimal{"1.50"}));
    VariantHolder nothing(static_cast<IDispatch*>(nullptr));
    EXPECT_FALSE(server::ToObject(VariantHolder::ByReference(nothing).Get()));
}

TEST(VariantHolder, ObjectsAndNothing) {
    EXPECT_FALSE(server::ToObject(VariantHolder().Get())) << "Empty is Nothing where an object is wanted";
    EXPECT_FALSE(server::ToObject(VariantHolder(static_cast<IUnknown*>(nullptr)).Get()));
    ExpectError(13, "类型不匹配", [] { server::ToObject(VariantHolder(7).Get()); });
    ExpectError(13, "类型不匹配", [] { server::ToObject(VariantHolder(Value(host::Null{})).Get()); });
}
