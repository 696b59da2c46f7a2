#pragma once

#include "import/reading/OpenTable.h"
#include "import/rows/Sheet.h"

#include <optional>
#include <string>

namespace importing {

/// A file of rows for one class, opened.
class Spreadsheet {
public:
    /// Opens `path` (UTF-8) for a class, or with nullptr for the class that its headings fit best.
    /// Throws UnreadableFile, also when it is not clear which class that is.
    Spreadsheet(const std::string& path, const OpenOptions& openOptions, SheetOptions options,
                const ClassFields* classFields);

    const ClassFields& classFields() const noexcept { return *classFields_; }

    /// Reads all of it, see `ReadSheet`. Throws UnreadableFile.
    Sheet Read(const CodeLists& codes);

private:
    SheetOptions options_;
    const ClassFields* classFields_;
    OpenFile file_;
};

} // namespace importing
