#include "bench/imports/Import.h"
#include "bench/imports/RawStatements.h"

namespace bench {
namespace opposite_settings {
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

constexpr const char* findAccount = "SELECT ccode FROM code WHERE ccode = ? AND bend = 1 AND iyear = ?";

void AddPlainHandWritten(RawStatements& raw, std::size_t row) {
    raw.Add("SELECT cValueType FROM inventory WHERE cInvCode = ? AND bService = 0 AND bInvType = 0 AND "
            "(bPTOModel = 0 OR bPTOModel IS NULL)",
            {Item(row)});
    raw.Add("SELECT cRdCode FROM rd_style WHERE cRdCode = ?", {Category(row)});
    raw.Add("SELECT cDepCode FROM department WHERE cDepCode = ?", {"01"});
    for (const char* account : {"500101", "220202"}) {
        raw.Add(findAccount, {account, 2023});
    }
    raw.Add("SELECT AutoID FROM IA_OppHead WHERE cRdCode = ? AND (cInvcCode IS NULL OR cInvcCode = '') AND "
            "cInvCode = ? AND cDepCode = ? AND (citem_class IS NULL OR citem_class = '') AND "
            "(citemcode IS NULL OR citemcode = '') AND iYear = ?",
            {Category(row), Item(row), "01", 2023});
    raw.Add("INSERT INTO IA_OppHead (cRdCode, cInvCode, cDepCode, cOppHead, cEstHead, iYear) "
            "VALUES (?, ?, ?, ?, ?, ?)",
            {Category(row), Item(row), "01", "500101", "220202", 2023});
}

void AddStandardCostHandWritten(RawStatements& raw, std::size_t row) {
    raw.Add("SELECT cInvCCode FROM inventoryclass WHERE cInvCCode = ?", {Class(row)});
    raw.Add("SELECT cRdCode FROM rd_style WHERE bRdEnd = 1 AND cRdCode = ?", {Category(row)});
    raw.Add("SELECT cDepCode FROM department WHERE bDepEnd = 1 AND cDepCode = ?", {"01"});
    for (int account = 0; account < 4; ++account) {
        raw.Add(findAccount, {"500101", 2023});
    }
    raw.Add("SELECT AutoID FROM IA_OppHead WHERE cRdCode = ? AND cInvcCode = ? AND cDepCode = ? AND iYear = ?",
            {Category(row), Class(row), "01", 2023});
    raw.Add("INSERT INTO IA_OppHead (cRdCode, cInvcCode, cDepCode, cOppHead, cMaterialHead, cOiqtCode, cOPriceCode, "
            "iYear) VALUES (?, ?, ?, ?, ?, ?, ?, ?)",
            {Category(row), Class(row), "01", "500101", "500101", "500101", "500101", 2023});
}

// The account's own index has a key in front that `OR` keeps SQLite from using.
constexpr const char* itemIndex = "DROP INDEX \"IA_OppHead|IX_IA_OppHead\"; "
                                  "CREATE INDEX IX_IA_OppHead ON IA_OppHead (cRdCode, cInvCode, cDepCode, iYear)";

} // namespace
} // namespace opposite_settings

Import OppositeSettings() {
    using namespace opposite_settings;
    return {"opposite settings", "ClsOppSubject", Account, PlainRequest, AddPlainHandWritten, itemIndex};
}

Import StandardCostSettings() {
    using namespace opposite_settings;
    return {"standard-cost settings", "ClsOppSubjectST", Account, StandardCostRequest, AddStandardCostHandWritten};
}

} // namespace bench
