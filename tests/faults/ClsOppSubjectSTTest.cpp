#include "ClsOppSubjectST/ClsOppSubjectST.h"

#include "tests/faults/SettingsCalls.h"

#include <array>

#include <gtest/gtest.h>

namespace standard_cost_settings_faults {
namespace {

using test::AccountCheck;
using test::CheckedCode;
using test::SettingRow;

constexpr const char* setup = R"(INSERT INTO AccInformation (cSysID, cName, cValue) VALUES
(N'ca', N'dCAFirstDate', N'2023-01-01'), (N'ca', N'bRLOrST', N'1')
GO
INSERT INTO rd_style (cRdCode, bRdEnd) VALUES (N'1', 0), (N'101', 1), (N'102', 1), (N'103', 1)
GO
INSERT INTO inventoryclass (cInvCCode) VALUES (N'C1')
GO
INSERT INTO department (cDepCode, bDepEnd) VALUES (N'02', 1)
GO
INSERT INTO code (iyear, ccode, bend) VALUES (2023, N'1401', 1)
)";

constexpr const char* restore = R"(DELETE FROM IA_OppHead
GO
INSERT INTO IA_OppHead (cRdCode, cInvCode, cOppHead, iYear) VALUES (N'102', N'A', N'1401', 2023)
)";

/// The accounts in the order of the statements.
constexpr std::array accounts = {
    "cOppHead",
    "cProcessHead",
    "cMaterialHead",
    "cOLaborStdCostCode",
    "cOManuFixStdCostCode",
    "cOManuVarStdCostCode",
    "cOOmCostCode",
    "cOiqtCode",
    "cOPriceCode",
    "fLaborCostEffRateDifCode",
    "fLaborCostRateDifCode",
    "fSemiLaborDifCode",
    "fManuFixCostEffRateDifCode",
    "fManuFixCostRateDifCode",
    "fSemiManuFixDifCode",
    "fManuVarCostEffRateDifCode",
    "fManuVarCostRateDifCode",
    "fSemiManuVarDifCode",
    "fOmCostEDifCode",
    "fSemiOmDifCode",
    "cOTaxRefundCode",
};

/// Two accounts are asked for twice.
constexpr std::size_t accountChecks = accounts.size() + 2;

std::string ContentsQuery() {
    std::string sql = "select cRdCode, cInvcCode, cDepCode, cInvCode";
    for (const char* account : accounts) {
        sql.append(", ").append(account);
    }
    return sql + ", iYear from IA_OppHead";
}

/// A stored row; the arguments are JSON.
std::string Stored(const std::string& keys, const std::string& cOppHead, const std::string& others) {
    std::string row = "{" + keys;
    for (const char* account : accounts) {
        row.append(",\"").append(account).append("\":").append(account == accounts.front() ? cOppHead : others);
    }
    return row + ",\"iYear\":2023}";
}

std::string OfCategory(const std::string& cRdCode, const std::string& cInvCode) {
    return "\"cRdCode\":\"" + cRdCode + "\",\"cInvcCode\":null,\"cDepCode\":null,\"cInvCode\":" + cInvCode;
}

CheckedCode Category(const std::string& code) {
    return {"From rd_style  Where bRdEnd = 1 and  cRdCode=N'" + code + "' "};
}

SettingRow EveryAccount() {
    SettingRow row{.key = "收发类别编码：101， 存货分类编码：C1， 部门编码：02",
                   .checks = {{"From inventoryclass  Where cInvcCode='C1'"},
                              Category("101"),
                              {"from department where bDepEnd = 1 and cdepcode = N'02' "}},
                   .match = "Where isnull(cRdCode,N'') = N'101' And isnull(cInvcCode,N'') = N'C1' And "
                            "isnull(cDepCode,N'') = N'02' And iyear = 2023",
                   .write = "INSERT INTO IA_OppHead",
                   .stored = Stored(R"("cRdCode":"101","cInvcCode":"C1","cDepCode":"02","cInvCode":null)", R"("1401")",
                                    R"("1401")"),
                   .storedName = "every account"};
    row.checks.insert(row.checks.end(), accountChecks, AccountCheck("1401"));
    return row;
}

SettingRow WithoutKey() { return {.key = "", .missing = "收发类别编码、存货分类编码、部门编码三项必须输入其中之一。"}; }

SettingRow NoLeaf() {
    CheckedCode category = Category("1");
    category.refusal = "收发类别编码不合法。";
    return {.key = "收发类别编码：1， ， ", .checks = {category}};
}

/// The keys of a setting that is there under "102".
SettingRow KeysAlone(const std::string& category) {
    return {.key = "收发类别编码：" + category + "， ， ",
            .checks = {Category(category)},
            .match = "Where isnull(cRdCode,N'') = N'" + category + "' And isnull(cInvcCode,N'') = N'' And"};
}

SettingRow NewKeys() {
    SettingRow row = KeysAlone("103");
    row.write = "INSERT INTO IA_OppHead";
    row.stored = Stored(OfCategory("103", "null"), "null", "null");
    row.storedName = "new keys";
    return row;
}

std::string Rows() {
    std::string rows = "<row><cRdCode>101</cRdCode><cInvcCode>C1</cInvcCode><cDepCode>02</cDepCode>";
    for (const std::string account : accounts) {
        rows.append("<" + account + ">1401</" + account + ">");
    }
    return rows + "</row><row><cOppHead>1401</cOppHead></row><row><cRdCode>1</cRdCode></row>"
                  "<row><cRdCode>102</cRdCode></row><row><cRdCode>103</cRdCode></row>";
}

const test::SettingsCalls<kovra::ClsOppSubjectST> calls{
    .className = "ClsOppSubjectST",
    .setup = setup,
    .restore = restore,
    .contents = ContentsQuery(),
    .rows = Rows(),
    .stored = {{"keys", Stored(OfCategory("102", R"("A")"), R"("1401")", "null")}},
    .play = test::PlayStandardCostCall};

TEST(StandardCostSettingsFaults, Add) {
    calls.Disturb("ADD", {EveryAccount(), WithoutKey(), NoLeaf(), KeysAlone("102"), NewKeys()});
}

TEST(StandardCostSettingsFaults, Edit) {
    SettingRow update = KeysAlone("102");
    update.write = "Update IA_OppHead Set";
    // The accounts are cleared and the item stays.
    update.stored = Stored(OfCategory("102", R"("A")"), "null", "null");
    update.storedName = "keys";
    calls.Disturb("EDIT", {EveryAccount(), WithoutKey(), NoLeaf(), update, NewKeys()});
}

TEST(StandardCostSettingsFaults, Empty) { calls.DisturbEmpty("IA_OppHead"); }

} // namespace
} // namespace standard_cost_settings_faults
