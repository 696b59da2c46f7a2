#include "refhost/sql/functions/Functions.h"

#include "refhost/sql/functions/AppliedRows.h"
#include "refhost/sql/functions/FunctionGroups.h"
#include "refhost/sql/types/Collation.h"

namespace refhost::sql {
namespace {

template <int (*Compare)(std::string_view, std::string_view)>
int Collate(void* /*data*/, int leftSize, const void* left, int rightSize, const void* right) {
    return Compare({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                   {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

void Register(sqlite3* db, Runtime& runtime, std::span<const FunctionRow> rows, int flags) {
    for (const FunctionRow& row : rows) {
        sqlite3_create_function_v2(db, row.name, row.arguments, flags, &runtime, row.entry, nullptr, nullptr, nullptr);
    }
}

} // namespace

void RegisterFunctions(sqlite3* db, Runtime& runtime) {
    for (const auto group : {ArithmeticFunctions, TextFunctions, SearchFunctions, NumberFunctions, DateFunctions}) {
        Register(db, runtime, group(), SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS);
    }
    Register(db, runtime, SessionFunctions(), SQLITE_UTF8);
    RegisterAggregates(db, runtime);
    RegisterAppliedRows(db);
    sqlite3_create_collation_v2(db, std::string(textCollation).c_str(), SQLITE_UTF8, nullptr, Collate<CompareText>,
                                nullptr);
    sqlite3_create_collation_v2(db, std::string(exactCollation).c_str(), SQLITE_UTF8, nullptr, Collate<CompareExact>,
                                nullptr);
}

} // namespace refhost::sql
