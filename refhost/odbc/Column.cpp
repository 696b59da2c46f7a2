#include "refhost/odbc/Column.h"

#include "refhost/odbc/Diagnostics.h"
#include "refhost/odbc/Odbc.h"
#include "refhost/odbc/Utf16.h"
#include "text/SameName.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace refhost::odbc {
namespace {

using host::FieldType;

/// SQL Server's ODBC types beyond the standard's (msodbcsql.h).
constexpr SQLSMALLINT ssXml = -152;
constexpr SQLSMALLINT ssTime2 = -154;

struct TypeMapping {
    SQLSMALLINT sqlType;
    FieldType fieldType;
    Reading reading;
};

constexpr std::array typeMappings = {
    TypeMapping{SQL_CHAR, FieldType::character, Reading::text},
    TypeMapping{SQL_VARCHAR, FieldType::varChar, Reading::text},
    TypeMapping{SQL_LONGVARCHAR, FieldType::longVarChar, Reading::text},
    TypeMapping{SQL_WCHAR, FieldType::wideCharacter, Reading::text},
    TypeMapping{SQL_WVARCHAR, FieldType::varWideChar, Reading::text},
    TypeMapping{SQL_WLONGVARCHAR, FieldType::longVarWideChar, Reading::text},
    TypeMapping{ssXml, FieldType::longVarWideChar, Reading::text},
    TypeMapping{ssTime2, FieldType::varWideChar, Reading::text},
    TypeMapping{SQL_BIT, FieldType::boolean, Reading::bit},
    TypeMapping{SQL_TINYINT, FieldType::unsignedTinyInt, Reading::whole},
    TypeMapping{SQL_SMALLINT, FieldType::smallInt, Reading::whole},
    TypeMapping{SQL_INTEGER, FieldType::integer, Reading::whole},
    TypeMapping{SQL_BIGINT, FieldType::bigInt, Reading::whole},
    TypeMapping{SQL_REAL, FieldType::single, Reading::single},
    TypeMapping{SQL_FLOAT, FieldType::doubleFloat, Reading::real},
    TypeMapping{SQL_DOUBLE, FieldType::doubleFloat, Reading::real},
    TypeMapping{SQL_NUMERIC, FieldType::numeric, Reading::decimal},
    TypeMapping{SQL_DECIMAL, FieldType::numeric, Reading::decimal},
    TypeMapping{SQL_TYPE_DATE, FieldType::dbDate, Reading::dateTime},
    TypeMapping{SQL_TYPE_TIMESTAMP, FieldType::dbTimeStamp, Reading::dateTime},
    TypeMapping{SQL_BINARY, FieldType::binary, Reading::bytes},
    TypeMapping{SQL_VARBINARY, FieldType::varBinary, Reading::bytes},
    TypeMapping{SQL_LONGVARBINARY, FieldType::longVarBinary, Reading::bytes},
    TypeMapping{SQL_GUID, FieldType::guid, Reading::text},
};

std::string TypeName(SQLHSTMT statement, SQLUSMALLINT index) {
    std::array<SQLWCHAR, 64> name{};
    SQLSMALLINT bytes = 0;
    if (!SQL_SUCCEEDED(SQLColAttributeW(statement, index, SQL_DESC_TYPE_NAME, name.data(),
                                        static_cast<SQLSMALLINT>(sizeof(name)), &bytes, nullptr))) {
        return {};
    }
    const auto units = std::min(static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR), name.size() - 1);
    return ToUtf8({name.data(), units});
}

/// The types of columns without a limit (varchar(max) and its like), of which drivers tell as of the limited ones with
/// no size; ADO tells of them as of text, ntext and image.
constexpr std::array unlimitedTypes = {
    std::pair{FieldType::varChar, FieldType::longVarChar},
    std::pair{FieldType::varWideChar, FieldType::longVarWideChar},
    std::pair{FieldType::varBinary, FieldType::longVarBinary},
};
/// Their size in characters, as ADO gives it.
constexpr int unlimitedSize = 0x3FFFFFFF;

bool IsText(Reading reading) { return reading == Reading::text || reading == Reading::bytes; }

/// Reads a value of any length, chunk after chunk, into units of `Unit`; nothing for Null.
template <class Unit>
std::optional<std::basic_string<Unit>> ReadWhole(SQLHSTMT statement, SQLUSMALLINT index, SQLSMALLINT cType) {
    // The driver ends a text chunk with a zero unit, a binary one not.
    const std::size_t terminator = cType == SQL_C_BINARY ? 0 : 1;
    std::basic_string<Unit> whole;
    // Nearly every value fits here.
    std::array<Unit, 256> first;
    std::vector<Unit> further;
    std::span<Unit> chunk(first);
    for (;;) {
        SQLLEN indicator = 0;
        const SQLRETURN result = SQLGetData(statement, index, cType, chunk.data(),
                                            static_cast<SQLLEN>(chunk.size() * sizeof(Unit)), &indicator);
        if (result == SQL_NO_DATA) {
            return whole;
        }
        Check(result, SQL_HANDLE_STMT, statement);
        if (indicator == SQL_NULL_DATA) {
            return std::nullopt;
        }
        const std::size_t room = chunk.size() - terminator;
        const bool more = indicator == SQL_NO_TOTAL || static_cast<std::size_t>(indicator) / sizeof(Unit) > room;
        whole.append(chunk.data(), more ? room : static_cast<std::size_t>(indicator) / sizeof(Unit));
        if (!more) {
            return whole;
        }
        further.resize(std::min<std::size_t>(chunk.size() * 4, 1U << 20));
        chunk = further;
    }
}

