#include "refhost/sql/store/Catalog.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <array>

namespace refhost::sql {
namespace {

constexpr Type sysname{Base::nvarchar, 128, 0, 0};
constexpr Type number{Base::integer, 0, 0, 0};
constexpr Type smallNumber{Base::smallint, 0, 0, 0};
constexpr Type kindOfObject{Base::character, 2, 0, 0};
constexpr Type moment{Base::datetime, 0, 0, 0};
constexpr Type word{Base::varchar, 20, 0, 0};

struct ViewColumn {
    std::string_view name;
    Type type;
    std::string_view source;
};

constexpr std::array objectColumns{
    ViewColumn{"name", sysname, "name"},
    ViewColumn{"id", number, "id"},
    ViewColumn{"xtype", kindOfObject, "xtype"},
    ViewColumn{"uid", smallNumber, "1"},
    ViewColumn{"info", smallNumber, "0"},
    ViewColumn{"status", number, "0"},
    ViewColumn{"parent_obj", number, "parent"},
    ViewColumn{"crdate", moment, "created"},
    ViewColumn{"type", kindOfObject, "CASE xtype WHEN 'PK' THEN 'K ' WHEN 'UQ' THEN 'K ' ELSE xtype END"},
    ViewColumn{"category", number, "0"},
};

constexpr std::array columnColumns{
    ViewColumn{"name", sysname, "name"},
    ViewColumn{"id", number, "id"},
    ViewColumn{"length", smallNumber, "length"},
    ViewColumn{"xprec", smallNumber, "prec"},
    ViewColumn{"xscale", smallNumber, "scale"},
    ViewColumn{"colid", smallNumber, "colid"},
    ViewColumn{"prec", smallNumber, "coalesce(nullif(prec, 0), length)"},
    ViewColumn{"scale", number, "scale"},
    ViewColumn{"isnullable", number, "nullable"},
};

constexpr std::array schemaTableColumns{
    ViewColumn{"TABLE_CATALOG", sysname, "{db}"},
    ViewColumn{"TABLE_SCHEMA", sysname, "'dbo'"},
    ViewColumn{"TABLE_NAME", sysname, "name"},
    ViewColumn{"TABLE_TYPE", word, "CASE xtype WHEN 'U ' THEN 'BASE TABLE' ELSE 'VIEW' END"},
};

constexpr std::array schemaColumnColumns{
    ViewColumn{"TABLE_CATALOG", sysname, "{db}"},
    ViewColumn{"TABLE_SCHEMA", sysname, "'dbo'"},
    ViewColumn{"TABLE_NAME", sysname, "o.name"},
    ViewColumn{"COLUMN_NAME", sysname, "c.name"},
    ViewColumn{"ORDINAL_POSITION", number, "c.colid"},
    ViewColumn{"COLUMN_DEFAULT", {Base::nvarchar, 4000, 0, 0}, "nullif(c.default_text, '')"},
    ViewColumn{"IS_NULLABLE", word, "CASE c.nullable WHEN 0 THEN 'NO' ELSE 'YES' END"},
    ViewColumn{"DATA_TYPE", sysname, "CASE c.type_name WHEN 'numeric' THEN 'decimal' ELSE c.type_name END"},
    ViewColumn{"CHARACTER_MAXIMUM_LENGTH", number, "nullif(c.length, 0)"},
    ViewColumn{"NUMERIC_PRECISION", number, "nullif(c.prec, 0)"},
    ViewColumn{"NUMERIC_SCALE", number, "CASE WHEN c.prec > 0 THEN c.scale END"},
};

constexpr std::string_view typeDescription =
    "CASE xtype WHEN 'U ' THEN 'USER_TABLE' WHEN 'V ' THEN 'VIEW' WHEN 'PK' THEN 'PRIMARY_KEY_CONSTRAINT' "
    "WHEN 'UQ' THEN 'UNIQUE_CONSTRAINT' WHEN 'F ' THEN 'FOREIGN_KEY_CONSTRAINT' WHEN 'D ' THEN 'DEFAULT_CONSTRAINT' "
    "ELSE 'CHECK_CONSTRAINT' END";

/// Of sys.objects, sys.tables and sys.views.
constexpr std::array sysObjectColumns{
    ViewColumn{"name", sysname, "name"},          ViewColumn{"object_id", number, "id"},
    ViewColumn{"schema_id", number, "1"},         ViewColumn{"parent_object_id", number, "parent"},
    ViewColumn{"type", kindOfObject, "xtype"},    ViewColumn{"type_desc", {Base::nvarchar, 60, 0, 0}, typeDescription},
    ViewColumn{"create_date", moment, "created"},
};

/// Bytes that a value takes; -1 for (max).
constexpr std::string_view maxLength =
    "CASE type_name WHEN 'nvarchar' THEN CASE length WHEN -1 THEN -1 ELSE 2 * length END WHEN 'nchar' THEN 2 * length "
    "WHEN 'int' THEN 4 WHEN 'bigint' THEN 8 WHEN 'smallint' THEN 2 WHEN 'tinyint' THEN 1 WHEN 'bit' THEN 1 "
    "WHEN 'money' THEN 8 WHEN 'smallmoney' THEN 4 WHEN 'float' THEN 8 WHEN 'real' THEN 4 WHEN 'datetime' THEN 8 "
    "WHEN 'smalldatetime' THEN 4 WHEN 'date' THEN 3 WHEN 'datetime2' THEN 8 WHEN 'uniqueidentifier' THEN 16 "
    "WHEN 'text' THEN 16 WHEN 'ntext' THEN 16 WHEN 'image' THEN 16 "
    "ELSE CASE WHEN prec > 28 THEN 17 WHEN prec > 19 THEN 13 WHEN prec > 9 THEN 9 WHEN prec > 0 THEN 5 ELSE length "
    "END END";

constexpr std::array sysColumnColumns{
    ViewColumn{"object_id", number, "id"},
    ViewColumn{"name", sysname, "name"},
    ViewColumn{"column_id", number, "colid"},
    ViewColumn{"max_length", smallNumber, maxLength},
    ViewColumn{"precision", {Base::tinyint, 0, 0, 0}, "prec"},
    ViewColumn{"scale", {Base::tinyint, 0, 0, 0}, "scale"},
    ViewColumn{"is_nullable", {Base::bit, 0, 0, 0}, "nullable"},
    ViewColumn{"is_identity", {Base::bit, 0, 0, 0}, "is_identity"},
    ViewColumn{"is_computed", {Base::bit, 0, 0, 0}, "computed_text <> ''"},
};

template <std::size_t count>
std::shared_ptr<const Table> Build(const ObjectPath& path, const std::array<ViewColumn, count>& columns,
                                   std::string_view from, const std::string& databaseName) {
    auto table = std::make_shared<Table>();
    table->schema = path.schema;
    table->name = path.name;
    table->view = true;
    table->source = "(SELECT ";
    for (const ViewColumn& source : columns) {
        Cell catalogName;
        catalogName.SetText(path.schema == Schema::account ? databaseName : std::string(SqliteName(path.schema)));
        const std::string value = source.source == "{db}" ? Spelled(catalogName) : std::string(source.source);
        table->source += fmt::format("{}{}{} AS {}", table->columns.empty() ? "" : ", ", value,
                                     FamilyOf(source.type) == Family::text ? fmt::format(" COLLATE {}", textCollation)
                                                                           : std::string(),
                                     Quoted(source.name));
        Column column;
        column.name = source.name;
        column.type = source.type;
        table->columns.push_back(std::move(column));
    }
    table->source += fmt::format(" FROM {})", from);
    return table;
}

} // namespace

std::shared_ptr<const Table> SystemView(const ObjectPath& path, const std::string& databaseName) {
    const std::string_view in = SqliteName(path.schema);
    const std::string name = FoldText(path.name);
    const std::string objects = fmt::format("{}.\"sys:objects\"", in);
    const std::string columns = fmt::format("{}.\"sys:columns\"", in);
    if (path.owner == "information_schema") {
        if (name == "tables") {
            return Build(path, schemaTableColumns, objects + " WHERE xtype IN ('U ', 'V ')", databaseName);
        }
        if (name == "columns") {
            return Build(path, schemaColumnColumns, columns + " c JOIN " + objects + " o ON o.id = c.id", databaseName);
        }
        return nullptr;
    }
    if (path.owner == "sys") {
        if (name == "objects") {
            return Build(path, sysObjectColumns, objects, databaseName);
        }
        if (name == "tables" || name == "views") {
            const std::string_view only = name == "tables" ? " WHERE xtype = 'U '" : " WHERE xtype = 'V '";
            return Build(path, sysObjectColumns, objects + std::string(only), databaseName);
        }
        if (name == "columns") {
            return Build(path, sysColumnColumns, columns, databaseName);
        }
    }
    if (name == "sysobjects") {
        return Build(path, objectColumns, objects, databaseName);
    }
    if (name == "syscolumns") {
        return Build(path, columnColumns, columns, databaseName);
    }
    return nullptr;
}

} // namespace refhost::sql
