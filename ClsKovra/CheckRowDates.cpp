#include "ClsKovra/ClsKovra.h"
#include "ClsKovra/OpeningRow.h"
#include "ClsKovra/PassesCheck.h"
#include "ModPub/Conversions.h"
#include "text/Utf16.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kovra {
namespace {

/// A field that holds a date, with what is said of a text that is none and of a date that is too early.
struct DateField {
    std::string_view name;
    std::string_view notDate;
    std::string_view tooEarly;
};

constexpr DateField dVouDate{"dVouDate", "入库日期日期不合法！", "入库日期日期输入不合法"};

constexpr std::array definedDates = {
    DateField{"cDefine4", "表头自定义项4日期不合法！", "表头自定义项4日期输入不合法"},
    DateField{"cDefine6", "表头自定义项6日期不合法！", "表头自定义项6日期输入不合法"},
    // Users know these two as body items 15 and 16.
    DateField{"cDefine36", "表体自定义项15日期不合法！", "表体自定义项15日期输入不合法"},
    DateField{"cDefine37", "表体自定义项16日期不合法！", "表体自定义项16日期输入不合法"},
};

constexpr DateField dMadeDate{"dMadeDate", "生产日期不合法！", "生产日期输入不合法"};
constexpr DateField dVDate{"dVDate", "失效日期不合法！", "失效日期输入不合法"};

constexpr std::size_t maxBatchLength = 60;

/// A field's date as "YYYY-MM-DD", and the message about it, or the empty text.
struct CheckedDate {
    std::string date;
    std::string_view failure;
};

CheckedDate CheckDate(const DateField& field, const std::string& text) {
    const std::optional<host::Date> date = ModPub::ParseDate(text);
    if (!date) {
        return {{}, field.notDate};
    }
    std::string formatted = ModPub::FormatDate(*date);
    const std::string_view failure = formatted <= "1949-01-01" ? field.tooEarly : std::string_view();
    return {std::move(formatted), failure};
}

/// The message about the production and expiry dates of an item that is managed by shelf life, or the empty text.
std::string_view ShelfLifeFailure(const std::string& made, const std::string& expires) {
    // One date alone passes unchecked: requests carry it so.
    if (made.empty() || expires.empty()) {
        return {};
    }
    const CheckedDate madeDate = CheckDate(dMadeDate, made);
    if (!madeDate.failure.empty()) {
        return madeDate.failure;
    }
    const CheckedDate expiryDate = CheckDate(dVDate, expires);
    if (!expiryDate.failure.empty()) {
        return expiryDate.failure;
    }
    return expiryDate.date <= madeDate.date ? "生产日期大于失效日期" : std::string_view();
}

} // namespace

bool ClsKovra::CheckRowDates(const OpeningRow& row, ModPub::RowLookups& lookups) {
    return PassesCheck(state_, row.key, [&] { return std::string(DatesFailure(row, lookups)); });
}

std::string_view ClsKovra::DatesFailure(const OpeningRow& row, ModPub::RowLookups& lookups) {
    if (const std::string vouDate = row.Field(dVouDate.name); !vouDate.empty()) {
        const CheckedDate checked = CheckDate(dVouDate, vouDate);
        if (!checked.failure.empty()) {
            return checked.failure;
        }
        if (checked.date >= StartDate()) {
            return "入库日期必须小于本系统启用日期！";
        }
    }
    for (const DateField& field : definedDates) {
        if (const std::string text = row.Field(field.name); !text.empty()) {
            if (const CheckedDate checked = CheckDate(field, text); !checked.failure.empty()) {
                return checked.failure;
            }
        }
    }
    if (!row.cBatchCode.empty()) {
        if (!InvCodeIsTorF(lookups, row.cInvCode, "bInvBatch")) {
            return "不是批次管理的存货！";
        }
        if (text::Utf16Length(row.cBatchCode) > maxBatchLength) {
            return "批次超长！";
        }
    }
    const std::string made = row.Field(dMadeDate.name);
    const std::string expires = row.Field(dVDate.name);
    if (InvCodeIsTorF(lookups, row.cInvCode, "bInvQuality")) {
        return ShelfLifeFailure(made, expires);
    }
    return made.empty() && expires.empty() ? std::string_view() : "不是保质期管理的存货";
}

const std::string& ClsKovra::StartDate() {
    if (!startDate_) {
        host::HostLogin& login = *state_.login;
        const int period = login.StartPeriod();
        const std::int32_t year = ModPub::ToInt32(login.LoginYear());
        startDate_ = ModPub::FormatDate(login.PeriodDates(period, year).first);
    }
    return *startDate_;
}

} // namespace kovra
