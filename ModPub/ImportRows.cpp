#include "ModPub/ImportRows.h"

#include "ModPub/Trap.h"

#include <cstddef>

namespace ModPub {

void ImportRows(ImportState& state, const host::DOMNodeList& rows,
                const std::function<void(const host::DOMNode& row)>& importRow) {
    if (state.observer != nullptr) {
        state.observer->RowsSelected(rows.size());
    }
    try {
        std::size_t number = 0;
        for (const host::DOMNodePtr& row : rows) {
            if (state.observer != nullptr && !state.observer->RowBegins(++number, *row)) {
                break;
            }
            importRow(*row);
        }
    } catch (...) {
        state.AddOutcome({}, outcome::stopped, PendingError().description());
    }
}

} // namespace ModPub
