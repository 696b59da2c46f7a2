#include "refhost/sql/types/Types.h"

#include "refhost/sql/types/Collation.h"

#include <algorithm>
#include <array>
#include <utility>

#include <fmt/format.h>

namespace refhost::sql {
namespace {

struct Row {
    Base base;
    /// What stands for the type in files; never another, whatever order the types have here.
    std::uint8_t code;
    std::string_view name;
    Family family;
    std::string_view affinity;
    host::FieldType field;
    /// Of the decimal that holds every value of a whole number or of money; what other types are taken for.
    int precision = 18;
    int scale = 0;
};

constexpr std::array rows{
    Row{Base::null, 0, "int", Family::null, "", host::FieldType::integer},
    Row{Base::binary, 1, "binary", Family::binary, "BLOB ", host::FieldType::binary},
    Row{Base::varbinary, 2, "varbinary", Family::binary, "BLOB ", host::FieldType::varBinary},
    Row{Base::character, 3, "char", Family::text, "", host::FieldType::character},
    Row{Base::varchar, 4, "varchar", Family::text, "", host::FieldType::varChar},
    Row{Base::nchar, 5, "nchar", Family::text, "", host::FieldType::wideCharacter},
    Row{Base::nvarchar, 6, "nvarchar", Family::text, "", host::FieldType::varWideChar},
    Row{Base::uniqueidentifier, 7, "uniqueidentifier", Family::guid, "TEXT ", host::FieldType::guid},
    Row{Base::timestamp, 8, "timestamp", Family::binary, "BLOB ", host::FieldType::binary},
    Row{Base::image, 9, "image", Family::binary, "BLOB ", host::FieldType::longVarBinary},
    Row{Base::text, 10, "text", Family::text, "", host::FieldType::longVarChar},
    Row{Base::ntext, 11, "ntext", Family::text, "", host::FieldType::longVarWideChar},
    Row{Base::bit, 12, "bit", Family::integer, "", host::FieldType::boolean, 1, 0},
    Row{Base::tinyint, 13, "tinyint", Family::integer, "", host::FieldType::unsignedTinyInt, 3, 0},
    Row{Base::smallint, 14, "smallint", Family::integer, "", host::FieldType::smallInt, 5, 0},
    Row{Base::integer, 15, "int", Family::integer, "", host::FieldType::integer, 10, 0},
    Row{Base::bigint, 16, "bigint", Family::integer, "", host::FieldType::bigInt, 19, 0},
    Row{Base::smallmoney, 17, "smallmoney", Family::exact, "TEXT ", host::FieldType::currency, 10, 4},
    Row{Base::money, 18, "money", Family::exact, "TEXT ", host::FieldType::currency, 19, 4},
    Row{Base::decimal, 19, "numeric", Family::exact, "TEXT ", host::FieldType::numeric},
    Row{Base::real, 20, "real", Family::real, "", host::FieldType::single},
    Row{Base::floating, 21, "float", Family::real, "", host::FieldType::doubleFloat},
    Row{Base::date, 22, "date", Family::date, "", host::FieldType::dbDate},
    Row{Base::smalldatetime, 23, "smalldatetime", Family::date, "", host::FieldType::dbTimeStamp},
    Row{Base::datetime, 24, "datetime", Family::date, "", host::FieldType::dbTimeStamp},
    Row{Base::datetime2, 25, "datetime2", Family::date, "", host::FieldType::dbTimeStamp},
};

const Row& RowOf(Base base) { return rows.at(static_cast<std::size_t>(base)); }

constexpr int codeCount = 256;

constexpr std::array<Base, codeCount> MakeBases() {
    std::array<Base, codeCount> bases{};
    for (const Row& row : rows) {
        bases.at(row.code) = row.base;
    }
    return bases;
}

/// The type of each code.
constexpr std::array<Base, codeCount> bases = MakeBases();

constexpr int maxPrecision = 38;
/// What ADO reports as the defined size of (max) types.
constexpr int endlessSize = 0x3fffffff;
constexpr int timestampSize = 8;

} // namespace

Family FamilyOf(Base base) { return RowOf(base).family; }

bool IsNational(Base base) { return base == Base::nchar || base == Base::nvarchar || base == Base::ntext; }

bool IsFixedLength(Base base) { return base == Base::character || base == Base::nchar || base == Base::binary; }

std::string_view NameOf(Base base) { return RowOf(base).name; }

Base BaseNamed(std::string_view name) {
    static constexpr std::array<std::pair<std::string_view, Base>, 7> synonyms{{
        {"decimal", Base::decimal},
        {"dec", Base::decimal},
        {"integer", Base::integer},
        {"character", Base::character},
        {"rowversion", Base::timestamp},
        {"sysname", Base::nvarchar},
        {"double", Base::floating},
    }};
    for (const Row& row : rows) {
        if (row.base != Base::null && EqualNames(row.name, name)) {
            return row.base;
        }
    }
    for (const auto& [synonym, base] : synonyms) {
        if (EqualNames(synonym, name)) {
            return base;
        }
    }
    return Base::null;
}

std::string Declaration(const Type& type) {
    switch (type.base) {
    case Base::binary:
    case Base::varbinary:
    case Base::character:
    case Base::varchar:
    case Base::nchar:
    case Base::nvarchar:
        return type.length == Type::maxLength ? fmt::format("{}(max)", NameOf(type.base))
                                              : fmt::format("{}({})", NameOf(type.base), type.length);
    case Base::decimal:
        return fmt::format("decimal({},{})", type.precision, type.scale);
    case Base::datetime2:
        return fmt::format("datetime2({})", FractionDigits(type));
    default:
        return std::string(NameOf(type.base));
    }
}

std::string SqliteDeclaration(const Type& type) {
    std::string text(RowOf(type.base).affinity);
    text += type.length == Type::maxLength ? std::string(NameOf(type.base)) : Declaration(type);
    if (FamilyOf(type) == Family::text || FamilyOf(type) == Family::guid) {
        text += " COLLATE ";
        text += textCollation;
    } else if (FamilyOf(type) == Family::exact) {
        text += " COLLATE ";
        text += exactCollation;
    }
    return text;
}

Type AsDecimal(const Type& type) {
    const Row& row = RowOf(type.base);
    return type.base == Base::decimal ? type : Type{Base::decimal, 0, row.precision, row.scale};
}

Type FitDecimal(int precision, int scale) {
    if (precision > maxPrecision) {
        // SQL Server keeps the whole digits and gives up digits behind the point, but not below six of them.
        const int whole = precision - scale;
        scale = std::max(std::min(scale, 6), std::min(scale, maxPrecision - whole));
        precision = maxPrecision;
    }
    return {Base::decimal, 0, precision, scale};
}

int FractionDigits(const Type& type) {
    constexpr int ticks = 7;
    switch (type.base) {
    case Base::datetime2:
        return type.precision == 0 ? ticks : type.scale;
    case Base::datetime:
        return 3;
    default:
        return 0;
    }
}

Type CommonType(const Type& left, const Type& right) {
    if (left.base == Base::null) {
        return right;
    }
    if (right.base == Base::null) {
        return left;
    }
    const bool leftWins = left.base >= right.base;
    Type type = leftWins ? left : right;
    const Type& other = leftWins ? right : left;
    const Family family = FamilyOf(type);
    if ((family == Family::text || family == Family::binary) && FamilyOf(other) == family) {
        const bool endless = left.length == Type::maxLength || right.length == Type::maxLength;
        type.length = endless ? Type::maxLength : std::max(left.length, right.length);
        if (left.length != right.length && IsFixedLength(type.base)) {
            // Values of two lengths meet in the type of varying length.
            type.base = static_cast<Base>(static_cast<int>(type.base) + 1);
        }
    }
    if (type.base == Base::decimal && (FamilyOf(other) == Family::exact || FamilyOf(other) == Family::integer)) {
        const Type exact = AsDecimal(other);
        const int scale = std::max(type.scale, exact.scale);
        const int whole = std::max(type.precision - type.scale, exact.precision - exact.scale);
        type = FitDecimal(whole + scale, scale);
    }
    return type;
}

std::int64_t Pack(const Type& type) {
    return std::int64_t{RowOf(type.base).code} | (static_cast<std::int64_t>(type.length + 1) << 8) |
           (static_cast<std::int64_t>(type.precision) << 40) | (static_cast<std::int64_t>(type.scale) << 48);
}

Type Unpack(std::int64_t code) {
    Type type;
    type.base = bases.at(static_cast<std::size_t>(code & 0xff));
    type.length = static_cast<int>((code >> 8) & 0xffffffff) - 1;
    type.precision = static_cast<int>((code >> 40) & 0xff);
    type.scale = static_cast<int>((code >> 48) & 0xff);
    return type;
}

host::Field FieldOf(std::string name, const Type& type, bool nullable) {
    host::Field field;
    field.name = std::move(name);
    field.type = RowOf(type.base).field;
    field.nullable = nullable;
    const Family family = FamilyOf(type);
    if (family == Family::text || family == Family::binary) {
        field.definedSize = type.base == Base::timestamp ? timestampSize : type.length;
        if (type.length == Type::maxLength) {
            field.definedSize = endlessSize;
            if (family == Family::binary) {
                field.type = host::FieldType::longVarBinary;
            } else {
                field.type = IsNational(type.base) ? host::FieldType::longVarWideChar : host::FieldType::longVarChar;
            }
        }
    }
    if (type.base == Base::decimal) {
        field.precision = type.precision;
        field.scale = type.scale;
    }
    return field;
}

} // namespace refhost::sql
