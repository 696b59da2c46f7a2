#include "ClsKovra/ClsKovra.h"
#include "ModPub/ImportRows.h"

namespace kovra {

std::string ClsKovra::Transact(std::string_view sXml, host::HostLogin* login) {
    return ModPub::RunTransact(
        state_,
        [this] {
            const auto importRows = [this](const host::DOMNodeList& rows) {
                ModPub::ImportRows(state_, rows, [this](const host::DOMNode& row) { ImportRow(row); });
            };
            return ModPub::FrameVariation{
                .ledgerCheck = [this] { return RefusedLedger(); },
                .operations =
                    {
                        ModPub::RowsOperation(state_, "ADD", importRows),
                        ModPub::RowsOperation(state_, "EDIT", importRows),
                    },
            };
        },
        sXml, login);
}

std::optional<ModPub::RequestError> ClsKovra::RefusedLedger() {
    if (!CheckLedgerState()) {
        return std::nullopt;
    }
    const host::DOMNodePtr root = state_.resultDocument->DocumentElement();
    const host::DOMNodePtr item = root ? root->SelectSingleNode("item") : nullptr;
    return ModPub::RequestError{"101", state_.environment.GetEaiHelper().GetAttr(item.get(), "dsc")};
}

} // namespace kovra
