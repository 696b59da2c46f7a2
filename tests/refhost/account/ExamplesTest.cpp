#include "ClsInvSubject/ClsInvSubject.h"
#include "ClsOppSubject/ClsOppSubject.h"
#include "ClsOppSubjectST/ClsOppSubjectST.h"
#include "refhost/Environment.h"
#include "refhost/OpenDatabase.h"
#include "refhost/account/Account.h"
#include "refhost/ado/Connection.h"
#include "refhost/eai/Login.h"
#include "refhost/xml/FileText.h"
#include "tests/support/Paths.h"
#include "tests/support/TestAccount.h"

#include <string>

#include <gmock/gmock.h>

namespace refhost {

namespace {

std::string Example(const std::string& name) {
    return xml::ReadXmlFile((test::SourceFolder() / "examples" / name).string());
}

std::string Item(const std::string& key, const std::string& code, const std::string& description) {
    return "<item key=\"" + key + "\" code=\"" + code + "\" dsc=\"" + description + "\"/>";
}

/// The demonstration company in a file of its own, under the login of the examples.
class Examples : public testing::Test {
protected:
    Examples() {
        connection.Open(login.ConnectionString(), "", "", host::command_option::unspecified);
        CreateAccount(connection, login.AccountId(), true);
    }

    template <class Class> std::string Run(const std::string& request) {
        return Class(environment).Transact(Example(request), &login);
    }

    std::size_t Count(std::string_view sql) { return connection.database().Query(sql).rowCount; }

private:
    std::string LoginXml() const {
        std::string xml = Example("login.xml");
        const std::string file = "demo.db";
        return xml.replace(xml.find(file), file.size(), (folder.path() / file).string());
    }

    test::TemporaryFolder folder;
    Environment environment;
    Login login{LoginXml(), environment};
    Connection connection{OpenOrCreate()};
};

TEST_F(Examples, InventorySettingsFitTheDemonstrationCompany) {
    const std::string noAccount = "存货科目编码、差异科目编码、分期收款发出商品科目编码、委托代销发出商品科目编码、"
                                  "直运科目编码五项必须输入其中之一。";
    const std::string expected =
        "<qxinterface docid=\"settings-2024-01\" proc=\"ADD\">" + Item("仓库编码：01， ， ", "0", "ok") +
        Item("仓库编码：01， 存货分类：0102， ", "0", "ok") + Item("存货分类：03， ", "0", "ok") +
        Item("存货编码：1004", "0", "ok") + Item("仓库编码：04， ， 存货编码：4001", "0", "ok") +
        Item("仓库编码：01， ， ", "101", "对照关系已经存在，无法插入新记录。") +
        Item("仓库编码：01， ， ", "0", "ok") +
        Item("", "101", "仓库编码、存货分类编码、存货编码三者必须输入其中之一。" + noAccount) +
        Item("存货分类：04， 存货编码：4001", "101", "存货和存货分类不能同时存在。") +
        Item("仓库编码：02， ， ", "101", noAccount) + Item("存货编码：9001", "101", "存货编码不合法。") +
        Item("存货分类：99， ", "101", "存货分类编码不合法。") + Item("仓库编码：99， ， ", "101", "仓库编码不合法。") +
        Item("仓库编码：02， ， ", "101", "存货科目编码不合法。") +
        Item("仓库编码：02， ， ", "101", "差异科目编码不合法。") +
        Item("仓库编码：02， ， ", "101", "分期收款发出商品科目编码不合法。") +
        Item("仓库编码：02， ， ", "101", "委托代销发出商品科目编码不合法。") +
        Item("仓库编码：02， ， ", "101", "直运科目编码不合法。") + "</qxinterface>";
    EXPECT_EQ(Run<kovra::ClsInvSubject>("inventory-settings.xml"), expected);
    EXPECT_EQ(Count("select AutoID from IA_HeadSet where iYear = 2024"), 5U);
}

TEST_F(Examples, OppositeSettingsFitTheDemonstrationCompany) {
    const std::string expected =
        "<qxinterface docid=\"opposite-2024-01\" proc=\"ADD\">" + Item("收发类别编码：101， ， ， ， ， ", "0", "ok") +
        Item("收发类别编码：201， 存货分类编码：01， ， 部门编码：0201， ， ", "0", "ok") +
        Item("收发类别编码：203， ， 存货编码：1007， ， ， ", "0", "ok") +
        Item("部门编码：05， 项目大类编码：97， 项目编码：RD01", "0", "ok") +
        Item("收发类别编码：101， ， ， ， ， ", "101", "对照关系已经存在，无法插入新记录。") +
        Item("收发类别编码：101， ， ， ， ， ", "0", "ok") +
        Item("", "101",
             "收发类别编码、存货分类编码、存货编码、部门编码四项必须输入其中之一。"
             "对方科目编码、暂估科目编码两项必须输入其中之一。") +
        Item("存货编码：9999， ， ， ", "101", "存货编码不合法。") +
        Item("存货编码：9001， ， ， ", "101", "存货编码不合法。") +
        Item("存货分类编码：99， ， ， ， ", "101", "存货分类编码不合法。") +
        Item("收发类别编码：999， ， ， ， ， ", "101", "收发类别编码不合法。") +
        Item("部门编码：99， ， ", "101", "部门编码不合法。") +
        Item("部门编码：05， ， ", "101", "没有录入项目大类。") + Item("部门编码：05， ， ", "101", "没有录入项目。") +
        Item("部门编码：05， ， ", "101", "项目名称不符。") +
        Item("收发类别编码：202， ， ， ， ， ", "101", "对方科目编码不合法。") +
        Item("收发类别编码：202， ， ， ， ， ", "101", "暂估科目编码不合法。") + "</qxinterface>";
    EXPECT_EQ(Run<kovra::ClsOppSubject>("opposite-settings.xml"), expected);
    EXPECT_EQ(Count("select AutoID from IA_OppHead where iYear = 2024"), 4U);
}

TEST_F(Examples, StandardCostSettingsFitTheDemonstrationCompany) {
    const std::string expected = "<qxinterface docid=\"standard-2024-01\" proc=\"ADD\">" +
                                 Item("收发类别编码：102， 存货分类编码：03， 部门编码：0201", "0", "ok") +
                                 Item("收发类别编码：103， ， ", "0", "ok") +
                                 Item("收发类别编码：103， ， ", "101", "对照关系已经存在，无法插入新记录。") +
                                 Item("收发类别编码：103， ， ", "0", "ok") +
                                 Item("", "101", "收发类别编码、存货分类编码、部门编码三项必须输入其中之一。") +
                                 Item("收发类别编码：1， ， ", "101", "收发类别编码不合法。") +
                                 Item("部门编码：02", "101", "部门编码不合法。") +
                                 Item("部门编码：0202", "101", "委外加工费差异对方科目编码不合法。") + "</qxinterface>";
    EXPECT_EQ(Run<kovra::ClsOppSubjectST>("standard-cost-settings.xml"), expected);
    EXPECT_EQ(Count("select AutoID from IA_OppHead where cOTaxRefundCode = N'222101'"), 1U);
}

} // namespace

} // namespace refhost
