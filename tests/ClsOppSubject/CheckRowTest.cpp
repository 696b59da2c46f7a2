#include "tests/ClsOppSubject/Fixture.h"
#include "tests/support/NameOfCase.h"

namespace test {
namespace {

using CheckRow = OppositeSettings;

constexpr const char* noKey = "收发类别编码、存货分类编码、存货编码、部门编码四项必须输入其中之一。";
constexpr const char* noAccount = "对方科目编码、暂估科目编码两项必须输入其中之一。";

TEST_F(CheckRow, RefusesARowWithoutKey) {
    const ImportRun run = Import("ADD", "<row><cOppHead>1401</cOppHead></row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{"", 101, noKey}}));
    EXPECT_EQ(RowLines(run), std::vector<std::string>());
}

TEST_F(CheckRow, RefusesARowWithoutAccount) {
    const ImportRun run = Import("ADD", "<row><cRdCode>101</cRdCode></row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{"收发类别编码：101， ， ， ， ， ", 101, noAccount}}));
    EXPECT_EQ(RowLines(run), std::vector<std::string>());
}

TEST_F(CheckRow, JoinsBothMessagesWithoutSeparator) {
    const ImportRun run = Import("ADD", "<row/>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{"", 101,
                                                  "收发类别编码、存货分类编码、存货编码、部门编码四项必须输入其中之一。"
                                                  "对方科目编码、暂估科目编码两项必须输入其中之一。"}}));
}

TEST_F(CheckRow, ExtendsTheKeyBeforeItRefusesForMissingFields) {
    // A project alone is no key, yet the refusal's key names it.
    const ImportRun run = Import("ADD", "<row><citem_class>P</citem_class><citemcode>Q</citemcode>"
                                        "<cOppHead>1401</cOppHead></row>"
                                        "<row><citemcode>Q</citemcode></row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{"项目大类编码：P， 项目编码：Q", 101, noKey},
                                                 {"项目编码：Q", 101, std::string(noKey) + noAccount}}));
}

struct KeyCase {
    const char* name;
    const char* row;
    const char* key;
};

class Key : public OppositeSettings, public testing::WithParamInterface<KeyCase> {};

