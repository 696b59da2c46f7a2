#include "bench/imports/Import.h"

namespace bench {

std::vector<Import> Imports() {
    return {InventorySettings(), OppositeSettings(), StandardCostSettings(),
            OpeningBalances(),   Provisions(),       PriceVouchers()};
}

} // namespace bench
