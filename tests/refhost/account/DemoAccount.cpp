#include "tests/refhost/account/DemoAccount.h"

#include "ModPub/Conversions.h"

namespace refhost {

std::vector<std::string> DemoAccount::Rows(std::string_view sql) {
    const ResultSet result = connection.database().Query(sql);
    const std::size_t columns = result.fields ? result.fields->size() : 0;
    std::vector<std::string> rows(result.rowCount);
    for (std::size_t i = 0; i < result.cells.size(); ++i) {
        std::string& row = rows[i / columns];
        if (i % columns != 0) {
            row += '|';
        }
        row += result.cells[i].IsNull() ? "NULL" : ModPub::ToText(result.cells[i]);
    }
    return rows;
}

} // namespace refhost
