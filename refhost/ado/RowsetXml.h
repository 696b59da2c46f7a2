#pragma once

#include "host/DOMDocument.h"
#include "refhost/ado/Database.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace refhost {

/// What the columns of an answer are in that layout.
struct RowsetShape {
    std::shared_ptr<const Fields> fields;
    /// The attribute of each column.
    std::vector<std::string> names;
    /// The layout without rows.
    std::string empty;
};

/// The shapes of the latest answers: statements that are run again and again share their columns' description.
class RowsetShapes {
public:
    const RowsetShape& Of(const std::shared_ptr<const Fields>& fields);

private:
    std::array<RowsetShape, 4> shapes_;
    std::size_t next_ = 0;
};

/// Fills `document` with the rows in ADO's XML persistence layout: the root `xml`, the schema (`s:Schema`) with one
/// `s:AttributeType` a column, and `rs:data` with one `z:row` a row and one attribute for each column that is not Null.
///
/// Bits are "True" and "False", dates "yyyy-mm-ddThh:mm:ss" (with nine digits of fraction where there is one), bytes
/// hex digits, numbers plain; control characters that XML does not know are U+FFFD. A column whose name is no XML name,
/// or stands there already, is called "c" and its position counted from 0; `rs:name` then holds the name itself.
/// @param result of a statement that gives rows
/// @param shapes what statements that are run again and again share; see there
/// Throws `host::Error` "unspecified" for a text with other characters that XML does not know.
void WriteRowset(const ResultSet& result, RowsetShapes& shapes, host::DOMDocument& document);

} // namespace refhost
