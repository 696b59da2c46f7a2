#include "import/rows/Spreadsheet.h"

#include "import/reading/UnreadableFile.h"
#include "import/rows/FindClass.h"

#include <utility>

namespace importing {

Spreadsheet::Spreadsheet(const std::string& path, const OpenOptions& openOptions, SheetOptions options,
                         const ClassFields* classFields)
    : options_(std::move(options)), classFields_(classFields), file_(path, openOptions, [this](Table& table) {
          Line line;
          return classFields_ == nullptr
                     ? FindClass(table, options_.headerLine, options_.headings) != nullptr
                     : FindHeadings(table, *classFields_, options_.headerLine, options_.headings, line);
      }) {
    if (classFields_ == nullptr) {
        classFields_ = FindClass(file_.table(), options_.headerLine, options_.headings);
        file_.table().Rewind();
    }
    if (classFields_ == nullptr) {
        throw UnreadableFile({message::headingsNotFound, {}});
    }
}

Sheet Spreadsheet::Read(const CodeLists& codes) { return ReadSheet(file_.table(), *classFields_, codes, options_); }

} // namespace importing
