#include "ClsOppSubject/ClsOppSubject.h"

#include "tests/faults/SettingsCalls.h"

#include <gtest/gtest.h>

namespace opposite_settings_faults {
namespace {

using test::AccountCheck;
using test::CheckedCode;
using test::SettingRow;

constexpr const char* setup = R"(INSERT INTO rd_style (cRdCode) VALUES (N'1'), (N'101'), (N'102')
GO
INSERT INTO inventoryclass (cInvCCode) VALUES (N'C1')
GO
INSERT INTO inventory (cInvCode, bService, bInvType, bPTOModel) VALUES (N'A', 0, 0, 0)
GO
INSERT INTO department (cDepCode) VALUES (N'02')
GO
INSERT INTO fitem (citem_class, citem_name, ctable) VALUES (N'97', N'Research', N'fitemss97')
GO
INSERT INTO fitemss97 (citemcode, citemname) VALUES (N'RD1', N'Spindle')
GO
INSERT INTO code (iyear, ccode, bend) VALUES (2023, N'1401', 1), (2023, N'1402', 1)
)";

constexpr const char* restore = R"(DELETE FROM IA_OppHead
GO
INSERT INTO IA_OppHead (cRdCode, cOppHead, cEstHead, iYear) VALUES (N'101', N'1401', N'1402', 2023)
)";

constexpr const char* contents = "select cRdCode, cInvcCode, cInvCode, cDepCode, citem_class, citemcode, cOppHead, "
                                 "cEstHead, iYear from IA_OppHead";

/// A stored row that has no other key than its category.
std::string OfCategory(const std::string& cRdCode, const std::string& cOppHead, const std::string& cEstHead) {
    return "{\"cRdCode\":\"" + cRdCode +
           "\",\"cInvcCode\":null,\"cInvCode\":null,\"cDepCode\":null,\"citem_class\":null,\"citemcode\":null,"
           "\"cOppHead\":" +
           cOppHead + ",\"cEstHead\":" + cEstHead + ",\"iYear\":2023}";
}

CheckedCode Category(const std::string& code) { return {"From rd_style  Where cRdCode='" + code + "' "}; }

/// Every key and both accounts.
SettingRow EveryKey() {
    return {.key = "收发类别编码：101， 存货分类编码：C1， 存货编码：A， 部门编码：02， 项目大类编码：97， "
                   "项目编码：RD1",
            .checks = {{"From inventory  Where cInvCode='A' and bService=0"},
                       {"From inventoryclass  Where cInvcCode='C1'"},
                       Category("101"),
                       {"from department where cdepcode = '02' "},
                       {"from fitem  Where citem_class='97' "},
                       {"Select cItemCode,cItemName from fitemss97 Where cItemCode ='RD1' "},
                       AccountCheck("1401"),
                       AccountCheck("1402")},
            .match = "cRdCode = N'101' And cInvcCode = N'C1' And cInvCode = N'A' And cDepCode = N'02' And citem_class "
                     "= N'97' And citemcode = N'RD1' And iyear = 2023",
            .write = "INSERT INTO IA_OppHead",
            .stored = R"({"cRdCode":"101","cInvcCode":"C1","cInvCode":"A","cDepCode":"02","citem_class":"97",)"
                      R"("citemcode":"RD1","cOppHead":"1401","cEstHead":"1402","iYear":2023})",
            .storedName = "every key"};
}

SettingRow WithoutAccount() {
    return {.key = "收发类别编码：1， ， ， ， ， ", .missing = "对方科目编码、暂估科目编码两项必须输入其中之一。"};
}

SettingRow UnknownDepartment() {
    return {
        .key = "收发类别编码：102， ， ， 部门编码：99， ， ",
        .checks = {Category("102"), {.sql = "from department where cdepcode = '99' ", .refusal = "部门编码不合法。"}}};
}

/// A category with an opposite account alone.
SettingRow OneAccount(const std::string& category) {
    return {.key = "收发类别编码：" + category + "， ， ， ， ， ",
            .checks = {Category(category), AccountCheck("1402")},
            .match = "cRdCode = N'" + category + "' And isnull(cInvcCode,N'') = N''"};
}

SettingRow NewCategory() {
    SettingRow row = OneAccount("1");
    row.write = "INSERT INTO IA_OppHead";
    row.stored = OfCategory("1", R"("1402")", "null");
    row.storedName = "new category";
    return row;
}

const std::string rows =
    "<row><cRdCode>101</cRdCode><cInvcCode>C1</cInvcCode><cInvCode>A</cInvCode><cDepCode>02</cDepCode>"
    "<citem_class>97</citem_class><citemcode>RD1</citemcode><cItem_class>97</cItem_class><cItemCode>RD1</cItemCode>"
    "<cItemCName>Research</cItemCName><cName>Spindle</cName><cOppHead>1401</cOppHead><cEstHead>1402</cEstHead></row>"
    "<row><cRdCode>1</cRdCode></row>"
    "<row><cRdCode>102</cRdCode><cDepCode>99</cDepCode><cOppHead>1401</cOppHead></row>"
    "<row><cRdCode>101</cRdCode><cOppHead>1402</cOppHead></row>"
    "<row><cRdCode>1</cRdCode><cOppHead>1402</cOppHead></row>";

const test::SettingsCalls<kovra::ClsOppSubject> calls{
    .className = "ClsOppSubject",
    .setup = setup,
    .restore = restore,
    .contents = contents,
    .rows = rows,
    .stored = {{"category", OfCategory("101", R"("1401")", R"("1402")")}}};

TEST(OppositeSettingsFaults, Add) {
    calls.Disturb("ADD", {EveryKey(), WithoutAccount(), UnknownDepartment(), OneAccount("101"), NewCategory()});
}

TEST(OppositeSettingsFaults, Edit) {
    SettingRow update = OneAccount("101");
    update.write = "Update IA_OppHead Set";
    // The account that the row leaves out is cleared.
    update.stored = OfCategory("101", R"("1402")", "null");
    update.storedName = "category";
    calls.Disturb("EDIT", {EveryKey(), WithoutAccount(), UnknownDepartment(), update, NewCategory()});
}

TEST(OppositeSettingsFaults, Empty) { calls.DisturbEmpty("IA_OppHead"); }

} // namespace
} // namespace opposite_settings_faults
