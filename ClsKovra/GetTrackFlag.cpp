#include "ClsKovra/GetTrackFlag.h"

#include <utility>

namespace kovra {

host::Value GetTrackFlag(ModPub::RowLookups& lookups, const std::string& cInvCode) {
    auto row = lookups.FirstRow<1>({"SELECT bTrack FROM Inventory WHERE cInvCode='", cInvCode, "'"});
    return row ? std::move(row->front()) : host::Value(false);
}

} // namespace kovra
