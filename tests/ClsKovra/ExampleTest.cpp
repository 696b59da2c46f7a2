#include "ClsKovra/ClsKovra.h"
#include "refhost/Environment.h"
#include "refhost/OpenDatabase.h"
#include "refhost/account/Account.h"
#include "refhost/ado/Connection.h"
#include "refhost/eai/Login.h"
#include "refhost/xml/Document.h"
#include "refhost/xml/FileText.h"
#include "tests/support/Paths.h"
#include "tests/support/TestAccount.h"
#include "tests/support/ValuesOf.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

const std::string examples = (test::SourceFolder() / "examples" / "").string();

/// The outcomes of a result document as "key: description".
std::vector<std::string> Outcomes(const std::string& result) {
    const std::unique_ptr<host::DOMDocument> document = refhost::xml::CreateDocument();
    EXPECT_TRUE(document->LoadXML(result)) << result;
    std::vector<std::string> outcomes;
    for (const host::DOMNodePtr& item : document->DocumentElement()->SelectNodes("item")) {
        outcomes.push_back(*item->GetAttribute("key") + ": " + *item->GetAttribute("dsc"));
    }
    return outcomes;
}

TEST(ExampleTest, OpensTheLedgerOfTheDemonstrationCompany) {
    const test::TemporaryFolder folder;
    std::filesystem::current_path(folder.path());
    refhost::Environment environment(refhost::OpenOrCreate());
    refhost::Login login(refhost::xml::ReadXmlFile(examples + "login.xml"), environment);
    refhost::Connection connection(refhost::OpenOrCreate());
    connection.Open(login.ConnectionString(), "", "", host::command_option::unspecified);
    refhost::CreateAccount(connection, login.AccountId(), true);

    kovra::ClsKovra instance(environment);
    const std::string result = instance.Transact(refhost::xml::ReadXmlFile(examples + "opening-balances.xml"), &login);

    EXPECT_THAT(Outcomes(result),
                testing::ElementsAre("仓库编码：01， 存货编码：1001: ok", "仓库编码：06， 存货编码：1007: ok",
                                     "仓库编码：01， 存货编码：1002: ok", "仓库编码：01， 存货编码：1003: ok",
                                     "仓库编码：03， 存货编码：1004: ok", "仓库编码：03， 存货编码：1005: ok",
                                     "仓库编码：04， 存货编码：4001: ok", "仓库编码：05， 存货编码：1006: ok",
                                     "仓库编码：02， 存货编码：2001: ok", "仓库编码：02， 存货编码：3001: ok",
                                     ": 仓库编码不能为空。存货编码不能为空。金额不能为空。",
                                     "仓库编码：01， 存货编码：9001: 存货编码不合法。",
                                     "仓库编码：07， 存货编码：1001: 仓库编码不合法。",
                                     "仓库编码：08， 存货编码：1001: 该仓库没有设置计价方式。",
                                     "仓库编码：01， 存货编码：1002: 设置自由项的存货必须输入自由项。",
                                     "仓库编码：01， 存货编码：1003: 批次核算的存货未录入批号，不允许导入。",
                                     "仓库编码：01， 存货编码：1001: 不是批次管理的存货！",
                                     "仓库编码：01， 存货编码：1001: 入库日期必须小于本系统启用日期！",
                                     "仓库编码：03， 存货编码：1008: 请在存货目录中录入该存货的计划单价。",
                                     "仓库编码：03， 存货编码：1004: 计划价/售价法不允许导入数量为0的期初数据。",
                                     "仓库编码：06， 存货编码：1006: 跟踪型管理的存货不允许录入负数量。",
                                     "仓库编码：01， 存货编码：1001: Invalid column name 'cColour'."));

    const refhost::ResultSet stored = connection.database().Query(
        "SELECT iAInPrice, iDebitDifCost, iCreditDifCost FROM Ia_subsidiary WHERE cWhCode IN ('03', '04') ORDER BY "
        "AutoID");
    using host::Null;
    using host::Value;
    EXPECT_THAT(test::ValuesOf(stored),
                testing::ElementsAre(Value(25000.0), Value(300.0), Value(Null{}), Value(15200.0), Value(-200.0),
                                     Value(Null{}), Value(40800.0), Value(Null{}), Value(16200.0)));
}

} // namespace
