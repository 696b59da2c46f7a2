#include "tests/refhost/account/DemoAccount.h"

namespace refhost {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

using DemoCompany = DemoAccount;

TEST_F(DemoCompany, IsClosedIn2023AndOpenIn2024) {
    const std::string yearEnd = "SELECT bflag_IA FROM GL_mend WHERE iyear = ";
    EXPECT_EQ(Count(yearEnd + "2023 AND iperiod=12 AND bflag_IA=1"), 1U);
    EXPECT_EQ(Count(yearEnd + "2024 AND iperiod=12 AND bflag_IA=1"), 0U);
}

TEST_F(DemoCompany, HasJanuary2024AsFirstOpenMonth) {
    EXPECT_THAT(Rows("select min(iyperiod) as iyperiod, cast(LEFT(min(iYPeriod), 4) as int) as iyear, "
                     "cast(right(min(iyperiod), 2) as int) as imonth from GL_mend where bflag_IA = 0"),
                ElementsAre("202401|2024|1"));
    EXPECT_THAT(Rows("Select convert(varchar(10),dBegin,120),convert(varchar(10),dEnd,120) from "
                     "QxSystem..UA_Period with (nolock) where cAcc_ID= N'001' and iYear=2024 and iID=1"),
                ElementsAre("2024-01-01|2024-01-31"));
}

TEST_F(DemoCompany, StillTakesOpeningBalances) {
    EXPECT_THAT(Rows("SELECT cValue FROM AccInformation WHERE cSysID='IA' AND cName='dIAStartDate'"),
                ElementsAre("2024-01-01"));
    EXPECT_EQ(Count("Select bFlag_IA from gl_mend where iPeriod=0 AND iYEar =2024"), 0U);
    EXPECT_EQ(Count("SELECT id FROM IA_Subsidiary"), 0U);
    EXPECT_EQ(Count("SELECT autoid FROM IA_enSubsidiary"), 0U);
    EXPECT_EQ(Count("SELECT cJvCode FROM JustInVouch"), 0U);
    EXPECT_EQ(Count("SELECT autoid FROM CostJustVouch"), 0U);
    EXPECT_EQ(Count("select autoid from ia_summary"), 0U);
}

TEST_F(DemoCompany, ValuesByWarehouseWithFourDecimals) {
    EXPECT_THAT(
        Rows("SELECT cName, cValue FROM AccInformation WHERE cName IN ('cValueStyle', 'cSysVersion', "
             "'iStrsQuanDecDgt', 'iStrsPriDecDgt')"),
        UnorderedElementsAre("cValueStyle|按仓库核算", "cSysVersion|工业", "iStrsQuanDecDgt|4", "iStrsPriDecDgt|4"));
}

TEST_F(DemoCompany, HasStandardCostingOn) {
    EXPECT_EQ(Count("select cValue from AccInformation where cSysID ='ca' and cName ='dCAFirstDate' and "
                    "isnull(cValue,N'') <> N''"),
              1U);
    EXPECT_EQ(Count("select cValue  from AccInformation where cSysID ='ca' and cName ='bRLOrST' and "
                    "isnull(cValue,N'0') = N'1'"),
              1U);
}

TEST_F(DemoCompany, HasTheMonthsOf2023To2027) {
    EXPECT_EQ(Count("select iId from QxSystem..UA_Period where cAcc_ID = N'001'"), 60U);
    EXPECT_THAT(Rows("select convert(varchar(10),dEnd,120) from QxSystem..UA_Period where iId = 2 order by iYear"),
                ElementsAre("2023-02-28", "2024-02-29", "2025-02-28", "2026-02-28", "2027-02-28"));
}

TEST_F(DemoCompany, HasAWarehouseForEachValuationMethod) {
    EXPECT_THAT(Rows("select cWhCode, cWhValueStyle from Warehouse where bincost = 1 order by cWhCode"),
                ElementsAre("01|全月平均法", "02|移动平均法", "03|计划价法", "04|售价法", "05|个别计价法",
                            "06|先进先出法", "08|NULL"));
    EXPECT_THAT(Rows("select cWhCode from Warehouse where bincost = 0"), ElementsAre("07"));
}

TEST_F(DemoCompany, HasItemsOfEachKind) {
    EXPECT_THAT(Rows("select cInvCode from inventory where bService = 1"), ElementsAre("9001"));
    EXPECT_THAT(Rows("select cInvCode from inventory where bInvType = 1"), ElementsAre("9002"));
    EXPECT_THAT(Rows("select cInvCode from inventory where bPTOModel = 1"), ElementsAre("3002"));
    EXPECT_THAT(Rows("select cInvCode from inventory where bTrack = 1"), ElementsAre("1006"));
    EXPECT_THAT(Rows("select cInvCode from inventory where bInvBatch = 1 and bInvQuality = 1 and bCheckBatch = 1"),
                ElementsAre("1003"));
    EXPECT_THAT(Rows("select cInvCode from inventory where bFree1 = 1 order by cInvCode"), ElementsAre("1002", "1005"));
    EXPECT_THAT(Rows("select cInvCode from inventory where cValueType = N'计划价法' and iInvRCost is null"),
                ElementsAre("1008"));
    EXPECT_THAT(Rows("select distinct cInvCode from v_CO_BOMList order by cInvCode"),
                ElementsAre("2001", "2002", "3001"));
}

TEST_F(DemoCompany, PricesAnItemByItsFreeItems) {
    EXPECT_THAT(Rows("select fInvRCost from InvCheckFreeIA870 where cInvCode = N'1005'  and ( isnull(cFree1,N'') = "
                     "isnull(N'进口',N'') or isnull(cFree1,N'') = N'') "),
                ElementsAre("520"));
    EXPECT_THAT(Rows("select fInvRCost from InvCheckFreeIA870 where cInvCode = N'1004'"), ElementsAre("25"));
}

TEST_F(DemoCompany, HasChartsThatDifferBetweenTheYears) {
    EXPECT_THAT(Rows("select iyear from code where ccode = N'1412'"), ElementsAre("2023"));
    EXPECT_THAT(Rows("select iyear from code where ccode = N'1413'"), ElementsAre("2024"));
    // Every account whose code continues another's makes that one no leaf, and nothing else does.
    EXPECT_THAT(Rows("select distinct P.ccode from code P inner join code C on P.iyear = C.iyear and "
                     "left(C.ccode, 4) = P.ccode and len(C.ccode) > 4 where P.bend = 1"),
                IsEmpty());
    EXPECT_THAT(Rows("select P.ccode from code P left join code C on P.iyear = C.iyear and left(C.ccode, 4) = P.ccode "
                     "and len(C.ccode) > 4 where P.bend = 0 and C.ccode is null"),
                IsEmpty());
}

TEST_F(DemoCompany, NamesOnlyThingsThatExist) {
    const std::pair<const char*, const char*> strays[] = {
        {"inventory without class", "select I.cInvCode from inventory I left join inventoryclass C on I.cInvCCode = "
                                    "C.cInvCCode where C.cInvCCode is null"},
        {"warehouse without department", "select W.cWhCode from Warehouse W left join department D on W.cDepCode = "
                                         "D.cDepCode where D.cDepCode is null"},
        {"price without item", "select P.cInvCode from InvCheckFreeIA870 P left join inventory I on P.cInvCode = "
                               "I.cInvCode where I.cInvCode is null"},
        {"component without item", "select B.cComCode from CO_BOMList B left join inventory I on B.cComCode = "
                                   "I.cInvCode where I.cInvCode is null"},
        {"document without warehouse", "select R.ID from rdrecord R left join Warehouse W on R.cWhCode = W.cWhCode "
                                       "where W.cWhCode is null"},
        {"document without category", "select R.ID from rdrecord R left join rd_style S on R.cRdCode = S.cRdCode and "
                                      "R.bRdFlag = S.bRdFlag where S.cRdCode is null"},
        {"document without department", "select R.ID from rdrecord R left join department D on R.cDepCode = "
                                        "D.cDepCode where D.cDepCode is null"},
        {"document without rows", "select R.ID from rdrecord R left join rdrecords S on R.ID = S.ID where S.ID is "
                                  "null"},
        {"row without document", "select S.ID from rdrecords S left join rdrecord R on R.ID = S.ID where R.ID is null"},
        {"row without item", "select S.ID from rdrecords S left join inventory I on S.cInvCode = I.cInvCode where "
                             "I.cInvCode is null"},
        {"sale without customer", "select R.ID from rdrecord R left join Customer C on R.cCusCode = C.cCusCode where "
                                  "R.cVouchType = N'32' and C.cCusCode is null"},
        {"stock without item", "select K.cInvCode from CurrentStock K left join inventory I on K.cInvCode = "
                               "I.cInvCode where I.cInvCode is null"},
        {"budget without project", "select B.cItemCode from ItemBudget B left join fitemss97 P on B.cItemCode = "
                                   "P.citemcode where P.citemcode is null"},
        {"card without template", "select V.CardNumber from Vouchers_base V left join VoucherTemplates T on "
                                  "V.CardNumber = T.VT_CardNumber where T.VT_ID is null"},
    };
    for (const auto& [what, sql] : strays) {
        SCOPED_TRACE(what);
        EXPECT_THAT(Rows(sql), IsEmpty());
    }
}

TEST_F(DemoCompany, HasStockDocumentsOfBothKinds) {
    EXPECT_GE(Count("select ID from rdrecord where bRdFlag = 1 and bPuFirst = 0"), 12U);
    EXPECT_GE(Count("select ID from rdrecord where bRdFlag = 0"), 12U);
    EXPECT_EQ(Count("select ID from rdrecord where bPuFirst = 1"), 1U);
}

TEST_F(DemoCompany, HasProjectsInATableOfTheirOwnAndInTheItems) {
    EXPECT_THAT(Rows("Select citem_class,citem_name,ctable from fitem  Where citem_class='97' "),
                ElementsAre("97|研发项目|fitemss97"));
    EXPECT_THAT(Rows("Select cItemCode,cItemName from fitemss97 Where cItemCode ='RD01' "),
                ElementsAre("RD01|高速主轴研制"));
    EXPECT_THAT(Rows("Select citem_class,citem_name,ctable from fitem  Where citem_class='00' "),
                ElementsAre("00|存货核算项目|inventory"));
}

} // namespace

} // namespace refhost
