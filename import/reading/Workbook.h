#pragma once

#include "import/reading/Archive.h"
#include "import/reading/SerialDate.h"
#include "import/reading/Table.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace importing {

/// A workbook of Office Open XML (ECMA-376 part 1, chapter 18), `.xlsx` and `.xlsm`.
class Workbook {
public:
    /// A sheet of cells; charts and macros are left out.
    struct Sheet {
        std::string name;
        bool hidden = false;
        std::string part;
    };

    /// Throws UnreadableFile.
    explicit Workbook(const std::string& path, ArchiveBounds bounds = {});

    const std::vector<Sheet>& sheets() const noexcept { return sheets_; }

    /// The lines of a sheet. One sheet is read at a time, and the workbook outlives it. Throws UnreadableFile.
    std::unique_ptr<Table> Open(std::size_t sheet);

private:
    Archive archive_;
    std::vector<Sheet> sheets_;
    std::vector<std::string> strings_;
    std::vector<bool> dateStyles_;
    DateSystem dateSystem_ = DateSystem::from1900;
};

} // namespace importing
