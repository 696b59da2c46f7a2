#include "bench/ImportBench.h"

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

const bool registered = [] {
    bench::RegisterImport("OpeningBalances", {"ClsKovra", Account, Request}, {1000, 10000, 100000});
    return true;
}();

} // namespace
