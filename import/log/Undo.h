#pragma once

#include "import/log/ImportLog.h"
#include "import/run/Account.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace importing {

/// What came of taking an import back.
struct UndoOutcome {
    enum class Result {
        /// Its records are deleted.
        undone,
        /// The log has no such import into this account.
        unknown,
        /// A test run, or undone already.
        nothingToUndo,
        /// Documents are the ERP's to delete.
        notByClass,
        /// The opening balances are posted.
        posted,
        /// Records are not as they were written; nothing is deleted.
        changed,
    };

    Result result = Result::undone;
    /// How many records were deleted.
    std::size_t rows = 0;
    /// The lines of the file whose records were changed or deleted since.
    std::vector<std::int64_t> lines = {};
};

/// Deletes the records that an import wrote, in one transaction, when every one of them is as it was written and, of
/// opening balances, the opening is not posted. Throws host::Error and sqlite::Error.
UndoOutcome UndoImport(ImportLog& log, Account& account, std::int64_t number);

} // namespace importing
