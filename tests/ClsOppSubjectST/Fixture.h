#pragma once

#include "ClsOppSubjectST/ClsOppSubjectST.h"
#include "tests/support/SettingsFixture.h"

#include <string>
#include <vector>

namespace test {

/// An account that values at standard cost, with a little master data; year 2023. Every account is named after the
/// field it is for.
class StandardCostSettings : public SettingsFixture<kovra::ClsOppSubjectST> {
public:
    static constexpr const char* table = "IA_OppHead";
    static constexpr const char* keyColumn = "cRdCode";
    static constexpr const char* keyValue = "101";
    static constexpr const char* accountColumn = "cOppHead";
    static constexpr const char* knownAccount = "a01";
    static constexpr const char* rowKey = "收发类别编码：101， ， ";
    static constexpr const char* yearClosed = R"(<error code="103" dsc="12月份已结账,不能导入科目设置"/>)";

protected:
    StandardCostSettings()
        : SettingsFixture(
              "INSERT INTO AccInformation (cSysID, cName, cValue) VALUES\n"
              "(N'ca', N'dCAFirstDate', N'2023-01-01'), (N'ca', N'bRLOrST', N'1')\n"
              "GO\n"
              "INSERT INTO rd_style (cRdCode, bRdEnd) VALUES (N'1', 0), (N'101', 1)\n"
              "GO\n"
              "INSERT INTO inventoryclass (cInvCCode, bInvCEnd) VALUES (N'C', 0), (N'C1', 1)\n"
              "GO\n"
              "INSERT INTO department (cDepCode, bDepEnd) VALUES (N'02', 0), (N'0201', 1)\n"
              "GO\n"
              "INSERT INTO code (iyear, ccode, bend) VALUES\n"
              "(2023, N'14', 0), (2022, N'1499', 1),\n"
              "(2023, N'a01', 1), (2023, N'a02', 1), (2023, N'a03', 1), (2023, N'a04', 1), (2023, N'a05', 1),\n"
              "(2023, N'a06', 1), (2023, N'a07', 1), (2023, N'a08', 1), (2023, N'a09', 1), (2023, N'a10', 1),\n"
              "(2023, N'a11', 1), (2023, N'a12', 1), (2023, N'a13', 1), (2023, N'a14', 1), (2023, N'a15', 1),\n"
              "(2023, N'a16', 1), (2023, N'a17', 1), (2023, N'a18', 1), (2023, N'a19', 1), (2023, N'a20', 1),\n"
              "(2023, N'a21', 1)\n",
              {Queried("select cValue from AccInformation where cSysID ='ca' and cName ='dCAFirstDate' and "
                       "isnull(cValue,N'') <> N''"),
               Queried("select cValue  from AccInformation where cSysID ='ca' and cName ='bRLOrST' and "
                       "isnull(cValue,N'0') = N'1'")}) {}

    std::vector<std::string> Stored() const { return account.Rows("select * from IA_OppHead order by AutoID"); }
};

/// A row with every field.
inline constexpr const char* everyField =
    "<row><cRdCode>101</cRdCode><cInvcCode>C1</cInvcCode><cDepCode>0201</cDepCode>"
    "<cOppHead>a01</cOppHead><cProcessHead>a02</cProcessHead><cMaterialHead>a03</cMaterialHead>"
    "<cOLaborStdCostCode>a04</cOLaborStdCostCode><cOManuFixStdCostCode>a05</cOManuFixStdCostCode>"
    "<cOManuVarStdCostCode>a06</cOManuVarStdCostCode><cOOmCostCode>a07</cOOmCostCode><cOiqtCode>a08</cOiqtCode>"
    "<cOPriceCode>a09</cOPriceCode><fLaborCostEffRateDifCode>a10</fLaborCostEffRateDifCode>"
    "<fLaborCostRateDifCode>a11</fLaborCostRateDifCode><fSemiLaborDifCode>a12</fSemiLaborDifCode>"
    "<fManuFixCostEffRateDifCode>a13</fManuFixCostEffRateDifCode>"
    "<fManuFixCostRateDifCode>a14</fManuFixCostRateDifCode><fSemiManuFixDifCode>a15</fSemiManuFixDifCode>"
    "<fManuVarCostEffRateDifCode>a16</fManuVarCostEffRateDifCode>"
    "<fManuVarCostRateDifCode>a17</fManuVarCostRateDifCode><fSemiManuVarDifCode>a18</fSemiManuVarDifCode>"
    "<fOmCostEDifCode>a19</fOmCostEDifCode><fSemiOmDifCode>a20</fSemiOmDifCode>"
    "<cOTaxRefundCode>a21</cOTaxRefundCode></row>";

inline constexpr const char* everyFieldKey = "收发类别编码：101， 存货分类编码：C1， 部门编码：0201";

} // namespace test
