#include "ModPub/ImportRows.h"

#include "ModPub/Trap.h"

namespace ModPub {

std::string ImportRows(ImportState& state, const host::DOMNodeList& rows,
                       const std::function<void(const host::DOMNode& row)>& importRow) {
    try {
        for (const host::DOMNodePtr& row : rows) {
            importRow(*row);
        }
    } catch (...) {
        state.AddOutcome({}, outcome::stopped, PendingError().description());
    }
    return state.resultDocument->Xml();
}

} // namespace ModPub
