// A request of 100,000 rows takes linear time only as long as no look-up of a row walks through a table. Here every
// look-up that runs once a row, as the classes write it, is held against SQLite's plan for it.

#include "refhost/account/Account.h"
#include "refhost/sql/engine/EmbeddedDatabase.h"
#include "tests/refhost/account/DemoAccount.h"

#include <memory>

#include <sqlite3.h>

namespace refhost {

namespace {

using testing::HasSubstr;
using testing::Not;

class LookUp : public DemoAccount {
protected:
    /// SQLite's plan for `sql`, its lines joined by "; ".
    std::string Plan(const std::string& sql) {
        auto& database = dynamic_cast<sql::EmbeddedDatabase&>(connection.database());
        const std::string explain = "EXPLAIN QUERY PLAN " + database.Translate(sql).text;
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(database.Handle(), explain.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
            return std::string("no plan: ") + sqlite3_errmsg(database.Handle());
        }
        const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> owner(statement, &sqlite3_finalize);
        std::string plan;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            plan += plan.empty() ? "" : "; ";
            plan += reinterpret_cast<const char*>(sqlite3_column_text(statement, 3));
        }
        return plan;
    }
};

/// A look-up, the index that it must use and how many of the index's columns it must give.
struct Case {
    const char* sql;
    const char* index;
    std::size_t columns;
};

const Case cases[] = {
    // Settings: every combination of keys that a row may give.
    {"Select AutoID From IA_HeadSet Where cWhCode = '01' And iyear = 2024", "IX_IA_HeadSet_Warehouse", 2},
    {"Select AutoID From IA_HeadSet Where cInvCCode = '0101' And iyear = 2024", "IX_IA_HeadSet_Class", 2},
    {"Select AutoID From IA_HeadSet Where cInvCode = '1001' And iyear = 2024", "IX_IA_HeadSet_Item", 2},
    {"Select AutoID From IA_HeadSet Where cWhCode = '01' And cInvCCode = '0101' And iyear = 2024",
     "IX_IA_HeadSet_Class", 3},
    {"Select AutoID From IA_HeadSet Where cWhCode = '01' And cInvCode = '1001' And iyear = 2024", "IX_IA_HeadSet_Item",
     3},
    // Mappings: six keys, given or empty; standard costing knows three.
    {"Select AutoID From IA_OppHead Where cRdCode = N'101' And isnull(cInvcCode,N'') = N'' And cInvCode = N'1001' And "
     "isnull(cDepCode,N'') = N'' And isnull(citem_class,N'') = N'' And isnull(citemcode,N'') = N'' And iyear = 2024",
     "IX_IA_OppHead", 7},
    {"Select AutoID From IA_OppHead Where isnull(cRdCode,N'') = N'' And cInvcCode = N'0101' And isnull(cInvCode,N'') = "
     "N'' And cDepCode = N'0201' And citem_class = N'97' And citemcode = N'RD01' And iyear = 2024",
     "IX_IA_OppHead", 7},
    {"Select AutoID From IA_OppHead Where isnull(cRdCode,N'') = N'101' And isnull(cInvcCode,N'') = N'' And "
     "isnull(cDepCode,N'') = N'0201' And iyear = 2024",
     "IX_IA_OppHead", 4},
    // Master data.
    {"Select cValuetype From inventory  Where cInvCode='1001' and bService=0 and bInvType=0 and isnull(bPTOModel,0)=0 ",
     "PK_inventory", 1},
    {"SELECT bInvBatch FROM Inventory WHERE cInvCode='1001'", "PK_inventory", 1},
    {"select isnull(bCheckBatch,0) from inventory where cInvCode=N'1001'", "PK_inventory", 1},
    {"Select cInvCCode From inventoryclass  Where cInvCCode='0101'", "PK_inventoryclass", 1},
    {"Select cwhvaluestyle From Warehouse  Where cWhCode='01' ", "PK_Warehouse", 1},
    {"Select cRdCode From rd_style  Where bRdEnd = 1 and  cRdCode=N'101' ", "PK_rd_style", 1},
    {"select cDepCode from department where bDepEnd = 1 and cdepcode = N'0201' ", "PK_department", 1},
    {"select ccode from code where ccode = '140301' and  bend =1 and iyear =2024", "PK_code", 2},
    {"Select citem_class,citem_name,ctable from fitem  Where citem_class='97' ", "PK_fitem", 1},
    {"Select cItemCode,cItemName from fitemss97 Where cItemCode ='RD01' ", "PK_fitemss97", 1},
    {"SELECT * FROM AccInformation WHERE cSysID='IA' AND cName='cValueStyle'", "PK_AccInformation", 2},
    {"select fInvRCost from InvCheckFreeIA870 where cInvCode = N'1005'  and ( isnull(cFree1,N'') = "
     "isnull(N'国产',N'') or isnull(cFree1,N'') = N'') ",
     "IX_InvCheckFreeIA870", 1},
    // Checks of a price voucher's row.
    {"Select cValuetype From inventory Inner Join InvCheckFreeIA870 InvCheckFree On inventory.cInvCode = "
     "InvCheckFree.cInvCode\r\n and ((isnull(inventory.bcheckfree1,1)=1 And IsNull(InvCheckFree.cFree1,N'') = N'') or "
     "isnull(inventory.bcheckfree1,0)= 0 )\r\n Where inventory.cInvCode='1004' and bService=0 and bInvType=0 and "
     "isnull(bPTOModel,0)=0 ",
     "IX_InvCheckFreeIA870", 2},
    {"Select Max(dKeepDate) from ia_subsidiary", "IX_Ia_subsidiary_KeepDate", 0},
    {"select top 1 * from ia_summary where iperiod = 1 and isnull(idirect,0) =0 and  cinvcode =N'1004' and iYear = "
     "2024 and iMonth = 1",
     "IX_ia_summary", 3},
    {"select top 1 ia_summary.autoid from ia_summary \r\n inner join warehouse on warehouse.cwhcode = "
     "ia_summary.cwhcode\r\n where  ia_summary.iperiod = 1 and isnull(ia_summary.idirect,0) =0 \r\n and "
     "ia_summary.cinvcode =N'1004' and ia_summary.iYear = 2024\r\n and ia_summary.iMonth = 1\r\n AND "
     "warehouse.cwhvaluestyle in (N'计划价法',N'售价法')",
     "IX_ia_summary", 4},
    {"SELECT cInvCode FROM v_CO_BOMList WHERE cInvCode = N'1001'", "IX_CO_BOMList", 1},
    {"Select dBegin,dEnd from QxSystem..UA_Period with (nolock) where cAcc_ID= N'001' and iYear=2024 and iID=1",
     "PK_UA_Period", 3},
    // Documents.
    {"Select ID From IA_DecReady Where cDecCode='D1'", "IX_IA_DecReady", 1},
    {"Delete IA_DecReady Where cDecCode='D1'", "IX_IA_DecReady", 1},
    {"Delete IA_DecReadys Where ID=1", "IX_IA_DecReadys", 1},
    {"select max(ID) from IA_DecReady", "PK_IA_DecReady", 0},
    {"select * from rdrecords where id=1", "IX_rdrecords", 1},
    {"SELECT *, '' AS editprop FROM v_CostJustVouch_B WHERE ID = 1", "IX_CostJustVouchs", 2},
    {"select iQuantity from CurrentStock where cWhCode = N'01' and cInvCode = N'1001'", "IX_CurrentStock", 1},
    {"select iBudget from ItemBudget where cItem_class = N'97' and cItemCode = N'RD01'", "PK_ItemBudget", 2},
};

TEST_F(LookUp, FindsItsRowsByAnIndex) {
    for (const Case& each : cases) {
        SCOPED_TRACE(each.sql);
        const std::string plan = Plan(each.sql);
        EXPECT_THAT(plan, HasSubstr(each.index));
        EXPECT_THAT(plan, Not(HasSubstr("SCAN")));
        std::size_t given = 0;
        for (std::size_t at = 0; (at = plan.find("=?", at)) != std::string::npos; ++at) {
            ++given;
        }
        EXPECT_EQ(given, each.columns) << plan;
    }
}

} // namespace

} // namespace refhost
