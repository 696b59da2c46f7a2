#include "ClsPriceJustVou/PriceRowCheck.h"
#include "ModPub/ReadAccOption.h"

namespace kovra {
namespace {

constexpr std::string_view byItem = "按存货核算";
constexpr std::string_view byWarehouse = "按仓库核算";

} // namespace

std::string PriceRowCheck::ValueStyle() {
    return ModPub::ReadAccOption(state_.environment, *state_.connection, "IA", "cValueStyle");
}

bool PriceRowCheck::ItemExists() {
    std::string sql = "Select cValuetype From inventory Inner Join InvCheckFreeIA870 InvCheckFree "
                      "On inventory.cInvCode = InvCheckFree.cInvCode";
    for (std::size_t i = 0; i < freeItems; ++i) {
        const std::string number = std::to_string(i + 1);
        sql.append("\r\n and ((isnull(inventory.bcheckfree").append(number);
        sql.append(",1)=1 And IsNull(InvCheckFree.cFree").append(number);
        sql.append(",N'') = N'").append(entry_.cFree[i]);
        sql.append("') or isnull(inventory.bcheckfree").append(number).append(",0)= 0 )");
    }
    sql.append("\r\n Where inventory.cInvCode='").append(entry_.cInvCode);
    sql.append("' and bService=0 and bInvType=0 and isnull(bPTOModel,0)=0 ");
    if (!Finds(sql)) {
        return Fail("单据" + header_.ID + ",存货编码" + entry_.cInvCode + "或自由项不合法。");
    }
    return true;
}

bool PriceRowCheck::ItemHasPlannedPrice() {
    if (ValueStyle() == byItem && !Finds("Select cValuetype From inventory where cInvCode =N'" + entry_.cInvCode +
                                         "' And cValuetype = N'计划价法' ")) {
        return Fail("存货" + entry_.cInvCode + "不是计划价存货。");
    }
    return true;
}

bool PriceRowCheck::ItemIsUnprocessed() {
    return ValueStyle() == byItem ? ItemIsUnprocessedByItem() : ItemIsUnprocessedByWarehouse();
}

bool PriceRowCheck::ItemIsUnprocessedByItem() {
    std::string sql = "select fInvRCost from InvCheckFreeIA870 where cInvCode=N'" + entry_.cInvCode + "'";
    for (std::size_t i = 0; i < freeItems; ++i) {
        // Element names are case-sensitive: a row that spells its free items "cFree1" has none here, and every
        // condition holds. Callers rely on it.
        const std::string& free = entry_.cfree[i];
        sql.append(" and ( len('").append(free).append("')=0 or cfree").append(std::to_string(i + 1));
        sql.append("=N'").append(free).append("') ");
    }
    if (!Finds(sql)) {
        return Fail("仓库没有全部设置计价方式或计划价/售价核算的仓库中的存货没有设置计划价！");
    }
    if (Finds("select top 1 * from ia_summary where iperiod = 1 and isnull(idirect,0) =0 and  cinvcode =N'" +
              entry_.cInvCode + "' and iYear = " + std::to_string(periodYear_) +
              " and iMonth = " + std::to_string(periodMonth_))) {
        return Fail("存货已经期末处理。");
    }
    return true;
}

bool PriceRowCheck::ItemIsUnprocessedByWarehouse() {
    if (!Finds("select top 1 * from warehouse where cwhvaluestyle in (N'计划价法',N'售价法')")) {
        return Fail("没有计划价法/售价法仓库。");
    }
    const std::string_view join = ValueStyle() == byWarehouse
                                      ? "inner join warehouse on warehouse.cwhcode = ia_summary.cwhcode"
                                      : "inner join warehouse on warehouse.cdepcode = ia_summary.cdepcode";
    std::string sql = "select top 1 ia_summary.autoid from ia_summary \r\n ";
    sql.append(join).append(" \r\n where  ia_summary.iperiod = 1 and isnull(ia_summary.idirect,0) =0 \r\n");
    sql.append(" and ia_summary.cinvcode =N'").append(entry_.cInvCode);
    sql.append("' and ia_summary.iYear = ").append(std::to_string(periodYear_));
    sql.append("\r\n and ia_summary.iMonth = ").append(std::to_string(periodMonth_));
    sql.append("\r\n AND warehouse.cwhvaluestyle in (N'计划价法',N'售价法')");
    if (Finds(sql)) {
        return Fail("存货已经期末处理。");
    }
    return true;
}

} // namespace kovra
