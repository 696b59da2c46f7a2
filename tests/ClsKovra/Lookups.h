#pragma once

#include "tests/ClsKovra/OpeningFixture.h"

#include <array>
#include <string>
#include <vector>

/// The look-ups of a row, as trace lines.
namespace test::lookup {

inline std::string Item(const std::string& code) {
    return Opened("Select cValuetype,iInvRCost From inventory  Where cInvCode='" + code +
                  "' and bService=0 and bInvType=0 and isnull(bPTOModel,0)=0 ");
}
inline std::string Scope() { return Opened("SELECT * FROM AccInformation WHERE cSysID='IA' AND cName='cValueStyle'"); }
inline std::string FreeItems(const std::string& code) {
    return Opened("Select bFree1,bFree2,bFree3,bFree4,bFree5,bFree6,bFree7,bFree8,bFree9,bFree10 from Inventory where "
                  "cinvcode='" +
                  code + "'");
}
inline std::string Warehouse(const std::string& code) {
    return Opened("Select cwhvaluestyle From Warehouse  Where cWhCode='" + code + "' and bincost = 1 ");
}
inline std::string MethodOfWarehouse(const std::string& code) {
    return Opened("select cWhValueStyle from Warehouse where cWHCode=N'" + code + "'");
}
inline std::string MethodOfItem(const std::string& code) {
    return Opened("select cValueType from Inventory where cInvCode=N'" + code + "'");
}
inline std::string BatchAccounting(const std::string& code) {
    return Opened("select isnull(bCheckBatch,0) from inventory where cInvCode=N'" + code + "'");
}
inline std::string ProjectClass(const std::string& code) {
    return Opened("Select citem_class,citem_name,ctable from fitem  Where citem_class='" + code + "' ");
}
inline std::string Project(const std::string& table, const std::string& code) {
    return Opened("Select cItemCode,cItemName from " + table + " Where cItemCode ='" + code + "' ");
}
inline std::string ProjectOfInventory(const std::string& table, const std::string& code) {
    return Opened("Select cInvCode ,cInvName from " + table + " Where cInvCode ='" + code + "' ");
}
inline std::string Flag(const std::string& column, const std::string& code) {
    return Opened("SELECT " + column + " FROM Inventory WHERE cInvCode='" + code + "'");
}
/// The price of an item with free items, those of a row.
inline std::string Price(const std::string& code, const std::array<std::string, 10>& freeItems = {}) {
    std::string sql = "select fInvRCost from InvCheckFreeIA870 where cInvCode = N'" + code + "' ";
    for (std::size_t index = 0; index < freeItems.size(); ++index) {
        const std::string column = "isnull(cFree" + std::to_string(index + 1) + ",N'')";
        sql.append(" and ( " + column + " = isnull(N'" + freeItems[index] + "',N'') or " + column + " = N'') ");
    }
    return Opened(sql);
}

/// What `CheckRowMasterData` asks for a row without a project in a warehouse with an average method.
inline std::vector<std::string> MasterData(const std::string& warehouse, const std::string& item) {
    return {Item(item),           Scope(), FreeItems(item), Warehouse(warehouse), Scope(), MethodOfWarehouse(warehouse),
            BatchAccounting(item)};
}

} // namespace test::lookup
