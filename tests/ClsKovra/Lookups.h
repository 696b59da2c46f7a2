#pragma once

#include "tests/ClsKovra/OpeningTest.h"

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
/// The price of a row whose free items are all empty.
inline std::string Price(const std::string& code) {
    return Opened("select fInvRCost from InvCheckFreeIA870 where cInvCode = N'" + code +
                  "'  and ( isnull(cFree1,N'') = isnull(N'',N'') or isnull(cFree1,N'') = N'') "
                  " and ( isnull(cFree2,N'') = isnull(N'',N'') or isnull(cFree2,N'') = N'') "
                  " and ( isnull(cFree3,N'') = isnull(N'',N'') or isnull(cFree3,N'') = N'') "
                  " and ( isnull(cFree4,N'') = isnull(N'',N'') or isnull(cFree4,N'') = N'') "
                  " and ( isnull(cFree5,N'') = isnull(N'',N'') or isnull(cFree5,N'') = N'') "
                  " and ( isnull(cFree6,N'') = isnull(N'',N'') or isnull(cFree6,N'') = N'') "
                  " and ( isnull(cFree7,N'') = isnull(N'',N'') or isnull(cFree7,N'') = N'') "
                  " and ( isnull(cFree8,N'') = isnull(N'',N'') or isnull(cFree8,N'') = N'') "
                  " and ( isnull(cFree9,N'') = isnull(N'',N'') or isnull(cFree9,N'') = N'') "
                  " and ( isnull(cFree10,N'') = isnull(N'',N'') or isnull(cFree10,N'') = N'') ");
}

/// What `CheckRowMasterData` asks for a row without a project in a warehouse with an average method.
inline std::vector<std::string> MasterData(const std::string& warehouse, const std::string& item) {
    return {Item(item),           Scope(), FreeItems(item), Warehouse(warehouse), Scope(), MethodOfWarehouse(warehouse),
            BatchAccounting(item)};
}

} // namespace test::lookup
