#include "refhost/ado/Cells.h"

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using host::Value;
using refhost::Cells;

/// What comes out when `values` are put in.
std::vector<Value> ThroughCells(const std::vector<Value>& values) {
    Cells cells;
    for (const Value& value : values) {
        cells.Add(value);
    }
    std::vector<Value> read;
    for (std::size_t index = 0; index < cells.size(); ++index) {
        read.push_back(cells[index]);
    }
    return read;
}

TEST(Cells, BeginEmpty) {
    EXPECT_TRUE(Cells().empty());
    EXPECT_EQ(Cells().size(), 0U);
}

TEST(Cells, KeepValuesOfEveryKind) {
    const std::vector<Value> values = {
        {},
        host::Null{},
        true,
        false,
        std::numeric_limits<std::int64_t>::min(),
        std::numeric_limits<std::int64_t>::max(),
        0.1F,
        -0.1,
        host::Decimal{"-12.500"},
        "仓库",
        "",
        std::string("a\0b", 3),
        host::Date{45047.25},
        host::Bytes{{0x00, 0xFF}},
        host::Bytes{},
    };
    EXPECT_EQ(ThroughCells(values), values);
}

TEST(Cells, KeepTextsOfEveryLength) {
    std::vector<Value> values;
    for (const std::size_t length : {1U, 253U, 254U, 255U, 256U, 257U, 65535U, 65536U, 70000U}) {
        values.emplace_back(std::string(length, 'x'));
        values.emplace_back(host::Bytes{std::vector<std::uint8_t>(length, 0xFF)});
        values.emplace_back(host::Decimal{std::string(length, '1')});
    }
    EXPECT_EQ(ThroughCells(values), values);
}

TEST(Cells, AreFoundInEveryOrder) {
    const auto valueAt = [](std::size_t index) {
        return index % 3 == 0 ? Value(host::Null{}) : Value(std::string(index, 'x'));
    };
    Cells cells;
    for (std::size_t index = 0; index < 1000; ++index) {
        cells.Add(valueAt(index));
    }
    for (std::size_t index = cells.size(); index-- > 0;) {
        EXPECT_EQ(cells[index], valueAt(index));
    }
    // Back and forth by a little and by much, some twice.
    for (const std::size_t index : {3U, 5U, 5U, 4U, 15U, 16U, 15U, 40U, 31U, 47U, 48U, 999U, 998U, 0U, 500U, 501U}) {
        EXPECT_EQ(cells[index], valueAt(index)) << index;
    }
}

} // namespace
