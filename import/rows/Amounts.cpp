#include "import/rows/Amounts.h"

#include "ModPub/Numbers.h"
#include "import/rows/Sum.h"

namespace importing {

double SumOf(const std::vector<Row>& rows, std::size_t column) {
    Sum sum;
    for (const Row& row : rows) {
        if (row.refusals.empty() && column < row.values.size()) {
            sum.Add(ModPub::Val(row.values[column]));
        }
    }
    return sum.value();
}

void WarnOfAmount(const Columns& columns, Row& row) {
    const auto quantity = columns.Find("iQuantity");
    const auto cost = columns.Find("iCost");
    const auto amount = columns.Find("iPrice");
    if (!quantity || !cost || !amount || row.values[*quantity].empty() || row.values[*cost].empty() ||
        row.values[*amount].empty()) {
        return;
    }
    const double product = ModPub::Val(row.values[*quantity]) * ModPub::Val(row.values[*cost]);
    const double difference = ModPub::TwoPlaces(ModPub::Val(row.values[*amount]) - product);
    if (difference != 0) {
        row.warnings.push_back({*amount, {message::amountDiffers, {ModPub::NumberText(difference)}}, {}});
    }
}

} // namespace importing
