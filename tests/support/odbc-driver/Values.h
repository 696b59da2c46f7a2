#pragma once

#include "host/Database.h"

#include <cstddef>
#include <string>

#include <sql.h>

namespace odbc_driver {

/// A column's type as SQL Server's drivers describe it.
struct ColumnType {
    SQLSMALLINT type = 0;
    SQLULEN size = 0;
    SQLSMALLINT digits = 0;
    std::string name;
};

ColumnType DescribeType(const host::Field& field);

/// Copies a value into the caller's buffer as the C type asked for, as `SQLGetData` does: text and bytes in pieces,
/// `done` keeps what was handed out. Throws `host::Error` for a C type that the value does not convert to.
SQLRETURN CopyValue(const host::Value& value, SQLSMALLINT cType, SQLPOINTER buffer, std::size_t bytes,
                    SQLLEN* indicator, std::size_t& done);

} // namespace odbc_driver
