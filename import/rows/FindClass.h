#pragma once

#include "import/fields/Field.h"
#include "import/fields/Headings.h"
#include "import/reading/Table.h"

#include <cstddef>

namespace importing {

/// Reads on to the line of the headings: `headerLine`, or with 0 the first of a table's first hundred that holds at
/// least two headings of the class. Whether there is one; it is in `line` then. Throws UnreadableFile.
bool FindHeadings(Table& table, const ClassFields& classFields, std::size_t headerLine, const HeadingMap& map,
                  Line& line);

/// The class that a table is for, by its headings: the one that finds the fewest faults in them, and of those that find
/// equally few the one that knows the most of them. nullptr when there are no headings of any class. Throws
/// UnreadableFile, also when two classes fit equally well.
const ClassFields* FindClass(Table& table, std::size_t headerLine, const HeadingMap& map);

} // namespace importing
