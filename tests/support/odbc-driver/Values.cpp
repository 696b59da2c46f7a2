#include "tests/support/odbc-driver/Values.h"

#include "ModPub/Conversions.h"
#include "refhost/odbc/Utf16.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include <sqlext.h>
#include <sqlucode.h>

namespace odbc_driver {
namespace {

using host::FieldType;

struct TypeRow {
    FieldType fieldType;
    SQLSMALLINT sqlType;
    const char* name;
};

constexpr std::array typeRows = {
    TypeRow{FieldType::smallInt, SQL_SMALLINT, "smallint"},
    TypeRow{FieldType::integer, SQL_INTEGER, "int"},
    TypeRow{FieldType::single, SQL_REAL, "real"},
    TypeRow{FieldType::doubleFloat, SQL_FLOAT, "float"},
    TypeRow{FieldType::currency, SQL_DECIMAL, "money"},
    TypeRow{FieldType::boolean, SQL_BIT, "bit"},
    TypeRow{FieldType::unsignedTinyInt, SQL_TINYINT, "tinyint"},
    TypeRow{FieldType::bigInt, SQL_BIGINT, "bigint"},
    TypeRow{FieldType::guid, SQL_GUID, "uniqueidentifier"},
    TypeRow{FieldType::binary, SQL_BINARY, "timestamp"},
    TypeRow{FieldType::character, SQL_CHAR, "char"},
    TypeRow{FieldType::wideCharacter, SQL_WCHAR, "nchar"},
    TypeRow{FieldType::numeric, SQL_DECIMAL, "decimal"},
    TypeRow{FieldType::dbDate, SQL_TYPE_DATE, "date"},
    TypeRow{FieldType::dbTimeStamp, SQL_TYPE_TIMESTAMP, "datetime"},
    TypeRow{FieldType::varChar, SQL_VARCHAR, "varchar"},
    TypeRow{FieldType::longVarChar, SQL_LONGVARCHAR, "text"},
    TypeRow{FieldType::varWideChar, SQL_WVARCHAR, "nvarchar"},
    TypeRow{FieldType::longVarWideChar, SQL_WLONGVARCHAR, "ntext"},
    TypeRow{FieldType::varBinary, SQL_VARBINARY, "varbinary"},
    TypeRow{FieldType::longVarBinary, SQL_LONGVARBINARY, "image"},
};

/// Hands out the next piece of `data`, with a terminator of one `Unit` where `terminated`.
template <class Unit>
SQLRETURN CopyPiece(const std::basic_string<Unit>& data, bool terminated, SQLPOINTER buffer, std::size_t bytes,
                    SQLLEN* indicator, std::size_t& done) {
    if (done > 0 && done >= data.size()) {
        return SQL_NO_DATA;
    }
    const std::size_t room = bytes / sizeof(Unit) - (terminated ? 1 : 0);
    const std::size_t rest = data.size() - done;
    const std::size_t copied = std::min(rest, room);
    auto* const target = static_cast<Unit*>(buffer);
    std::copy_n(data.data() + done, copied, target);
    if (terminated) {
        target[copied] = 0;
    }
    *indicator = static_cast<SQLLEN>(rest * sizeof(Unit));
    done += copied;
    return copied < rest ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}

template <class T> SQLRETURN CopyFixed(T value, SQLPOINTER buffer, SQLLEN* indicator) {
    std::memcpy(buffer, &value, sizeof(value));
    *indicator = sizeof(value);
    return SQL_SUCCESS;
}

/// A decimal as some drivers write it: without the zero in front of the point.
std::string DriverDecimal(std::string text) {
    if (const std::size_t zero = text.find_first_not_of('-'); text.compare(zero, 2, "0.") == 0) {
        text.erase(zero, 1);
    }
    return text;
}

SQL_TIMESTAMP_STRUCT Timestamp(host::Date date) {
    constexpr double dayLength = 86'400'000; // in milliseconds
    const double time = std::abs(date.days - std::trunc(date.days));
    const auto milliseconds = static_cast<SQLUINTEGER>(std::llround(time * dayLength) % 1000);
    // Whole seconds, so that taking them apart rounds nothing; before day 0 the time counts away from it.
    const double fraction = std::copysign(milliseconds / dayLength, date.days);
    const ModPub::DateParts parts = ModPub::SplitDate(host::Date{date.days - fraction}).value();
    SQL_TIMESTAMP_STRUCT timestamp{};
    timestamp.year = static_cast<SQLSMALLINT>(parts.year);
    timestamp.month = static_cast<SQLUSMALLINT>(parts.month);
    timestamp.day = static_cast<SQLUSMALLINT>(parts.day);
    timestamp.hour = static_cast<SQLUSMALLINT>(parts.hour);
    timestamp.minute = static_cast<SQLUSMALLINT>(parts.minute);
    timestamp.second = static_cast<SQLUSMALLINT>(parts.second);
    timestamp.fraction = milliseconds * 1'000'000;
    return timestamp;
}

} // namespace

ColumnType DescribeType(const host::Field& field) {
    const auto row = std::ranges::find(typeRows, field.type, &TypeRow::fieldType);
    ColumnType described;
    described.type = row == typeRows.end() ? SQLSMALLINT{SQL_WVARCHAR} : row->sqlType;
    described.name = row == typeRows.end() ? "nvarchar" : row->name;
    if (field.type == FieldType::currency) {
        described.size = 19;
        described.digits = 4;
    } else if (field.type == FieldType::numeric) {
        described.size = static_cast<SQLULEN>(field.precision);
        described.digits = static_cast<SQLSMALLINT>(field.scale);
    } else {
        described.size = static_cast<SQLULEN>(field.definedSize);
    }
    return described;
}

SQLRETURN CopyValue(const host::Value& value, SQLSMALLINT cType, SQLPOINTER buffer, std::size_t bytes,
                    SQLLEN* indicator, std::size_t& done) {
    if (value.IsNull()) {
        *indicator = SQL_NULL_DATA;
        return SQL_SUCCESS;
    }
    switch (cType) {
    case SQL_C_WCHAR:
        return CopyPiece(refhost::odbc::ToUtf16(ModPub::ToText(value)), true, buffer, bytes, indicator, done);
    case SQL_C_CHAR: {
        const auto* decimal = value.As<host::Decimal>();
        return CopyPiece(DriverDecimal(decimal != nullptr ? decimal->text : ModPub::ToText(value)), true, buffer, bytes,
                         indicator, done);
    }
    case SQL_C_BINARY:
        if (const auto* data = value.As<host::Bytes>()) {
            return CopyPiece(std::basic_string<unsigned char>(data->data.begin(), data->data.end()), false, buffer,
                             bytes, indicator, done);
        }
        break;
    case SQL_C_SBIGINT:
        if (const auto* whole = value.As<std::int64_t>()) {
            return CopyFixed(static_cast<SQLBIGINT>(*whole), buffer, indicator);
        }
        break;
    case SQL_C_BIT:
        return CopyFixed(static_cast<SQLCHAR>(ModPub::ToBoolean(value) ? 1 : 0), buffer, indicator);
    case SQL_C_FLOAT:
        return CopyFixed(static_cast<SQLREAL>(ModPub::ToDouble(value)), buffer, indicator);
    case SQL_C_DOUBLE:
        return CopyFixed(ModPub::ToDouble(value), buffer, indicator);
    case SQL_C_TYPE_TIMESTAMP:
        if (const auto* const date = value.As<host::Date>()) {
            return CopyFixed(Timestamp(*date), buffer, indicator);
        }
        break;
    default:
        break;
    }
    throw host::Error(host::error_number::unspecified, "Restricted data type attribute violation");
}

} // namespace odbc_driver
