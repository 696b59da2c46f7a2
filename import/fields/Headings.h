#pragma once

#include "import/fields/Field.h"
#include "import/messages/Note.h"
#include "import/reading/Cell.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace importing {

/// Which field each column of a table holds.
struct Columns {
    /// The field of the column at each position; nullptr for a column without heading or of no concern.
    std::vector<const Field*> fields;
    /// The headings as they stand.
    std::vector<std::string> headings;
    /// How many columns in front a file of refused rows has that are none of the original's: 2, or 0 for another file.
    std::size_t front = 0;
    /// What is wrong with the headings; nothing may be imported then.
    std::vector<Note> faults;

    /// The column that holds `element`; nothing when none does.
    std::optional<std::size_t> Find(std::string_view element) const;
};

/// Headings that are to be read as the fields named beside them (`--map`): heading to any name of a field, or to the
/// empty text for a column that is left out.
using HeadingMap = std::map<std::string, std::string, std::less<>>;

/// Finds the field of each heading among the class's: by the field's element name, its Chinese or English name, or one
/// of its synonyms, letter case, width, blanks, a "*" and what stands in parentheses aside. Unknown, doubled and
/// missing headings are faults, with the nearest heading that would do; so are entries of `map` that name no heading or
/// no field.
Columns ReadHeadings(const Line& line, const ClassFields& classFields, const HeadingMap& map);

/// How many of a line's cells are headings of the class, or of `map`.
std::size_t CountHeadings(const Line& line, const ClassFields& classFields, const HeadingMap& map);

} // namespace importing
