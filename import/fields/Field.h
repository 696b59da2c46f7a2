#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace importing {

/// What a column holds, which decides how its cells are read.
enum class FieldType {
    code,
    number,
    /// A number that must not be negative.
    price,
    date,
    text,
    /// A text that the class compares with a name of the account.
    name,
};

/// The account's list that the codes of a column stand in.
enum class CodeList {
    none,
    warehouse,
    /// Warehouses that take part in costing.
    costedWarehouse,
    item,
    itemClass,
    /// Leaf accounts of the login's year.
    account,
    category,
    /// Leaf receipt and issue categories.
    leafCategory,
    department,
    /// Leaf departments.
    leafDepartment,
    projectClass,
};

/// Where a column goes in the request.
enum class Place { row, header, entry };

/// One column of a class's table.
struct Field {
    /// The element in the request.
    std::string_view element;
    /// A second element that gets the same value, where the class reads the field under two names; empty for none.
    std::string_view alsoElement = {};
    std::string_view chinese;
    std::string_view english;
    /// Further headings that people use, separated by "|".
    std::string_view synonyms = {};
    FieldType type = FieldType::text;
    CodeList list = CodeList::none;
    /// Characters that the column takes, in UTF-16 units.
    std::size_t length = 0;
    /// A row without a value is refused.
    bool required = false;
    /// Part of what tells a row from the others: two rows with the same key are one too many.
    bool key = false;
    Place place = Place::row;
};

/// An element that a request carries besides the columns.
struct FixedElement {
    std::string_view element;
    std::string_view value;
    Place place = Place::row;
    /// The column that must have a value for it; empty for always.
    std::string_view with = {};
};

/// What a class imports, as a table.
struct ClassFields {
    std::string_view className;
    /// What is imported, as people call it.
    std::string_view chinese;
    std::string_view english;
    std::span<const Field> fields;
    /// The column whose rows make one document where they are the same; empty where each row stands alone.
    std::string_view document;
    std::span<const FixedElement> fixed;
};

/// The classes' tables, in the classes' order of names.
std::span<const ClassFields> AllClassFields();

/// The table of a class, nullptr when there is none of that name.
const ClassFields* FieldsOf(std::string_view className);

} // namespace importing
