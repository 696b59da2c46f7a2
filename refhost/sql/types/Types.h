#pragma once

#include "host/Database.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace refhost::sql {

/// SQL Server's types, in the order of its type precedence: of two, the later one wins.
enum class Base : std::uint8_t {
    null,
    binary,
    varbinary,
    character,
    varchar,
    nchar,
    nvarchar,
    uniqueidentifier,
    timestamp,
    image,
    text,
    ntext,
    bit,
    tinyint,
    smallint,
    integer,
    bigint,
    smallmoney,
    money,
    decimal,
    real,
    floating,
    date,
    smalldatetime,
    datetime,
    datetime2,
};

/// What types have in common; also how SQLite holds their values.
enum class Family : std::uint8_t {
    null,
    binary,  ///< BLOB
    text,    ///< TEXT in UTF-8
    guid,    ///< TEXT
    integer, ///< INTEGER
    exact,   ///< TEXT: a plain decimal number with exactly `scale` digits behind the point
    real,    ///< REAL
    date,    ///< INTEGER: ticks, see DateTime.h
};

/// A type with its facets.
struct Type {
    /// Length of (max) types and of ntext, text and image.
    static constexpr int maxLength = -1;

    Base base = Base::null;
    /// Text: characters. Binary: bytes.
    int length = 0;
    /// Of decimal types; of datetime2 0 where nothing was said of its fraction.
    int precision = 0;
    /// Digits behind the point; of datetime2 those of the second's fraction, see `FractionDigits`.
    int scale = 0;

    bool operator==(const Type&) const = default;
};

constexpr Type integerType{Base::integer, 0, 0, 0};
/// nvarchar(max).
constexpr Type endlessText{Base::nvarchar, Type::maxLength, 0, 0};

Family FamilyOf(Base base);
inline Family FamilyOf(const Type& type) { return FamilyOf(type.base); }
/// Whether the type is one of nchar, nvarchar, ntext.
bool IsNational(Base base);
/// Whether values are filled up to the length (char, nchar, binary).
bool IsFixedLength(Base base);

/// The type's own name as messages show it, without facets: "nvarchar", "numeric".
std::string_view NameOf(Base base);
/// The base of a type's name, letter case ignored; `Base::null` when there is no such type.
Base BaseNamed(std::string_view name);
/// The type as a declaration shows it: "nvarchar(10)", "decimal(30,10)".
std::string Declaration(const Type& type);
/// The type to declare a SQLite column with: a word that gives SQLite's affinity, SQL Server's declaration, the
/// collation.
std::string SqliteDeclaration(const Type& type);

/// The exact number type that holds every value of `type`: int gives decimal(10,0), money decimal(19,4).
Type AsDecimal(const Type& type);
/// A decimal type cut to 38 digits as SQL Server does it for results of arithmetic.
Type FitDecimal(int precision, int scale);
/// The type that both convert to when they meet in a comparison, a union or a case.
Type CommonType(const Type& left, const Type& right);

/// Digits of the second's fraction that values of a date type have.
int FractionDigits(const Type& type);

/// The type in one whole number, for arguments of SQLite functions. It stands in files: in the SQL of views and in the
/// catalog, so that a type's code stays what it is.
std::int64_t Pack(const Type& type);
Type Unpack(std::int64_t code);

/// How ADO tells of a column of this type.
host::Field FieldOf(std::string name, const Type& type, bool nullable);

} // namespace refhost::sql
