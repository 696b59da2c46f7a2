#pragma once

#include "host/Database.h"

namespace refhost {

/// How ADO describes a type of column.
struct AdoType {
    host::FieldType type;
    /// `dt:type` of the XML persistence layout.
    const char* name;
    /// `rs:dbtype` of that layout, or nullptr.
    const char* dbtype;
    /// Size in bytes where the type has a fixed one, else 0.
    int size;
    /// Digits where the type has a fixed number of them, else 0.
    int precision;
    bool isLong = false;
    bool fixedLength = true;
};

/// Throws `host::Error` "unspecified" for a type that no column here has.
const AdoType& DescribeType(host::FieldType type);

} // namespace refhost
