#pragma once

#include "ModPub/ImportState.h"
#include "host/Value.h"

#include <string>
#include <string_view>

namespace kovra {

/// The valuation methods as the host stores them; compared exactly.
namespace valuation_method {
inline constexpr std::string_view individual = "个别计价法";
inline constexpr std::string_view plannedPrice = "计划价法";
inline constexpr std::string_view retailPrice = "售价法";
inline constexpr std::string_view monthlyAverage = "全月平均法";
inline constexpr std::string_view movingAverage = "移动平均法";
inline constexpr std::string_view firstInFirstOut = "先进先出法";
inline constexpr std::string_view lastInFirstOut = "后进先出法";
} // namespace valuation_method

/// How a row's item is valued in its warehouse.
struct Valuation {
    /// Planned or retail unit price, or Null.
    host::Value plannedPrice = host::Null{};
    std::string method;
};

/// Whether the valuation method is the item's; it is the warehouse's otherwise. Throws the database's error.
bool IsValuedByItem(ModPub::ImportState& state);

} // namespace kovra
