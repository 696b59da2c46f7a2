#include "ClsKovra/CheckFreeItems.h"

#include "ModPub/Conversions.h"

#include <cstddef>

namespace kovra {

bool CheckFreeItems(ModPub::RowLookups& lookups, const OpeningRow& row) {
    const auto flags = lookups.FirstRow<freeItemNames.size()>(
        {"Select bFree1,bFree2,bFree3,bFree4,bFree5,bFree6,bFree7,bFree8,bFree9,bFree10 "
         "from Inventory where cinvcode='",
         row.cInvCode, "'"});
    if (!flags) {
        return true;
    }
    for (std::size_t index = 0; index < freeItemNames.size(); ++index) {
        const host::Value& flag = (*flags)[index];
        if (!flag.IsNull() && ModPub::ToBoolean(flag) && row.Field(freeItemNames[index]).empty()) {
            return false;
        }
    }
    return true;
}

} // namespace kovra
