#pragma once

#include "host/DOMDocument.h"
#include "refhost/ado/Database.h"

namespace refhost {

/// Fills `document` with the rows in ADO's XML persistence layout: the root `xml`, the schema (`s:Schema`) with one
/// `s:AttributeType` a column, and `rs:data` with one `z:row` a row and one attribute for each column that is not Null.
///
/// Bits are "True" and "False", dates "yyyy-mm-ddThh:mm:ss" (with nine digits of fraction where there is one), bytes
/// hex digits, numbers plain. A column whose name is no XML name, or stands there already, is called "c" and its
/// position counted from 0; `rs:name` then holds the name itself.
/// @param result of a statement that gives rows
void WriteRowset(const ResultSet& result, host::DOMDocument& document);

} // namespace refhost