TEST_P(Key, LeavesASeparatorForEachFieldBehindTheFirst) {
    const ImportRun run = Import("ADD", std::string("<row>") + GetParam().row + "<cOppHead>1401</cOppHead></row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{GetParam().key, 0, "ok"}}));
}

INSTANTIATE_TEST_SUITE_P(
    All, Key,
    testing::Values(
        KeyCase{"CategoryAndItem", "<cRdCode>1</cRdCode><cInvCode>A</cInvCode>",
                "收发类别编码：1， ， 存货编码：A， ， ， "},
        KeyCase{"CategoryItemAndProject",
                "<cRdCode>1</cRdCode><cInvCode>A</cInvCode><citem_class>P</citem_class><citemcode>Q</citemcode>",
                "收发类别编码：1， ， 存货编码：A， ， 项目大类编码：P， 项目编码：Q"},
        KeyCase{"CategoryAndDepartment", "<cRdCode>101</cRdCode><cDepCode>02</cDepCode>",
                "收发类别编码：101， ， ， 部门编码：02， ， "},
        KeyCase{"Class", "<cInvcCode>C1</cInvcCode>", "存货分类编码：C1， ， ， ， "},
        KeyCase{"Item", "<cInvCode>A</cInvCode>", "存货编码：A， ， ， "},
        KeyCase{"Department", "<cDepCode>0201</cDepCode>", "部门编码：0201， ， "},
        KeyCase{"DepartmentAndProject", "<cDepCode>0201</cDepCode><citemcode>Q</citemcode>",
                "部门编码：0201， ， 项目编码：Q"},
        KeyCase{"Everything",
                "<cRdCode>1</cRdCode><cInvcCode>C</cInvcCode><cInvCode>A</cInvCode><cDepCode>02</cDepCode>"
                "<citem_class>P</citem_class><citemcode>Q</citemcode>",
                "收发类别编码：1， 存货分类编码：C， 存货编码：A， 部门编码：02， 项目大类编码：P， 项目编码：Q"}),
    test::nameOfCase);

TEST_F(CheckRow, AsksForEverythingInOrder) {
    const ImportRun run =
        Import("ADD", "<row><cEstHead>1402</cEstHead><cOppHead>1401</cOppHead><cName>Spindle</cName>"
                      "<cItemCName>Research</cItemCName><cItemCode>RD1</cItemCode><cItem_class>97</cItem_class>"
                      "<citemcode>Q</citemcode><citem_class>P</citem_class><cDepCode>0201</cDepCode>"
                      "<cInvCode>A</cInvCode><cInvcCode>C1</cInvcCode><cRdCode>101</cRdCode></row>");
    EXPECT_EQ(run.result,
              ResultDocument("ADD", {{"收发类别编码：101， 存货分类编码：C1， 存货编码：A， 部门编码：0201， "
                                      "项目大类编码：P， 项目编码：Q",
                                      0, "ok"}}));
    std::vector<std::string> lines = RowLines(run);
    ASSERT_EQ(lines.size(), 10U);
    // What saves the row is the write's own matter.
    lines.resize(8);
    EXPECT_EQ(lines,
              (std::vector{
                  LookedUp("Select cValuetype From inventory  Where cInvCode='A' and bService=0 and bInvType=0 and "
                           "isnull(bPTOModel,0)=0 "),
                  LookedUp("Select cInvcCode From inventoryclass  Where cInvcCode='C1'"),
                  LookedUp("Select cRdCode From rd_style  Where cRdCode='101' "),
                  LookedUp("select cDepCode from department where cdepcode = '0201' "),
                  LookedUp("Select citem_class,citem_name,ctable from fitem  Where citem_class='97' "),
                  LookedUp("Select cItemCode,cItemName from fitemss97 Where cItemCode ='RD1' "),
                  LookedUp("select ccode from code where ccode = '1401' and  bend =1 and iyear =2023"),
                  LookedUp("select ccode from code where ccode = '1402' and  bend =1 and iyear =2023"),
              }));
}

/// A row with a key and an account beside the tested fields, and the outcome of its check.
struct CheckCase {
    const char* name;
    const char* fields;
    /// The refusal's message; nullptr for a row that passes.
    const char* message;
    /// Number of look-ups made.
    std::size_t lookups;
};

class CodeCheck : public OppositeSettings, public testing::WithParamInterface<CheckCase> {};

TEST_P(CodeCheck, StopsAtTheFirstUnknownCode) {
    const CheckCase& check = GetParam();
    const ImportRun run = Import("ADD", std::string("<row>") + check.fields + "</row>");
    if (check.message == nullptr) {
        EXPECT_NE(run.result.find("code=\"0\" dsc=\"ok\""), std::string::npos) << run.result;
        // The match query and the insert follow the look-ups.
        EXPECT_EQ(RowLines(run).size(), check.lookups + 2);
        EXPECT_EQ(Stored().size(), 1U);
    } else {
        EXPECT_NE(run.result.find(std::string("code=\"101\" dsc=\"") + check.message + "\"/></qxinterface>"),
                  std::string::npos)
            << run.result;
        EXPECT_EQ(run.result.find("\"ok\""), std::string::npos) << run.result;
        EXPECT_EQ(RowLines(run).size(), check.lookups);
        EXPECT_EQ(Stored().size(), 0U);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Codes, CodeCheck,
    testing::Values(CheckCase{"UnknownItem", "<cInvCode>X</cInvCode><cRdCode>X</cRdCode><cOppHead>X</cOppHead>",
                              "存货编码不合法。", 1},
                    CheckCase{"ServiceItem", "<cInvCode>S</cInvCode><cOppHead>1401</cOppHead>", "存货编码不合法。", 1},
                    CheckCase{"DiscountItem", "<cInvCode>D</cInvCode><cOppHead>1401</cOppHead>", "存货编码不合法。", 1},
                    CheckCase{"PtoModelItem", "<cInvCode>P</cInvCode><cOppHead>1401</cOppHead>", "存货编码不合法。", 1},
                    CheckCase{"ItemWhosePtoFlagIsNull", "<cInvCode>B</cInvCode><cOppHead>1401</cOppHead>", nullptr, 2},
                    CheckCase{"UnknownClass", "<cInvCode>A</cInvCode><cInvcCode>X</cInvcCode><cOppHead>1401</cOppHead>",
                              "存货分类编码不合法。", 2},
                    CheckCase{"ClassOfAnyLevel", "<cInvcCode>C</cInvcCode><cOppHead>1401</cOppHead>", nullptr, 2},
                    CheckCase{"UnknownCategory",
                              "<cInvcCode>C</cInvcCode><cRdCode>X</cRdCode><cOppHead>1401</cOppHead>",
                              "收发类别编码不合法。", 2},
                    CheckCase{"CategoryOfAnyLevel", "<cRdCode>1</cRdCode><cOppHead>1401</cOppHead>", nullptr, 2},
                    CheckCase{"UnknownDepartment",
                              "<cRdCode>1</cRdCode><cDepCode>X</cDepCode><cOppHead>1401</cOppHead>", "部门编码不合法。",
                              2},
                    CheckCase{"DepartmentOfAnyLevel", "<cDepCode>02</cDepCode><cOppHead>1401</cOppHead>", nullptr, 2}),
    test::nameOfCase);

INSTANTIATE_TEST_SUITE_P(
    Projects, CodeCheck,
    testing::Values(
        CheckCase{"ClassWithoutProject", "<cRdCode>1</cRdCode><cItem_class>97</cItem_class><cOppHead>1401</cOppHead>",
                  "没有录入项目。", 1},
        CheckCase{"ProjectWithoutClass", "<cRdCode>1</cRdCode><cItemCode>RD1</cItemCode><cOppHead>1401</cOppHead>",
                  "没有录入项目大类。", 1},
        CheckCase{"UnknownProjectClass",
                  "<cRdCode>1</cRdCode><cItem_class>X</cItem_class><cItemCode>RD1</cItemCode>"
                  "<cOppHead>1401</cOppHead>",
                  "项目大类不合法。", 2},
        CheckCase{"ProjectClassOfAnotherName",
                  "<cRdCode>1</cRdCode><cItem_class>97</cItem_class><cItemCode>RD1</cItemCode>"
                  "<cItemCName>Sales</cItemCName><cName>Spindle</cName><cOppHead>1401</cOppHead>",
                  "项目大类名称不符。", 2},
        CheckCase{"ProjectClassNameInOtherLetterCase",
                  "<cRdCode>1</cRdCode><cItem_class>97</cItem_class><cItemCode>RD1</cItemCode>"
                  "<cItemCName>RESEARCH</cItemCName><cName>Spindle</cName><cOppHead>1401</cOppHead>",
                  "项目大类名称不符。", 2},
        CheckCase{"ProjectClassNameMissing",
                  "<cRdCode>1</cRdCode><cItem_class>97</cItem_class><cItemCode>RD1</cItemCode>"
                  "<cName>Spindle</cName><cOppHead>1401</cOppHead>",
                  "项目大类名称不符。", 2},
        CheckCase{"NullNameOfAProjectClassIsNeverAnother",
                  "<cRdCode>1</cRdCode><cItem_class>96</cItem_class><cItemCode>RD1</cItemCode>"
                  "<cItemCName>Anything</cItemCName><cName>Spindle</cName><cOppHead>1401</cOppHead>",
                  nullptr, 4},
        CheckCase{"UnknownProject",
                  "<cRdCode>1</cRdCode><cItem_class>97</cItem_class><cItemCode>RD9</cItemCode>"
                  "<cItemCName>Research</cItemCName><cName>Spindle</cName><cOppHead>1401</cOppHead>",
                  "项目不合法。", 3},
        CheckCase{"ProjectOfAnotherName",
                  "<cRdCode>1</cRdCode><cItem_class>97</cItem_class><cItemCode>RD1</cItemCode>"
                  "<cItemCName>Research</cItemCName><cName>spindle</cName><cOppHead>1401</cOppHead>",
                  "项目名称不符。", 3},
        CheckCase{"NullNameOfAProjectIsNeverAnother",
                  "<cRdCode>1</cRdCode><cItem_class>97</cItem_class><cItemCode>RD2</cItemCode>"
                  "<cItemCName>Research</cItemCName><cName>Anything</cName><cOppHead>1401</cOppHead>",
                  nullptr, 4},
        CheckCase{"ProjectInTheUncheckedSpelling",
                  "<cRdCode>1</cRdCode><citem_class>X</citem_class><citemcode>Y</citemcode><cOppHead>1401</cOppHead>",
                  nullptr, 2}),
    test::nameOfCase);

INSTANTIATE_TEST_SUITE_P(
    Accounts, CodeCheck,
    testing::Values(CheckCase{"UnknownOppositeAccount",
                              "<cRdCode>1</cRdCode><cOppHead>X</cOppHead><cEstHead>X</cEstHead>",
                              "对方科目编码不合法。", 2},
                    CheckCase{"OppositeAccountWithSubAccounts", "<cRdCode>1</cRdCode><cOppHead>14</cOppHead>",
                              "对方科目编码不合法。", 2},
                    CheckCase{"OppositeAccountOfAnotherYear", "<cRdCode>1</cRdCode><cOppHead>1499</cOppHead>",
                              "对方科目编码不合法。", 2},
                    CheckCase{"UnknownEstimateAccount",
                              "<cRdCode>1</cRdCode><cOppHead>1401</cOppHead><cEstHead>X</cEstHead>",
                              "暂估科目编码不合法。", 3},
                    CheckCase{"EstimateAccountWithSubAccounts", "<cRdCode>1</cRdCode><cEstHead>14</cEstHead>",
                              "暂估科目编码不合法。", 2},
                    CheckCase{"EstimateAccountOfAnotherYear", "<cRdCode>1</cRdCode><cEstHead>1499</cEstHead>",
                              "暂估科目编码不合法。", 2}),
    test::nameOfCase);

/// A row whose check meets an error is refused without a word on it.
struct TrapCase {
    const char* name;
    const char* fields;
    const char* key;
    /// The last thing asked: it fails.
    std::string failing;
};

class CheckTrap : public OppositeSettings, public testing::WithParamInterface<TrapCase> {};

TEST_P(CheckTrap, RefusesWithTheMessageAsItStood) {
    const TrapCase& check = GetParam();
    // The next row is imported all the same.
    const ImportRun run = Import("ADD", std::string("<row>") + check.fields +
                                            "</row><row><cRdCode>101</cRdCode><cOppHead>1401</cOppHead></row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{check.key, 101, ""}, {"收发类别编码：101， ， ， ， ， ", 0, "ok"}}));
    const std::vector<std::string> lines = RowLines(run);
    ASSERT_GT(lines.size(), 4U);
    EXPECT_EQ(lines[lines.size() - 5], check.failing);
    EXPECT_EQ(Stored(),
              std::vector<std::string>{R"({"cRdCode":"101","cInvcCode":null,"cInvCode":null,"cDepCode":null,)"
                                       R"("citem_class":null,"citemcode":null,"cOppHead":"1401","cEstHead":null,)"
                                       R"("iYear":2023})"});
}

INSTANTIATE_TEST_SUITE_P(
    All, CheckTrap,
    testing::Values(
        TrapCase{"QuoteInItem", "<cInvCode>A'B</cInvCode><cOppHead>1401</cOppHead>", "存货编码：A'B， ， ， ",
                 LookedUp("Select cValuetype From inventory  Where cInvCode='A'B' and bService=0 and bInvType=0 and "
                          "isnull(bPTOModel,0)=0 ",
                          -2147217900)},
        TrapCase{"QuoteInClass", "<cInvcCode>A'B</cInvcCode><cOppHead>1401</cOppHead>", "存货分类编码：A'B， ， ， ， ",
                 LookedUp("Select cInvcCode From inventoryclass  Where cInvcCode='A'B'", -2147217900)},
        TrapCase{"QuoteInCategory", "<cRdCode>A'B</cRdCode><cOppHead>1401</cOppHead>",
                 "收发类别编码：A'B， ， ， ， ， ",
                 LookedUp("Select cRdCode From rd_style  Where cRdCode='A'B' ", -2147217900)},
        TrapCase{"QuoteInDepartment", "<cDepCode>A'B</cDepCode><cOppHead>1401</cOppHead>", "部门编码：A'B， ， ",
                 LookedUp("select cDepCode from department where cdepcode = 'A'B' ", -2147217900)},
        TrapCase{"QuoteInProjectClass",
                 "<cDepCode>02</cDepCode><cItem_class>A'B</cItem_class><cItemCode>RD1</cItemCode>"
                 "<cOppHead>1401</cOppHead>",
                 "部门编码：02， ， ",
                 LookedUp("Select citem_class,citem_name,ctable from fitem  Where citem_class='A'B' ", -2147217900)},
        TrapCase{"QuoteInProject",
                 "<cDepCode>02</cDepCode><cItem_class>97</cItem_class><cItemCode>A'B</cItemCode>"
                 "<cItemCName>Research</cItemCName><cOppHead>1401</cOppHead>",
                 "部门编码：02， ， ",
                 LookedUp("Select cItemCode,cItemName from fitemss97 Where cItemCode ='A'B' ", -2147217900)},
        TrapCase{"UnknownProjectTable",
                 "<cDepCode>02</cDepCode><cItem_class>95</cItem_class><cItemCode>RD1</cItemCode>"
                 "<cItemCName>Lost</cItemCName><cOppHead>1401</cOppHead>",
                 "部门编码：02， ， ",
                 LookedUp("Select cItemCode,cItemName from fitemss95 Where cItemCode ='RD1' ", -2147217865)},
        TrapCase{"NullProjectTable",
                 "<cDepCode>02</cDepCode><cItem_class>94</cItem_class><cItemCode>RD1</cItemCode>"
                 "<cItemCName>Nowhere</cItemCName><cOppHead>1401</cOppHead>",
                 "部门编码：02， ， ",
                 LookedUp("Select cItemCode,cItemName from  Where cItemCode ='RD1' ", -2147217900)},
        TrapCase{"QuoteInOppositeAccount", "<cDepCode>02</cDepCode><cOppHead>A'B</cOppHead>", "部门编码：02， ， ",
                 LookedUp("select ccode from code where ccode = 'A'B' and  bend =1 and iyear =2023", -2147217900)},
        TrapCase{"QuoteInEstimateAccount", "<cDepCode>02</cDepCode><cEstHead>A'B</cEstHead>", "部门编码：02， ， ",
                 LookedUp("select ccode from code where ccode = 'A'B' and  bend =1 and iyear =2023", -2147217900)}),
    test::nameOfCase);

TEST_F(CheckRow, ComparesQuotesInNamesAsText) {
    const ImportRun run = Import("ADD", "<row><cDepCode>02</cDepCode><cItem_class>97</cItem_class>"
                                        "<cItemCode>RD1</cItemCode><cItemCName>Research'</cItemCName>"
                                        "<cOppHead>1401</cOppHead></row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{"部门编码：02， ， ", 101, "项目大类名称不符。"}}));
}

TEST_F(CheckRow, ComparesANameThatIsNoTextByItsText) {
    account.Run("CREATE TABLE fitemss93 (citemcode nvarchar(60) NOT NULL, citemname int NULL)\n"
                "GO\n"
                "INSERT INTO fitemss93 (citemcode, citemname) VALUES (N'RD1', 7)\n"
                "GO\n"
                "INSERT INTO fitem (citem_class, citem_name, ctable) VALUES (N'93', N'Numbers', N'fitemss93')\n");
    const std::string row = "<row><cDepCode>02</cDepCode><cItem_class>93</cItem_class><cItemCode>RD1</cItemCode>"
                            "<cItemCName>Numbers</cItemCName><cOppHead>1401</cOppHead>";
    const ImportRun run = Import("EDIT", row + "<cName>7</cName></row>" + row + "<cName>07</cName></row>");
    EXPECT_EQ(run.result,
              ResultDocument("EDIT", {{"部门编码：02， ， ", 0, "ok"}, {"部门编码：02， ， ", 101, "项目名称不符。"}}));
}

} // namespace
} // namespace test
