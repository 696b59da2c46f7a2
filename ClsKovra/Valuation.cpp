#include "ClsKovra/Valuation.h"

#include "ModPub/ReadAccOption.h"

namespace kovra {

bool IsValuedByItem(ModPub::ImportState& state) {
    return ModPub::ReadAccOption(state.environment, *state.connection, "IA", "cValueStyle") == "按存货核算";
}

} // namespace kovra
