#include "ModPub/YearEndCheck.h"

#include "ModPub/Conversions.h"
#include "ModPub/IsYearEndOpen.h"

#include <utility>

namespace ModPub {

std::optional<RequestError> YearEndCheck(ImportState& state, std::string code) {
    if (IsYearEndOpen(state.environment, ToInt16(state.login->LoginYear()), *state.connection)) {
        return std::nullopt;
    }
    return RequestError{std::move(code), "12月份已结账,不能导入科目设置"};
}

} // namespace ModPub