/// Reads a value of fixed size; nothing for Null.
template <class T> std::optional<T> ReadFixed(SQLHSTMT statement, SQLUSMALLINT index, SQLSMALLINT cType) {
    T value{};
    SQLLEN indicator = 0;
    Check(SQLGetData(statement, index, cType, &value, sizeof(value), &indicator), SQL_HANDLE_STMT, statement);
    if (indicator == SQL_NULL_DATA) {
        return std::nullopt;
    }
    return value;
}

/// A driver's decimal text (".5", "-.25") with the digit in front of the point that `host::Decimal` has, and with
/// `scale` digits behind it.
host::Decimal DecimalOf(std::string text, int scale) {
    const std::size_t digits = text.find_first_not_of('-');
    if (digits != std::string::npos && text[digits] == '.') {
        text.insert(digits, "0");
    }
    std::size_t point = text.find('.');
    if (point == std::string::npos && scale > 0) {
        point = text.size();
        text.push_back('.');
    }
    if (scale > 0) {
        text.resize(std::max(text.size(), point + 1 + static_cast<std::size_t>(scale)), '0');
    }
    return {std::move(text)};
}

host::Date DateOf(const SQL_TIMESTAMP_STRUCT& value) {
    using namespace std::chrono;
    const sys_days day = year(value.year) / month(value.month) / value.day;
    const auto whole = static_cast<double>((day - sys_days(1899y / December / 30)).count());
    const double second = value.hour * 3600.0 + value.minute * 60.0 + value.second + value.fraction / 1e9;
    // A date before the epoch counts its day down and its time of day up (OLE Automation).
    return {whole < 0 ? whole - second / 86400.0 : whole + second / 86400.0};
}

template <class T, class Convert> host::Value OrNull(std::optional<T> value, const Convert& convert) {
    return value ? host::Value(convert(std::move(*value))) : host::Value(host::Null{});
}

} // namespace

Column DescribeColumn(SQLHSTMT statement, SQLUSMALLINT index) {
    std::array<SQLWCHAR, 256> name{};
    SQLSMALLINT nameLength = 0;
    SQLSMALLINT sqlType = 0;
    SQLULEN size = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = 0;
    Check(SQLDescribeColW(statement, index, name.data(), static_cast<SQLSMALLINT>(name.size()), &nameLength, &sqlType,
                          &size, &digits, &nullable),
          SQL_HANDLE_STMT, statement);
    Column column;
    column.field.name = ToUtf8({name.data(), std::min(static_cast<std::size_t>(nameLength), name.size() - 1)});
    column.field.nullable = nullable != SQL_NO_NULLS;
    if (const auto found = std::ranges::find(typeMappings, sqlType, &TypeMapping::sqlType);
        found != typeMappings.end()) {
        column.field.type = found->fieldType;
        column.reading = found->reading;
    }
    if (column.reading == Reading::decimal) {
        column.field.precision = static_cast<int>(size);
        column.field.scale = digits;
        if (const std::string typeName = TypeName(statement, index);
            text::SameName(typeName, "money") || text::SameName(typeName, "smallmoney")) {
            column.field = {
                .name = std::move(column.field.name), .type = FieldType::currency, .nullable = column.field.nullable};
            column.reading = Reading::money;
        }
    } else if (IsText(column.reading)) {
        column.field.definedSize = static_cast<int>(std::min<SQLULEN>(size, 0x7FFFFFFF));
        const auto unlimited =
            std::ranges::find(unlimitedTypes, column.field.type, &std::pair<FieldType, FieldType>::first);
        if (size == 0 && unlimited != unlimitedTypes.end()) {
            column.field.type = unlimited->second;
            column.field.definedSize = unlimitedSize;
        }
    }
    return column;
}

host::Value ReadValue(SQLHSTMT statement, SQLUSMALLINT index, const Column& column) {
    constexpr int moneyScale = 4;
    switch (column.reading) {
    case Reading::whole:
        return OrNull(ReadFixed<SQLBIGINT>(statement, index, SQL_C_SBIGINT),
                      [](SQLBIGINT value) { return static_cast<std::int64_t>(value); });
    case Reading::bit:
        return OrNull(ReadFixed<SQLCHAR>(statement, index, SQL_C_BIT), [](SQLCHAR value) { return value != 0; });
    case Reading::single:
        return OrNull(ReadFixed<SQLREAL>(statement, index, SQL_C_FLOAT), [](SQLREAL value) { return value; });
    case Reading::real:
        return OrNull(ReadFixed<SQLDOUBLE>(statement, index, SQL_C_DOUBLE), [](SQLDOUBLE value) { return value; });
    case Reading::dateTime:
        return OrNull(ReadFixed<SQL_TIMESTAMP_STRUCT>(statement, index, SQL_C_TYPE_TIMESTAMP), DateOf);
    case Reading::decimal:
    case Reading::money: {
        const int scale = column.reading == Reading::money ? moneyScale : column.field.scale;
        return OrNull(ReadWhole<char>(statement, index, SQL_C_CHAR),
                      [scale](std::string text) { return DecimalOf(std::move(text), scale); });
    }
    case Reading::bytes:
        return OrNull(ReadWhole<unsigned char>(statement, index, SQL_C_BINARY), [](auto bytes) {
            return host::Bytes{{bytes.begin(), bytes.end()}};
        });
    case Reading::text:
        break;
    }
    return OrNull(ReadWhole<SQLWCHAR>(statement, index, SQL_C_WCHAR),
                  [](const Utf16Text& text) { return ToUtf8(text); });
}

} // namespace refhost::odbc
