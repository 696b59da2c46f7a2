#pragma once

#include "import/log/ImportLog.h"
#include "import/outcome/Outcome.h"
#include "import/rows/Spreadsheet.h"
#include "import/run/Account.h"
#include "import/run/RunClass.h"

#include <cstddef>
#include <functional>
#include <string>

namespace importing {

/// What an import is to do.
struct ImportTask {
    Account& account;
    Transact transact;
    Spreadsheet& spreadsheet;
    FileFacts file;
    /// The import log of the login.
    ImportLog& log;
    /// "YYYY-MM-DD hh:mm:ss" by the local clock.
    std::string time;
    /// In earnest; a test run otherwise, which leaves the account as it is.
    bool commit = false;
    /// Refuses rows with a cell that would be corrected, and rows with a warning.
    bool strict = false;
    /// Takes rows that repeat others of the file or of the ledger.
    bool allowDuplicates = false;
    /// Whether to stop before the next row.
    std::function<bool()> wantsStop = {};
    /// Hears how many of the rows that the class is asked about are done, and how many it refused.
    std::function<void(std::size_t done, std::size_t of, std::size_t refused)> progress = {};
};

/// Reads the table, checks every row, asks the class about those that pass, and tells what became of each. A test run
/// goes the same way into a copy of the account or a transaction that is taken back.
///
/// In earnest each row is noted in the log before and after; what an import that was cut off left in doubt is asked of
/// the ledger first; rows that an earlier import of the file wrote are not written again.
///
/// Throws UnreadableFile, host::Error for an account that cannot be used, sqlite::Error for a log that cannot be.
Outcome RunImport(const ImportTask& task);

} // namespace importing
