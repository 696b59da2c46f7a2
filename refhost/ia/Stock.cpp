#include "refhost/ia/Stock.h"

#include "ModPub/Conversions.h"

namespace refhost {

Stock::Stock(std::string_view rows, std::string_view warehouse, host::Date day) {
    conditions_.append("L.cInvCode = ").append(rows).append(".cInvCode");
    if (!warehouse.empty()) {
        conditions_.append(" AND L.cWhCode = ").append(warehouse);
    }
    for (int i = 1; i <= 10; ++i) {
        const std::string free = ".cFree" + std::to_string(i);
        conditions_.append(" AND (ISNULL(").append(rows).append(free).append(", N'') = N'' OR L").append(free);
        conditions_.append(" = ").append(rows).append(free).append(")");
    }
    // An opening balance may have neither date; it counts always.
    const std::string nextDay = ModPub::FormatDate(host::Date{day.days + 1});
    conditions_.append(" AND ISNULL(ISNULL(L.dKeepDate, L.dVouDate), '1900-01-01') < '").append(nextDay).append("'");
}

std::string Stock::Quantity() const { return Sum("iAInQuantity", "iAOutQuantity"); }

std::string Stock::Amount() const { return Sum("iAInPrice", "iAOutPrice"); }

std::string Stock::Sum(std::string_view received, std::string_view issued) const {
    std::string sql = "ISNULL((SELECT SUM(ISNULL(L.";
    sql.append(received).append(", 0) - ISNULL(L.").append(issued).append(", 0)) FROM Ia_subsidiary L WHERE ");
    return sql.append(conditions_).append("), 0)");
}

} // namespace refhost
