#include "refhost/ado/Database.h"

#include <utility>

namespace refhost {

void Database::RunBatch(std::string_view sql, TimeLimit /*limit*/, const BatchSink& sink) {
    ResultSet rows;
    try {
        rows = Query(sql);
    } catch (const host::Error& error) {
        return sink(error);
    }
    if (rows.fields) {
        sink(std::move(rows));
    }
}

} // namespace refhost
