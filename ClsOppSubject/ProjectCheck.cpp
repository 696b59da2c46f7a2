#include "ClsOppSubject/ProjectCheck.h"

#include "ClsOppSubject/OppositeSetting.h"
#include "ModPub/Conversions.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace kovra {
namespace {

using host::Value;

/// The values of the first row that the look-up finds; empty when it finds none.
std::vector<Value> FirstRow(ModPub::RowLookups& lookups, std::initializer_list<std::string_view> sql) {
    host::Recordset& recordset = lookups.Open(sql);
    std::vector<Value> values;
    if (recordset.RecordCount() != 0) {
        for (std::size_t column = 0; column < recordset.FieldCount(); ++column) {
            values.push_back(recordset.FieldValue(column));
        }
    }
    recordset.Close();
    return values;
}

/// Whether a stored name is another than the given one, letter case counting. A Null name never is.
bool Differs(const Value& stored, const std::string& given) {
    return !stored.IsNull() && ModPub::ToText(stored) != given;
}

} // namespace

std::string_view ProjectFailure(ModPub::RowLookups& lookups, const OppositeSetting& setting) {
    if (setting.cItem_class.empty()) {
        return setting.cItemCode.empty() ? "" : "没有录入项目大类。";
    }
    if (setting.cItemCode.empty()) {
        return "没有录入项目。";
    }
    const std::vector<Value> projectClass = FirstRow(lookups, {"Select citem_class,citem_name,ctable from fitem "
                                                               " Where citem_class='",
                                                               setting.cItem_class, "' "});
    if (projectClass.empty()) {
        return "项目大类不合法。";
    }
    if (Differs(projectClass[1], setting.cItemCName)) {
        return "项目大类名称不符。";
    }
    // Without a table's name the query has none either and fails.
    const std::string table = projectClass[2].IsNull() ? std::string() : ModPub::ToText(projectClass[2]);
    const std::vector<Value> project =
        FirstRow(lookups, {"Select cItemCode,cItemName from ", table, " Where cItemCode ='", setting.cItemCode, "' "});
    if (project.empty()) {
        return "项目不合法。";
    }
    if (Differs(project[1], setting.cName)) {
        return "项目名称不符。";
    }
    return {};
}

} // namespace kovra
