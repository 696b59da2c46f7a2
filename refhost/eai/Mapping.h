#pragma once

#include "host/Environment.h"

#include <string>
#include <string_view>
#include <vector>

namespace refhost {

/// One field of a mapping.
struct MappedField {
    /// The child element that holds it.
    std::string element;
    /// The record's column.
    std::string column;
};

/// The head or the body of a mapping.
struct MappedPart {
    /// The element of the document, below the row element: its own children are the head's fields.
    std::string element;
    /// Of the body: the element of one row below `element`, its children are the row's fields. Empty in a head.
    std::string rowElement;
    /// In the order in which they are written.
    std::vector<MappedField> fields;
};

/// Which elements of a document belong to which columns of its head and body records.
///
/// The file:
///
///     <mapping>
///       <head element="header">
///         <field element="Deccode" column="cDecCode"/>
///         <field element="cMemo"/>
///       </head>
///       <body element="body" row="entry">
///         <field element="cInvCode"/>
///       </body>
///     </mapping>
///
/// A field without `column` goes to the column of its own name.
struct Mapping {
    std::string name;
    MappedPart head;
    MappedPart body;

    /// Reads the text of a mapping file. Throws `host::Error` that names the file and what is wrong with it.
    static Mapping Parse(std::string_view name, std::string_view text, host::Environment& environment);
};

/// The error of the mapping file `name`: E_FAIL and a description.
host::Error MappingError(std::string_view name, std::string_view reason);

} // namespace refhost
