#pragma once

#include "host/Database.h"
#include "refhost/odbc/Odbc.h"

namespace refhost::odbc {

/// How a column's values are read.
enum class Reading { text, whole, bit, single, real, decimal, money, dateTime, bytes };

/// A column of a result: what a recordset tells of it, and how to read it.
struct Column {
    host::Field field;
    Reading reading = Reading::text;
};

/// Describes column `index`, counted from 1, of an executed statement. Throws what the driver reports.
Column DescribeColumn(SQLHSTMT statement, SQLUSMALLINT index);

/// The current row's value of a column, read whole. Throws what the driver reports.
host::Value ReadValue(SQLHSTMT statement, SQLUSMALLINT index, const Column& column);

} // namespace refhost::odbc
