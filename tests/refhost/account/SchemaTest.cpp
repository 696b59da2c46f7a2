#include "tests/refhost/account/DemoAccount.h"

#include <utility>

namespace refhost {

namespace {

using testing::ElementsAre;

/// A table or view and the columns that statements name, or that callers may send as children of a row.
struct Named {
    const char* table;
    const char* columns;
};

const Named namedColumns[] = {
    {"AccInformation", "cSysID,cName,cValue,cDefault"},
    {"GL_mend", "iyear,iperiod,iYPeriod,bflag,bflag_IA"},
    {"code", "ccode,iyear,bend"},
    {"department", "cDepCode,bDepEnd"},
    {"rd_style", "cRdCode,bRdEnd"},
    {"fitem", "citem_class,citem_name,ctable"},
    {"fitemss97", "cItemCode,cItemName"},
    {"Customer", "cCusCode,cCusAddress,cMemo,cExch_Name"},
    {"inventoryclass", "cInvCCode"},
    {"Warehouse", "cWhCode,cwhvaluestyle,bincost,cdepcode"},
    {"inventory",
     "cInvCode,cInvName,cValuetype,iInvRCost,bService,bInvType,bPTOModel,bInvBatch,bInvQuality,bCheckBatch,bTrack,"
     "bFree1,bFree2,bFree3,bFree4,bFree5,bFree6,bFree7,bFree8,bFree9,bFree10,bcheckfree1,bcheckfree2,bcheckfree3,"
     "bcheckfree4,bcheckfree5,bcheckfree6,bcheckfree7,bcheckfree8,bcheckfree9,bcheckfree10"},
    {"InvCheckFreeIA870", "cInvCode,fInvRCost,cFree1,cFree2,cFree3,cFree4,cFree5,cFree6,cFree7,cFree8,cFree9,cFree10"},
    {"CO_BOMList", "cInvCode"},
    {"v_CO_BOMList", "cInvCode"},
    {"IA_HeadSet", "AutoID,cWhCode,cInvCCode,cInvHead,cDifHead,cOutHead,cEnDispHead,czyHead,cInvCode,iYear"},
    {"IA_OppHead",
     "AutoID,cRdCode,cInvcCode,cInvCode,cDepCode,citem_class,citemcode,cOppHead,cEstHead,iYear,cProcessHead,"
     "cMaterialHead,cOLaborStdCostCode,cOManuFixStdCostCode,cOManuVarStdCostCode,cOOmCostCode,cOiqtCode,cOPriceCode,"
     "fLaborCostEffRateDifCode,fLaborCostRateDifCode,fSemiLaborDifCode,fManuFixCostEffRateDifCode,"
     "fManuFixCostRateDifCode,fSemiManuFixDifCode,fManuVarCostEffRateDifCode,fManuVarCostRateDifCode,"
     "fSemiManuVarDifCode,fOmCostEDifCode,fSemiOmDifCode,cOTaxRefundCode"},
    {"Ia_subsidiary",
     "AutoID,id,iYear,iMonth,cVouType,bRdFlag,iAInQuantity,iAOutQuantity,iInCost,iAInPrice,iDebitDifCost,"
     "iCreditDifcost,cBusType,cPZID,dKeepDate,cWhCode,cInvCode,dVouDate,cBatchia,dMadeDateia,iMassDateia,dVDateia,"
     "cItem_class,cItemCode,cItemCName,cName,cFree1,cFree2,cFree3,cFree4,cFree5,cFree6,cFree7,cFree8,cFree9,cFree10,"
     "cDefine1,cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,cDefine12,"
     "cDefine13,cDefine14,cDefine15,cDefine16,cDefine17,cDefine18,cDefine19,cDefine20,cDefine21,cDefine22,cDefine23,"
     "cDefine24,cDefine25,cDefine26,cDefine27,cDefine28,cDefine29,cDefine30,cDefine31,cDefine32,cDefine33,cDefine34,"
     "cDefine35,cDefine36,cDefine37"},
    {"IA_enSubsidiary", "autoid,iMonth,iYear"},
    {"ia_summary", "autoid,iYear,iperiod,imonth,idirect,cinvcode,cwhcode,cdepcode"},
    {"JustInVouch", "cJvCode,djvdate"},
    {"CostJustVouch", "autoid,dcjvdate"},
    {"CostJustVouchs", "AutoID,ID"},
    {"Vouchers_base", "CardNumber,BTQName,BWQName"},
    {"v_CostJustVouch_H", "AutoId,ID,cCode,dCJVDate,cMaker,dAccountDate,cAccounter,cMemo,VT_ID,VouchType,qxts"},
    {"v_CostJustVouch_B", "AutoID,ID,cInvCode,cWhCode,iCJVBCost,iCJVACost"},
    {"VoucherTemplates", "VT_ID,VT_CardNumber,cVouchType,bDefault"},
    {"IA_DecReady", "ID,cDecCode,cVouchType,dVeriDate,iprintcount,VT_ID"},
    {"IA_DecReadys", "ID,cInvCode,cWhCode,iQuantity,iThisPrice,cItem_class,cItemCode"},
    {"rdrecord",
     "ID,bRdFlag,cVouchType,cBusType,cSource,cBusCode,cWhCode,dDate,cCode,cRdCode,cDepCode,cPersonCode,cPTCode,cSTCode,"
     "cCusCode,cVenCode,cOrderCode,cARVCode,cBillCode,cDLCode,cProBatch,cHandler,cMemo,iTaxRate,cExch_Name,iExchRate,"
     "bTransFlag,cAccounter,cMaker,iNetLock,dKeepdate,dVeriDate,bpufirst,biafirst,iMQuantity,dARVDate,cChkCode,"
     "dChkDate,cChkPerson,VT_ID,bIsSTQc,cPsPCode,cMPoCode,gspcheck,ipurorderid,ipurarriveid,iproorderid,iarriveid,"
     "isalebillid,qxts,cDefine1,cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,"
     "cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,cDefine16"},
    {"rdrecords", "AutoID,ID,cInvCode,iQuantity"},
    {"CurrentStock", "cWhCode,cInvCode,iQuantity"},
    {"ItemBudget", "cItem_class,cItemCode,iBudget"},
    {"QxSystem..UA_Period", "cAcc_ID,iYear,iId,dBegin,dEnd"},
};

using Schema = DemoAccount;

TEST_F(Schema, HasEveryNamedTableViewAndColumn) {
    for (const Named& named : namedColumns) {
        SCOPED_TRACE(named.table);
        EXPECT_NO_THROW(Count(std::string("SELECT ") + named.columns + " FROM " + named.table));
    }
}

TEST_F(Schema, LetsEveryColumnBeyondTheKeyBeLeftOut) {
    // The key and its values, or a single column where the key is the identity.
    constexpr std::pair<const char*, const char*> inserts[] = {
        {"AccInformation (cSysID, cName)", "N'ZZ', N'x'"},
        {"GL_mend (iyear, iperiod)", "2030, 1"},
        {"code (iyear, ccode)", "2030, N'1'"},
        {"department (cDepCode)", "N'Z'"},
        {"rd_style (cRdCode)", "N'Z'"},
        {"fitem (citem_class)", "N'Z'"},
        {"fitemss97 (citemcode)", "N'Z'"},
        {"Customer (cCusCode)", "N'Z'"},
        {"inventoryclass (cInvCCode)", "N'Z'"},
        {"Warehouse (cWhCode)", "N'Z'"},
        {"inventory (cInvCode)", "N'Z'"},
        {"InvCheckFreeIA870 (cInvCode)", "N'Z'"},
        {"CO_BOMList (cInvCode)", "N'Z'"},
        {"IA_HeadSet (iYear)", "2024"},
        {"IA_OppHead (iYear)", "2024"},
        {"Ia_subsidiary (iYear)", "2024"},
        {"IA_enSubsidiary (iYear)", "2024"},
        {"ia_summary (iYear)", "2024"},
        {"JustInVouch (cJVCode)", "N'Z'"},
        {"CostJustVouch (ID)", "1"},
        {"CostJustVouchs (ID)", "1"},
        {"Vouchers_base (CardNumber)", "N'Z'"},
        {"VoucherTemplates (VT_ID)", "1"},
        {"IA_DecReady (ID)", "1"},
        {"IA_DecReadys (ID)", "1"},
        {"rdrecord (ID)", "900001"},
        {"rdrecords (ID)", "900001"},
        {"CurrentStock (iQuantity)", "1"},
        {"ItemBudget (cItem_class, cItemCode)", "N'Z', N'Z'"},
        {"QxSystem..UA_Period (cAcc_ID, iYear, iId)", "N'999', 2024, 1"},
    };
    for (const auto& [table, values] : inserts) {
        SCOPED_TRACE(table);
        EXPECT_NO_THROW(connection.Execute(std::string("INSERT INTO ") + table + " VALUES (" + values + ")",
                                           host::command_option::unspecified));
    }
}

TEST_F(Schema, TakesFlagsThatAreLeftOutForTheUsualCase) {
    connection.Execute("INSERT INTO inventory (cInvCode) VALUES (N'Z')", host::command_option::unspecified);
    connection.Execute("INSERT INTO Warehouse (cWhCode) VALUES (N'Z')", host::command_option::unspecified);
    EXPECT_EQ(Count("SELECT cInvCode FROM inventory WHERE cInvCode = N'Z' AND bService = 0 AND bInvType = 0 AND "
                    "bInvBatch = 0 AND bInvQuality = 0 AND bCheckBatch = 0 AND bTrack = 0 AND bFree10 = 0"),
              1U);
    EXPECT_EQ(Count("SELECT cWhCode FROM Warehouse WHERE cWhCode = N'Z' AND bincost = 1 AND cwhvaluestyle IS NULL"),
              1U);
}

TEST_F(Schema, LetsFlagsOfItemsBeNull) {
    connection.Execute("INSERT INTO inventory (cInvCode, bInvBatch, bInvQuality, bTrack, bPTOModel, bFree1) "
                       "VALUES (N'Z', NULL, NULL, NULL, NULL, NULL)",
                       host::command_option::unspecified);
    EXPECT_THAT(Rows("SELECT bInvBatch, bInvQuality, bTrack, bPTOModel, bFree1 FROM inventory WHERE cInvCode = N'Z'"),
                ElementsAre("NULL|NULL|NULL|NULL|NULL"));
}

TEST_F(Schema, StoresSettingsMappingsAndBalancesMoreThanOnce) {
    for (int i = 0; i < 2; ++i) {
        connection.Execute("INSERT INTO IA_HeadSet (cWhCode, iYear) VALUES ('01', 2024)",
                           host::command_option::unspecified);
        connection.Execute("INSERT INTO IA_OppHead (cRdCode, iYear) VALUES ('101', 2024)",
                           host::command_option::unspecified);
        connection.Execute("INSERT INTO Ia_subsidiary (iYear, cVouType, cInvCode) VALUES (2024, '34', '1001')",
                           host::command_option::unspecified);
    }
    EXPECT_EQ(Count("SELECT AutoID FROM IA_HeadSet"), 2U);
    EXPECT_EQ(Count("SELECT AutoID FROM IA_OppHead"), 2U);
    EXPECT_EQ(Count("SELECT AutoID FROM Ia_subsidiary"), 2U);
}

TEST_F(Schema, KeepsKeysUnique) {
    for (const char* insert :
         {"INSERT INTO inventory (cInvCode) VALUES (N'1001')", "INSERT INTO Warehouse (cWhCode) VALUES (N'01')",
          "INSERT INTO code (iyear, ccode) VALUES (2024, N'140301')",
          "INSERT INTO AccInformation (cSysID, cName) VALUES (N'ia', N'CVALUESTYLE')"}) {
        SCOPED_TRACE(insert);
        EXPECT_THROW(
            {
                try {
                    connection.Execute(insert, host::command_option::unspecified);
                } catch (const host::Error& error) {
                    EXPECT_EQ(error.number(), host::error_number::integrityViolation);
                    throw;
                }
            },
            host::Error);
    }
}

TEST_F(Schema, TakesBatchesOfSixtyCharacters) {
    const std::string sixty(60, 'B');
    connection.Execute("INSERT INTO Ia_subsidiary (cBatchIA) VALUES ('" + sixty + "')",
                       host::command_option::unspecified);
    EXPECT_THAT(Rows("SELECT cBatchia FROM Ia_subsidiary"), ElementsAre(sixty));
}

TEST_F(Schema, ChangesTheStampOfADocumentWithEveryWrite) {
    const auto before = Rows("SELECT cast(qxts as money) FROM rdrecord WHERE ID = 1");
    connection.Execute("UPDATE rdrecord SET cMemo = N'x' WHERE ID = 1", host::command_option::unspecified);
    EXPECT_NE(Rows("SELECT cast(qxts as money) FROM rdrecord WHERE ID = 1"), before);
}

TEST_F(Schema, NamesViewsOfCardIA51ThatShowAVoucher) {
    connection.Execute("INSERT INTO CostJustVouch (ID, cCode, VouchType) VALUES (7, N'0001', N'22')",
                       host::command_option::unspecified);
    connection.Execute("INSERT INTO CostJustVouchs (ID, cInvCode, iCJVACost) VALUES (7, N'1004', 26)",
                       host::command_option::unspecified);
    ASSERT_THAT(Rows("SELECT BTQName, BWQName FROM Vouchers_base WHERE CardNumber = N'IA51'"),
                ElementsAre("v_CostJustVouch_H|v_CostJustVouch_B"));
    EXPECT_THAT(Rows("SELECT ID, cCode, VouchType, '' AS editprop FROM v_CostJustVouch_H WHERE AutoID = 1"),
                ElementsAre("7|0001|22|"));
    EXPECT_THAT(Rows("SELECT cInvCode, cInvName FROM v_CostJustVouch_B WHERE ID = 7"), ElementsAre("1004|深沟球轴承"));
}

TEST_F(Schema, HasOneDefaultTemplateForEachCard) {
    EXPECT_EQ(Count("SELECT VT_ID FROM VoucherTemplates WHERE cVouchType = N'48' AND bDefault = 1"), 1U);
    EXPECT_EQ(Count("SELECT VT_ID FROM VoucherTemplates WHERE VT_CardNumber = N'IA51' AND bDefault = 1"), 1U);
}

} // namespace

} // namespace refhost
