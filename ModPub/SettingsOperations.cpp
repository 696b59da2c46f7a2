#include "ModPub/SettingsOperations.h"

#include "ModPub/ImportRows.h"

namespace ModPub {

std::vector<Operation> SettingsOperations(ImportState& state, std::string_view emptyStatement,
                                          const std::function<void(const host::DOMNode& row)>& importRow) {
    const auto importRows = [&state, importRow](const host::DOMNodeList& rows) { ImportRows(state, rows, importRow); };
    return {
        RowsOperation(state, "ADD", importRows),
        RowsOperation(state, "EDIT", importRows),
        StatementOperation(state, "EMPTY", emptyStatement),
    };
}

} // namespace ModPub
