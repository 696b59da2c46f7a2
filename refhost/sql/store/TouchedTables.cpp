#include "refhost/sql/store/TouchedTables.h"

#include "refhost/sql/store/Runtime.h"

#include <algorithm>
#include <array>
#include <new>
#include <string_view>

namespace refhost::sql {
namespace {

/// Functions that look-ups call and that depend on nothing but their arguments and the rows.
constexpr std::array<std::string_view, 6> plainFunctions{"coalesce", "ifnull", "count", "max", "min", "sum"};

/// Whether it is a table that statements fill, none of the engine's or SQLite's own.
bool IsOrdinary(std::string_view table) {
    return !table.starts_with("sys:") && !table.starts_with("sqlite_") && table != "k_rows";
}

} // namespace

void TouchedTables::Add(std::vector<std::string>& tables, std::string_view table) noexcept {
    try {
        if (std::ranges::find(tables, table) == tables.end()) {
            tables.emplace_back(table);
        }
    } catch (const std::bad_alloc&) {
        complete = false;
    }
}

void TouchedTables::Note(int action, const char* first, const char* second, const char* database) noexcept {
    const bool inAccount = database != nullptr && database == SqliteName(Schema::account);
    switch (action) {
    case SQLITE_SELECT:
        return;
    case SQLITE_READ:
        if (inAccount && IsOrdinary(first)) {
            return Add(read, first);
        }
        break;
    case SQLITE_INSERT:
        if (inAccount) {
            Add(inserted, first);
        }
        break;
    case SQLITE_FUNCTION:
        if (std::ranges::find(plainFunctions, second) != plainFunctions.end()) {
            return;
        }
        break;
    default:
        break;
    }
    answersFromTables = false;
}

} // namespace refhost::sql
