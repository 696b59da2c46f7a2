#pragma once

#include "tests/support/rules/Play.h"

#include <functional>
#include <string>
#include <vector>

namespace test {

/// Batches that fill an account with the warehouses 01 and 02 and the items N1, A1 (in batches) and P1.
inline constexpr const char* openingSetup = R"(INSERT INTO AccInformation (cSysID, cName, cValue) VALUES
(N'IA', N'dIAStartDate', N'2023-01-01'), (N'IA', N'cValueStyle', N'按仓库核算'), (N'AA', N'cSysVersion', N'工业')
GO
INSERT INTO QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) VALUES ('001', 2023, 1, '2023-01-01', '2023-01-31')
GO
INSERT INTO Warehouse (cWhCode, cWhValueStyle) VALUES ('01', N'全月平均法'), ('02', N'计划价法')
GO
INSERT INTO inventory (cInvCode, bInvBatch, iInvRCost) VALUES ('N1', 0, NULL), ('A1', 1, 3), ('P1', 0, 2.5)
GO
INSERT INTO InvCheckFreeIA870 (cInvCode, fInvRCost) VALUES ('P1', 2.5)
GO
INSERT INTO fitem (citem_class, citem_name, ctable) VALUES ('97', N'研发项目', 'fitemss97')
GO
INSERT INTO fitemss97 (citemcode, citemname) VALUES ('RD01', N'主轴研制')
)";

/// A row of the request, and what the rules make of it.
struct OpeningRow {
    std::string warehouse;
    std::string item;
    /// What refuses the row: an item that the look-up does not find, a date, an amount.
    std::string unknownItem = {};
    std::string badDate = {};
    std::string badAmount = {};
    /// Whether the warehouse's method is one that knows batches, and whether it is planned price.
    bool averaged = true;
    bool planned = false;
    /// Whether the row names a project, a receipt date, a batch, a quantity below zero.
    bool hasProject = false;
    bool hasDate = false;
    bool hasBatch = false;
    bool isNegative = false;
    std::string stored = {};

    std::string Key() const { return "仓库编码：" + warehouse + "， 存货编码：" + item; }
};

/// Plays a call of the opening balance import on an account that is valued by warehouse.
class OpeningRules {
public:
    explicit OpeningRules(Play& play) : play_(play) {}

    std::string Transact(const std::vector<OpeningRow>& rows);
    /// A call that the ledger refuses, since it has price adjustments.
    std::string RefusedTransact();

private:
    std::string Transact(const std::function<std::string()>& lastOfLedger, const std::vector<OpeningRow>& rows);
    std::string Ledger(const std::function<std::string()>& last);
    void Row(const OpeningRow& row);
    bool Check(const OpeningRow& row, const std::function<std::string()>& check);
    std::string MasterData(const OpeningRow& row, RowLookUps& lookUps);
    std::string Dates(const OpeningRow& row, RowLookUps& lookUps);
    bool PriceByFreeItems(const OpeningRow& row, RowLookUps& lookUps);

    Play& play_;
    bool knowsStart_ = false;
};

} // namespace test
