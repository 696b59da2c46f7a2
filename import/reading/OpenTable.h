#pragma once

#include "import/reading/Table.h"
#include "import/reading/Workbook.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace importing {

/// How a file is to be opened.
struct OpenOptions {
    /// A CSV file's encoding; empty to find it out.
    std::string encoding = {};
    /// A workbook's sheet; empty to look for it.
    std::string sheet = {};
};

/// A file of rows, opened: a CSV file, or one sheet of a workbook.
class OpenFile {
public:
    /// Opens `path` (UTF-8): a workbook when it begins as an archive does, a CSV file otherwise. Of a workbook with
    /// several visible sheets the one that `fits` is taken, when it is the only one.
    /// Throws UnreadableFile, for the old binary format of workbooks too, and when the sheet to take is not clear.
    OpenFile(const std::string& path, const OpenOptions& options, const std::function<bool(Table&)>& fits);

    /// Its lines, from the first.
    Table& table() const noexcept { return *table_; }

private:
    void OpenWorkbook(const std::string& path, const OpenOptions& options, const std::function<bool(Table&)>& fits);

    std::unique_ptr<Workbook> workbook_;
    std::unique_ptr<Table> table_;
};

/// A CSV file's text in UTF-8: by its byte order mark, else by the encoding named, else as UTF-8 where it is that, else
/// as GB18030 where it is that. Throws UnreadableFile, with both readings of the first line where it is neither.
std::string DecodeText(std::string_view bytes, const std::string& encoding);

} // namespace importing
