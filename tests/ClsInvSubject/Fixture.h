#pragma once

#include "ClsInvSubject/ClsInvSubject.h"
#include "tests/support/SettingsFixture.h"

#include <string>
#include <vector>

namespace test {

/// An account with a little master data; year 2023.
class InventorySettings : public SettingsFixture<kovra::ClsInvSubject> {
public:
    static constexpr const char* table = "IA_HeadSet";
    static constexpr const char* keyColumn = "cWhCode";
    static constexpr const char* keyValue = "01";
    static constexpr const char* accountColumn = "cInvHead";
    static constexpr const char* knownAccount = "1401";
    static constexpr const char* rowKey = "仓库编码：01， ， ";
    static constexpr const char* yearClosed = R"(<error code="102" dsc="12月份已结账,不能导入科目设置"/>)";

protected:
    InventorySettings()
        : SettingsFixture(
              "INSERT INTO Warehouse (cWhCode, cWhValueStyle) VALUES (N'01', N'全月平均法'), (N'02', NULL)\n"
              "GO\n"
              "INSERT INTO inventoryclass (cInvCCode, bInvCEnd) VALUES (N'C', 0), (N'C1', 1)\n"
              "GO\n"
              "INSERT INTO inventory (cInvCode, cValueType, bService, bInvType, bPTOModel) VALUES\n"
              "(N'A', NULL, 0, 0, 0), (N'B', NULL, 0, 0, NULL), (N'S', NULL, 1, 0, 0), (N'D', NULL, 0, 1, 0),\n"
              "(N'P', NULL, 0, 0, 1)\n"
              "GO\n"
              "INSERT INTO code (iyear, ccode, bend) VALUES\n"
              "(2023, N'14', 0), (2023, N'1401', 1), (2023, N'1402', 1), (2023, N'1403', 1), (2023, N'1404', 1),\n"
              "(2023, N'1405', 1), (2022, N'1499', 1)\n") {}

    std::vector<std::string> Stored() const { return account.Rows("select * from IA_HeadSet order by AutoID"); }
};

} // namespace test
