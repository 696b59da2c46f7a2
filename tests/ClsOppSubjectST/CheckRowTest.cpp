#include "tests/ClsOppSubjectST/Fixture.h"
#include "tests/support/NameOfCase.h"

namespace test {
namespace {

using CheckRow = StandardCostSettings;

std::string AccountLookup(std::string_view account) {
    std::string sql = "select ccode from code where ccode = '";
    return LookedUp(sql.append(account).append("' and  bend =1 and iyear =2023"));
}

TEST_F(CheckRow, RefusesARowWithoutKey) {
    // An item and a project are no keys here.
    const ImportRun run = Import("ADD", "<row><cInvCode>A</cInvCode><citem_class>P</citem_class>"
                                        "<citemcode>Q</citemcode><cOppHead>a01</cOppHead></row>");
    EXPECT_EQ(run.result,
              ResultDocument("ADD", {{"", 101, "收发类别编码、存货分类编码、部门编码三项必须输入其中之一。"}}));
    EXPECT_EQ(RowLines(run), std::vector<std::string>());
}

TEST_F(CheckRow, PassesARowWithoutAccount) {
    const ImportRun run = Import("ADD", "<row><cRdCode>101</cRdCode></row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{"收发类别编码：101， ， ", 0, "ok"}}));
}

TEST_F(CheckRow, DoesNotExtendTheKey) {
    const ImportRun run = Import("ADD", "<row><cInvcCode>C1</cInvcCode><cDepCode>0201</cDepCode></row>"
                                        "<row><cDepCode>0201</cDepCode><citem_class>P</citem_class></row>"
                                        "<row><cRdCode>101</cRdCode><cDepCode>0201</cDepCode></row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{"存货分类编码：C1， 部门编码：0201", 0, "ok"},
                                                 {"部门编码：0201", 0, "ok"},
                                                 {"收发类别编码：101， ， 部门编码：0201", 0, "ok"}}));
}

TEST_F(CheckRow, AsksForEverythingInOrder) {
    const ImportRun run = Import("ADD", everyField);
    EXPECT_EQ(run.result, ResultDocument("ADD", {{everyFieldKey, 0, "ok"}}));
    std::vector<std::string> lines = RowLines(run);
    ASSERT_EQ(lines.size(), 28U);
    // What saves the row is the write's own matter.
    lines.resize(26);
    EXPECT_EQ(lines, (std::vector{
                         LookedUp("Select cInvcCode From inventoryclass  Where cInvcCode='C1'"),
                         LookedUp("Select cRdCode From rd_style  Where bRdEnd = 1 and  cRdCode=N'101' "),
                         LookedUp("select cDepCode from department where bDepEnd = 1 and cdepcode = N'0201' "),
                         AccountLookup("a01"), // cOppHead
                         AccountLookup("a02"), // cProcessHead
                         AccountLookup("a03"), // cMaterialHead
                         AccountLookup("a04"), // cOLaborStdCostCode
                         AccountLookup("a05"), // cOManuFixStdCostCode
                         AccountLookup("a06"), // cOManuVarStdCostCode
                         AccountLookup("a02"), // cProcessHead again
                         AccountLookup("a07"), // cOOmCostCode
                         AccountLookup("a07"), // and again
                         AccountLookup("a08"), // cOiqtCode
                         AccountLookup("a09"), // cOPriceCode
                         AccountLookup("a10"), // fLaborCostEffRateDifCode
                         AccountLookup("a11"), // fLaborCostRateDifCode
                         AccountLookup("a12"), // fSemiLaborDifCode
                         AccountLookup("a13"), // fManuFixCostEffRateDifCode
                         AccountLookup("a14"), // fManuFixCostRateDifCode
                         AccountLookup("a15"), // fSemiManuFixDifCode
                         AccountLookup("a16"), // fManuVarCostEffRateDifCode
                         AccountLookup("a17"), // fManuVarCostRateDifCode
                         AccountLookup("a18"), // fSemiManuVarDifCode
                         AccountLookup("a19"), // fOmCostEDifCode
                         AccountLookup("a20"), // fSemiOmDifCode
                         AccountLookup("a21"), // cOTaxRefundCode
                     }));
}

struct CodeCase {
    const char* name;
    const char* fields;
    const char* key;
    const char* message;
    std::size_t lookups;
};

class CodeCheck : public StandardCostSettings, public testing::WithParamInterface<CodeCase> {};

TEST_P(CodeCheck, StopsAtTheFirstUnknownCode) {
    const ImportRun run = Import("ADD", std::string("<row>") + GetParam().fields + "</row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{GetParam().key, 101, GetParam().message}}));
    EXPECT_EQ(RowLines(run).size(), GetParam().lookups);
    EXPECT_EQ(Stored(), std::vector<std::string>());
}

INSTANTIATE_TEST_SUITE_P(
    Keys, CodeCheck,
    testing::Values(CodeCase{"UnknownClass", "<cInvcCode>X</cInvcCode><cRdCode>X</cRdCode>",
                             "收发类别编码：X， 存货分类编码：X， ", "存货分类编码不合法。", 1},
                    CodeCase{"UnknownCategory", "<cInvcCode>C</cInvcCode><cRdCode>X</cRdCode>",
                             "收发类别编码：X， 存货分类编码：C， ", "收发类别编码不合法。", 2},
                    CodeCase{"CategoryWithSubCategories", "<cRdCode>1</cRdCode>", "收发类别编码：1， ， ",
                             "收发类别编码不合法。", 1},
                    CodeCase{"UnknownDepartment", "<cRdCode>101</cRdCode><cDepCode>X</cDepCode><cOppHead>X</cOppHead>",
                             "收发类别编码：101， ， 部门编码：X", "部门编码不合法。", 2},
                    CodeCase{"DepartmentWithSubDepartments", "<cDepCode>02</cDepCode>", "部门编码：02",
                             "部门编码不合法。", 1},
                    CodeCase{"AccountWithSubAccounts", "<cDepCode>0201</cDepCode><cOppHead>14</cOppHead>",
                             "部门编码：0201", "直接材料对方科目编码不合法。", 2},
                    CodeCase{"AccountOfAnotherYear", "<cDepCode>0201</cDepCode><cOppHead>1499</cOppHead>",
                             "部门编码：0201", "直接材料对方科目编码不合法。", 2}),
    test::nameOfCase);

struct AccountCase {
    const char* field;
    const char* message;
    /// Look-ups of accounts up to the refusal when every field is given.
    std::size_t lookups;
};

std::string AccountCaseName(const testing::TestParamInfo<AccountCase>& info) { return info.param.field; }

class AccountCheck : public StandardCostSettings, public testing::WithParamInterface<AccountCase> {
protected:
    /// The row of every field with `value` in the tested one.
    static std::string RowWith(std::string_view value) {
        std::string row = everyField;
        const std::string tag = std::string("<") + GetParam().field + ">";
        return row.replace(row.find(tag) + tag.size(), 3, value);
    }
};

TEST_P(AccountCheck, RefusesAnUnknownAccountWithItsMessage) {
    const ImportRun run = Import("EDIT", RowWith("X"));
    EXPECT_EQ(run.result, ResultDocument("EDIT", {{everyFieldKey, 101, GetParam().message}}));
    EXPECT_EQ(RowLines(run).size(), 3 + GetParam().lookups);
    EXPECT_EQ(run.trace.back(), AccountLookup("X"));
}

TEST_P(AccountCheck, RefusesAQuoteWithoutAWord) {
    const ImportRun run = Import("ADD", RowWith("A'B"));
    EXPECT_EQ(run.result, ResultDocument("ADD", {{everyFieldKey, 101, ""}}));
    EXPECT_EQ(run.trace.back(),
              LookedUp("select ccode from code where ccode = 'A'B' and  bend =1 and iyear =2023", -2147217900));
    EXPECT_EQ(Stored(), std::vector<std::string>());
}

INSTANTIATE_TEST_SUITE_P(
    All, AccountCheck,
    testing::Values(AccountCase{"cOppHead", "直接材料对方科目编码不合法。", 1},
                    AccountCase{"cProcessHead", "委外加工费科目编码不合法。", 2},
                    AccountCase{"cMaterialHead", "委外材料费科目编码不合法。", 3},
                    AccountCase{"cOLaborStdCostCode", "人工费用对方科目编码不合法。", 4},
                    AccountCase{"cOManuFixStdCostCode", "固定制造费用对方科目编码不合法。", 5},
                    AccountCase{"cOManuVarStdCostCode", "变动制造费用对方科目编码不合法。", 6},
                    AccountCase{"cOOmCostCode", "委外加工费对方科目编码不合法。", 8},
                    AccountCase{"cOiqtCode", "材料量差对方科目编码不合法。", 10},
                    AccountCase{"cOPriceCode", "材料价差对方科目编码不合法。", 11},
                    AccountCase{"fLaborCostEffRateDifCode", "人工费用效率差对方科目编码不合法。", 12},
                    AccountCase{"fLaborCostRateDifCode", "人工费用费率差对方科目编码不合法。", 13},
                    AccountCase{"fSemiLaborDifCode", "耗用半成品人工差异对方科目编码不合法。", 14},
                    AccountCase{"fManuFixCostEffRateDifCode", "耗用固定制造费用效率差对方科目编码不合法。", 15},
                    AccountCase{"fManuFixCostRateDifCode", "固定制造费用费率差对方科目编码不合法。", 16},
                    AccountCase{"fSemiManuFixDifCode", "耗用半成品固定制造差异对方科目编码不合法。", 17},
                    AccountCase{"fManuVarCostEffRateDifCode", "变动制造费用效率差对方科目编码不合法。", 18},
                    AccountCase{"fManuVarCostRateDifCode", "变动制造费用费率差对方科目编码不合法。", 19},
                    AccountCase{"fSemiManuVarDifCode", "耗用半成品变动制造差异对方科目编码不合法。", 20},
                    AccountCase{"fOmCostEDifCode", "委外加工费差异对方科目编码不合法。", 21},
                    AccountCase{"fSemiOmDifCode", "耗用半成品委外加工费差异对方科目编码不合法。", 22},
                    AccountCase{"cOTaxRefundCode", "退税转成本对方科目编码不合法。", 23}),
    AccountCaseName);

TEST_F(CheckRow, RefusesAQuoteInAKeyWithoutAWord) {
    const ImportRun run = Import("ADD", "<row><cRdCode>A'B</cRdCode></row><row><cInvcCode>A'B</cInvcCode></row>"
                                        "<row><cDepCode>A'B</cDepCode></row><row><cRdCode>101</cRdCode></row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{"收发类别编码：A'B， ， ", 101, ""},
                                                 {"存货分类编码：A'B， ", 101, ""},
                                                 {"部门编码：A'B", 101, ""},
                                                 {"收发类别编码：101， ， ", 0, "ok"}}));
    std::vector<std::string> lines = RowLines(run);
    ASSERT_EQ(lines.size(), 6U);
    lines.resize(3);
    EXPECT_EQ(lines,
              (std::vector{
                  LookedUp("Select cRdCode From rd_style  Where bRdEnd = 1 and  cRdCode=N'A'B' ", -2147217900),
                  LookedUp("Select cInvcCode From inventoryclass  Where cInvcCode='A'B'", -2147217900),
                  LookedUp("select cDepCode from department where bDepEnd = 1 and cdepcode = N'A'B' ", -2147217900),
              }));
}

} // namespace
} // namespace test
