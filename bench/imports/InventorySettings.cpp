#include "bench/imports/Import.h"
#include "bench/imports/RawStatements.h"

namespace bench {
namespace inventory_settings {
namespace {

std::string Item(std::size_t row) { return "I" + std::to_string(row); }

std::vector<std::string> Account(std::size_t rows) {
    std::vector<std::string> statements = {
        "insert into Warehouse (cWhCode, cWhName) values ('01', N'原料库')",
        "insert into code (ccode, iyear, ccode_name, bend) values ('1405', 2023, N'库存商品', 1)",
        "insert into code (ccode, iyear, ccode_name, bend) values ('1404', 2023, N'材料成本差异', 1)",
    };
    for (std::size_t row = 0; row < rows; ++row) {
        statements.push_back("insert into inventory (cInvCode, cInvName, bService, bInvType) values ('" + Item(row) +
                             "', N'存货', 0, 0)");
    }
    return statements;
}

std::string Request(std::size_t rows) {
    std::string xml = "<qxinterface roottag=\"subject\" docid=\"bench\" proc=\"ADD\">";
    for (std::size_t row = 0; row < rows; ++row) {
        xml += "<subject><cWhCode>01</cWhCode><cInvCCode></cInvCCode><cInvCode>" + Item(row) +
               "</cInvCode><cInvHead>1405</cInvHead><cDifHead>1404</cDifHead><cOutHead></cOutHead>"
               "<cEnDispHead></cEnDispHead><czyHead></czyHead></subject>\n";
    }
    return xml + "</qxinterface>";
}

void AddHandWritten(RawStatements& raw, std::size_t row) {
    raw.Add("SELECT cValueType FROM inventory WHERE cInvCode = ? AND bService = 0 AND bInvType = 0 AND "
            "(bPTOModel = 0 OR bPTOModel IS NULL)",
            {Item(row)});
    raw.Add("SELECT cWhValueStyle FROM Warehouse WHERE cWhCode = ?", {"01"});
    for (const char* account : {"1405", "1404"}) {
        raw.Add("SELECT ccode FROM code WHERE ccode = ? AND bend = 1 AND iyear = ?", {account, 2023});
    }
    raw.Add("SELECT AutoID FROM IA_HeadSet WHERE cWhCode = ? AND cInvCode = ? AND iYear = ?", {"01", Item(row), 2023});
    raw.Add("INSERT INTO IA_HeadSet (cWhCode, cInvHead, cDifHead, cInvCode, iYear) VALUES (?, ?, ?, ?, ?)",
            {"01", "1405", "1404", Item(row), 2023});
}

} // namespace
} // namespace inventory_settings

Import InventorySettings() {
    using namespace inventory_settings;
    return {"inventory settings", "ClsInvSubject", Account, Request, AddHandWritten};
}

} // namespace bench
