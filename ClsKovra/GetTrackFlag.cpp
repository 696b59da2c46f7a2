#include "ClsKovra/GetTrackFlag.h"

#include "ModPub/FirstRow.h"

#include <utility>

namespace kovra {

host::Value GetTrackFlag(ModPub::ImportState& state, const std::string& cInvCode) {
    auto row = ModPub::FirstRow<1>(state, "SELECT bTrack FROM Inventory WHERE cInvCode='" + cInvCode + "'");
    return row ? std::move(row->front()) : host::Value(false);
}

} // namespace kovra
