#pragma once

#include "ClsInvSubject/ClsInvSubject.h"
#include "tests/support/Import.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace test {

/// An account with a little master data; year 2023.
class InventorySettings : public testing::Test {
protected:
    InventorySettings() {
        account.Run(
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
            "(2023, N'1405', 1), (2022, N'1499', 1)\n");
    }

    ImportRun Import(std::string_view proc, std::string_view rows, Faults faults = {}) const {
        return test::Import<kovra::ClsInvSubject>(account, Request(proc, rows), account.LoginXml(), std::move(faults));
    }

    /// What is asked for the rows themselves: the trace behind the connection and the year-end look-up.
    static std::vector<std::string> RowLines(const ImportRun& run) {
        return {run.trace.begin() + std::min<std::ptrdiff_t>(2, std::ssize(run.trace)), run.trace.end()};
    }

    std::vector<std::string> Stored() const { return account.Rows("select * from IA_HeadSet order by AutoID"); }

    TestAccount account;
};

} // namespace test
