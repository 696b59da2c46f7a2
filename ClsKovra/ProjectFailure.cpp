#include "ClsKovra/ProjectFailure.h"

#include "ClsKovra/SetChildText.h"
#include "ModPub/Conversions.h"

namespace kovra {
namespace {

std::string ProjectStatement(const std::string& table, const std::string& cItemCode) {
    if (ModPub::LowerCase(table) == "inventory") {
        return "Select cInvCode ,cInvName from " + table + " Where cInvCode ='" + cItemCode + "' ";
    }
    return "Select cItemCode,cItemName from " + table + " Where cItemCode ='" + cItemCode + "' ";
}

} // namespace

std::string ProjectFailure(ModPub::RowLookups& lookups, const OpeningRow& row) {
    const std::string cItem_class = row.Field("cItem_class");
    const std::string cItemCode = row.Field("cItemCode");
    if (cItem_class.empty()) {
        return cItemCode.empty() ? "" : "没有录入项目大类。";
    }
    if (cItemCode.empty()) {
        return "没有录入项目。";
    }
    const auto projectClass = lookups.FirstRow<3>({"Select citem_class,citem_name,ctable from fitem "
                                                   " Where citem_class='",
                                                   cItem_class, "' "});
    if (!projectClass) {
        return "项目大类不合法。";
    }
    SetChildText(row.element, "cItemCName", ModPub::ToText((*projectClass)[1]));
    // Without a table's name the query has none either and fails.
    const host::Value& ctable = (*projectClass)[2];
    const std::string table = ctable.IsNull() ? std::string() : ModPub::ToText(ctable);
    const auto project = lookups.FirstRow<2>({ProjectStatement(table, cItemCode)});
    if (!project) {
        return "项目不合法。";
    }
    SetChildText(row.element, "cName", ModPub::ToText((*project)[1]));
    return {};
}

} // namespace kovra
