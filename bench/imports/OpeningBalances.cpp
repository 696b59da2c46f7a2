#include "bench/imports/Import.h"
#include "bench/imports/RawStatements.h"

namespace bench {
namespace opening_balances {
namespace {

std::string Item(std::size_t row) { return "I" + std::to_string(row); }

std::vector<std::string> Account(std::size_t rows) {
    std::vector<std::string> statements = {
        "insert into AccInformation (cSysID, cName, cValue) values (N'IA', N'dIAStartDate', N'2023-01-01')",
        "insert into AccInformation (cSysID, cName, cValue) values (N'IA', N'cValueStyle', N'按仓库核算')",
        "insert into QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) "
        "values (N'001', 2023, 1, '2023-01-01', '2023-01-31')",
        "insert into Warehouse (cWhCode, cWhValueStyle) values ('01', N'全月平均法')",
    };
    for (std::size_t row = 0; row < rows; ++row) {
        statements.push_back("insert into inventory (cInvCode, cInvName) values ('" + Item(row) + "', N'存货')");
    }
    return statements;
}

std::string Request(std::size_t rows) {
    std::string xml = "<qxinterface roottag=\"balance\" docid=\"bench\" proc=\"ADD\">";
    for (std::size_t row = 0; row < rows; ++row) {
        xml += "<balance><cWhCode>01</cWhCode><cInvCode>" + Item(row) +
               "</cInvCode><dVouDate>2022-12-31</dVouDate><iQuantity>10</iQuantity><iCost>2.5</iCost>"
               "<iPrice>25</iPrice><cBatchCode></cBatchCode><cFree1></cFree1><cMemo>期初</cMemo></balance>\n";
    }
    return xml + "</qxinterface>";
}

void AddHandWritten(RawStatements& raw, std::size_t row) {
    const auto option = [&raw] {
        raw.Add("SELECT * FROM AccInformation WHERE cSysID = ? AND cName = ?", {"IA", "cValueStyle"});
    };
    raw.Add("SELECT cValueType, iInvRCost FROM inventory WHERE cInvCode = ? AND bService = 0 AND bInvType = 0 AND "
            "(bPTOModel = 0 OR bPTOModel IS NULL)",
            {Item(row)});
    option();
    raw.Add("SELECT bFree1, bFree2, bFree3, bFree4, bFree5, bFree6, bFree7, bFree8, bFree9, bFree10 FROM inventory "
            "WHERE cInvCode = ?",
            {Item(row)});
    raw.Add("SELECT cWhValueStyle FROM Warehouse WHERE cWhCode = ? AND bInCost = 1", {"01"});
    option();
    raw.Add("SELECT cWhValueStyle FROM Warehouse WHERE cWhCode = ?", {"01"});
    raw.Add("SELECT coalesce(bCheckBatch, 0) FROM inventory WHERE cInvCode = ?", {Item(row)});
    raw.Add("SELECT bInvQuality FROM inventory WHERE cInvCode = ?", {Item(row)});
    raw.Add("INSERT INTO Ia_subsidiary (iYear, cVouType, bRdFlag, cWhCode, cInvCode, dVouDate, cMemo, iAInQuantity, "
            "iInCost, iAInPrice, cBusType) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
            {2023, "34", 1, "01", Item(row), "2022-12-31", "期初", 10.0, 2.5, 25.0, "EAI"});
}

} // namespace
} // namespace opening_balances

Import OpeningBalances() {
    using namespace opening_balances;
    return {"opening balances", "ClsKovra", Account, Request, AddHandWritten};
}

} // namespace bench
