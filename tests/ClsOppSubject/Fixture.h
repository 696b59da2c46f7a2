#pragma once

#include "ClsOppSubject/ClsOppSubject.h"
#include "tests/support/SettingsFixture.h"

#include <string>
#include <vector>

namespace test {

/// An account with a little master data; year 2023.
class OppositeSettings : public SettingsFixture<kovra::ClsOppSubject> {
public:
    static constexpr const char* table = "IA_OppHead";
    static constexpr const char* keyColumn = "cRdCode";
    static constexpr const char* keyValue = "101";
    static constexpr const char* accountColumn = "cOppHead";
    static constexpr const char* knownAccount = "1401";
    static constexpr const char* rowKey = "收发类别编码：101， ， ， ， ， ";
    static constexpr const char* yearClosed = R"(<error code="102" dsc="12月份已结账,不能导入科目设置"/>)";

protected:
    OppositeSettings()
        : SettingsFixture(
              "INSERT INTO rd_style (cRdCode, bRdEnd) VALUES (N'1', 0), (N'101', 1)\n"
              "GO\n"
              "INSERT INTO inventoryclass (cInvCCode, bInvCEnd) VALUES (N'C', 0), (N'C1', 1)\n"
              "GO\n"
              "INSERT INTO inventory (cInvCode, bService, bInvType, bPTOModel) VALUES\n"
              "(N'A', 0, 0, 0), (N'B', 0, 0, NULL), (N'S', 1, 0, 0), (N'D', 0, 1, 0), (N'P', 0, 0, 1)\n"
              "GO\n"
              "INSERT INTO department (cDepCode, bDepEnd) VALUES (N'02', 0), (N'0201', 1)\n"
              "GO\n"
              "INSERT INTO fitem (citem_class, citem_name, ctable) VALUES\n"
              "(N'97', N'Research', N'fitemss97'), (N'96', NULL, N'fitemss97'), (N'95', N'Lost', N'fitemss95'),\n"
              "(N'94', N'Nowhere', NULL)\n"
              "GO\n"
              "INSERT INTO fitemss97 (citemcode, citemname) VALUES (N'RD1', N'Spindle'), (N'RD2', NULL)\n"
              "GO\n"
              "INSERT INTO code (iyear, ccode, bend) VALUES\n"
              "(2023, N'14', 0), (2023, N'1401', 1), (2023, N'1402', 1), (2022, N'1499', 1)\n") {}

    /// All stored mappings in the order of their ids.
    std::vector<std::string> Stored() const {
        return account.Rows("select cRdCode,cInvcCode,cInvCode,cDepCode,citem_class,citemcode,cOppHead,cEstHead,iYear "
                            "from IA_OppHead order by AutoID");
    }
};

} // namespace test
