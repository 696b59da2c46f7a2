#include "bench/ImportBench.h"

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

const bool registered = [] {
    bench::RegisterImport("InventorySettings", {"ClsInvSubject", Account, Request}, {1000, 10000, 100000});
    return true;
}();

} // namespace
