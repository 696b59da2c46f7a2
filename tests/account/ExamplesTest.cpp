#include "ClsInvSubject/ClsInvSubject.h"
#include "refhost/Connection.h"
#include "refhost/Environment.h"
#include "refhost/account/Account.h"
#include "refhost/eai/Login.h"
#include "refhost/xml/FileText.h"
#include "tests/support/TestAccount.h"

#include <string>

#include <gmock/gmock.h>

namespace refhost {

namespace {

std::string Example(const std::string& name) {
    return xml::ReadXmlFile(std::string(KOVRA_SOURCE_DIR) + "/examples/" + name);
}

std::string Item(const std::string& key, const std::string& code, const std::string& description) {
    return "<item key=\"" + key + "\" code=\"" + code + "\" dsc=\"" + description + "\"/>";
}

TEST(Examples, InventorySettingsFitTheDemonstrationCompany) {
    const test::TemporaryFolder folder;
    std::string loginXml = Example("login.xml");
    const std::string file = "demo.db";
    loginXml.replace(loginXml.find(file), file.size(), (folder.path() / file).string());

    Environment environment;
    Login login(loginXml, environment);
    Connection connection(nullptr, OpenOrCreate());
    connection.Open(login.ConnectionString(), "", "", host::command_option::unspecified);
    CreateAccount(connection, login.AccountId(), true);

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
    EXPECT_EQ(kovra::ClsInvSubject(environment).Transact(Example("inventory-settings.xml"), &login), expected);
    EXPECT_EQ(connection.database().Query("select AutoID from IA_HeadSet where iYear = 2024").rowCount, 5U);
}

} // namespace

} // namespace refhost
