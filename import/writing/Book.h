#pragma once

#include "os/Replacement.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <xlsxwriter.h>

namespace importing {

/// The built-in format of texts, "@" (ECMA-376 part 1, 18.8.30).
inline constexpr std::uint8_t textFormat = 49;

/// `text` as the text of a cell: what looks like the escape of a character, "_x0041_", is escaped itself (ECMA-376
/// part 1, 22.9.2.19).
std::string CellText(std::string_view text);

/// A workbook that is being written (Office Open XML, `.xlsx`). The same content gives the same bytes.
class Book {
public:
    /// @param path the file (UTF-8), written by `Save`
    explicit Book(std::string path);

    /// Its name is at most 31 characters. Throws std::runtime_error.
    lxw_worksheet& AddSheet(const std::string& name);
    /// Throws std::bad_alloc.
    lxw_format& AddFormat();

    /// Writes the file: what was there before stays until all of it is written. Throws std::runtime_error, which names
    /// it.
    void Save();

private:
    struct Close {
        void operator()(lxw_workbook* workbook) const noexcept { lxw_workbook_free(workbook); }
    };
    std::string path_;
    os::Replacement replacement_;
    std::unique_ptr<lxw_workbook, Close> workbook_;
};

} // namespace importing
