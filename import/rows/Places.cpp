#include "import/rows/Places.h"

#include "import/reading/Cell.h"

namespace importing {

std::string PlaceOf(const Columns& columns, std::size_t line, std::optional<std::size_t> column, Language language) {
    const bool chinese = language == Language::chinese;
    if (!column) {
        return chinese ? "第 " + std::to_string(line) + " 行" : "line " + std::to_string(line);
    }
    std::string place = CellName(*column, line);
    if (*column < columns.headings.size() && !columns.headings[*column].empty()) {
        place.append(chinese ? "（" : " (").append(columns.headings[*column]).append(chinese ? "）" : ")");
    }
    return place;
}

} // namespace importing
