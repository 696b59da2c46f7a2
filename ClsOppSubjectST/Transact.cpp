#include "ClsOppSubjectST/ClsOppSubjectST.h"
#include "ModPub/ImportRows.h"
#include "ModPub/TransactFrame.h"
#include "ModPub/YearEndCheck.h"

namespace kovra {

std::string ClsOppSubjectST::Transact(std::string_view sXml, host::HostLogin* login) {
    const auto importRows = [this](const host::DOMNodeList& rows) {
        return ModPub::ImportRows(state_, rows, [this](const host::DOMNode& row) { ImportRow(row); });
    };
    return ModPub::RunTransact(
        state_,
        {
            .preCheck = [this] { return ModPub::YearEndCheck(state_, "103"); },
            .operations =
                {
                    ModPub::RowsOperation(state_, "ADD", importRows),
                    ModPub::RowsOperation(state_, "EDIT", importRows),
                    // SQL Server refuses the asterisk; callers know the error result that follows.
                    ModPub::StatementOperation(state_, "EMPTY", "Delete * From IA_OppHead"),
                },
        },
        sXml, login);
}

void ClsOppSubjectST::ImportRow(const host::DOMNode&) {
    throw host::Error(host::error_number::unspecified, "Rows are not imported yet.");
}

} // namespace kovra
