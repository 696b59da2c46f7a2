#include "bench/ImportBench.h"

namespace {

/// Rows share out among this many categories.
constexpr std::size_t categories = 100;

std::string Category(std::size_t row) { return "R" + std::to_string(row % categories); }
std::string Class(std::size_t row) { return "C" + std::to_string(row / categories); }
std::string Item(std::size_t row) { return "I" + std::to_string(row); }

std::vector<std::string> Account(std::size_t rows) {
    std::vector<std::string> statements = {
        "insert into AccInformation (cSysID, cName, cValue) values ('ca', 'dCAFirstDate', '2023-01-01')",
        "insert into AccInformation (cSysID, cName, cValue) values ('ca', 'bRLOrST', '1')",
        "insert into department (cDepCode, cDepName, bDepEnd) values ('01', N'一车间', 1)",
        "insert into code (ccode, iyear, ccode_name, bend) values ('500101', 2023, N'直接材料', 1)",
        "insert into code (ccode, iyear, ccode_name, bend) values ('220202', 2023, N'暂估应付款', 1)",
    };
    for (std::size_t row = 0; row < categories; ++row) {
        statements.push_back("insert into rd_style (cRdCode, cRdName, bRdEnd) values ('" + Category(row) +
                             "', N'出库', 1)");
    }
    for (std::size_t row = 0; row < rows; row += categories) {
        statements.push_back("insert into inventoryclass (cInvCCode, cInvCName, bInvCEnd) values ('" + Class(row) +
                             "', N'原材料', 1)");
    }
    for (std::size_t row = 0; row < rows; ++row) {
        statements.push_back("insert into inventory (cInvCode, cInvName, bService, bInvType) values ('" + Item(row) +
                             "', N'存货', 0, 0)");
    }
    return statements;
}

std::string PlainRequest(std::size_t rows) {
    std::string xml = "<qxinterface roottag=\"subject\" docid=\"bench\" proc=\"ADD\">";
    for (std::size_t row = 0; row < rows; ++row) {
        xml += "<subject><cRdCode>" + Category(row) + "</cRdCode><cInvCode>" + Item(row) +
               "</cInvCode><cDepCode>01</cDepCode><cOppHead>500101</cOppHead><cEstHead>220202</cEstHead></subject>\n";
    }
    return xml + "</qxinterface>";
}

std::string StandardCostRequest(std::size_t rows) {
    std::string xml = "<qxinterface roottag=\"subject\" docid=\"bench\" proc=\"ADD\">";
    for (std::size_t row = 0; row < rows; ++row) {
        xml += "<subject><cRdCode>" + Category(row) + "</cRdCode><cInvcCode>" + Class(row) +
               "</cInvcCode><cDepCode>01</cDepCode><cOppHead>500101</cOppHead><cMaterialHead>500101</cMaterialHead>"
               "<cOiqtCode>500101</cOiqtCode><cOPriceCode>500101</cOPriceCode></subject>\n";
    }
    return xml + "</qxinterface>";
}

const bool registered = [] {
    bench::RegisterImport("OppositeSettings", {"ClsOppSubject", Account, PlainRequest}, {1000, 10000, 100000});
    bench::RegisterImport("StandardCostSettings", {"ClsOppSubjectST", Account, StandardCostRequest},
                          {1000, 10000, 100000});
    return true;
}();

} // namespace
