#include "ClsKovraProof/ClsKovraProof.h"
#include "ModPub/ImportRows.h"
#include "ModPub/TransactFrame.h"

namespace kovra {

std::string ClsKovraProof::Transact(std::string_view sXml, host::HostLogin* login) {
    const auto importRows = [this](const host::DOMNodeList& rows) {
        return ModPub::ImportRows(state_, rows, [this](const host::DOMNode& row) { ImportRow(row); });
    };
    return ModPub::RunTransact(state_,
                               {
                                   .operations =
                                       {
                                           ModPub::RowsOperation(state_, "ADD", importRows),
                                           ModPub::RowsOperation(state_, "EDIT", importRows),
                                       },
                               },
                               sXml, login);
}

void ClsKovraProof::ImportRow(const host::DOMNode&) {
    throw host::Error(host::error_number::unspecified, "Rows are not imported yet.");
}

} // namespace kovra
