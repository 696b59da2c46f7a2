#include "ModPub/RowLookups.h"

#include "ModPub/Lookup.h"

namespace ModPub {

host::Recordset& RowLookups::Open(std::initializer_list<std::string_view> sql) {
    constexpr std::size_t usualSize = 192;
    sql_.clear();
    sql_.reserve(usualSize);
    for (const std::string_view piece : sql) {
        sql_.append(piece);
    }
    if (!recordset_) {
        recordset_ = state_.environment.CreateRecordset();
    }
    OpenLookup(*recordset_, *state_.connection, sql_);
    return *recordset_;
}

bool RowLookups::Find(std::initializer_list<std::string_view> sql) {
    host::Recordset& recordset = Open(sql);
    const bool found = recordset.RecordCount() != 0;
    recordset.Close();
    return found;
}

} // namespace ModPub
