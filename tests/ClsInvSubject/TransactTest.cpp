#include "tests/ClsInvSubject/Fixture.h"
#include "tests/support/SettingsCases.h"

namespace test {
namespace {

using Transact = InventorySettings;
INSTANTIATE_TYPED_TEST_SUITE_P(ClsInvSubject, EverySetting, InventorySettings);

constexpr const char* row = "<row><cWhCode>01</cWhCode><cInvHead>1401</cInvHead></row>";

TEST_F(Transact, ImportsRowsIndependently) {
    const ImportRun run = Import("ADD", std::string(row) + "<row/><row><cWhCode>X</cWhCode><cInvHead>1401</cInvHead>"
                                                           "</row><row><cWhCode>02</cWhCode><cInvHead>1401</cInvHead>"
                                                           "</row>");
    EXPECT_EQ(run.result,
              ResultDocument(
                  "ADD", {{"仓库编码：01， ， ", 0, "ok"},
                          {"", 101,
                           "仓库编码、存货分类编码、存货编码三者必须输入其中之一。存货科目编码、差异科目编码、"
                           "分期收款发出商品科目编码、委托代销发出商品科目编码、直运科目编码五项必须输入其中之一。"},
                          {"仓库编码：X， ， ", 101, "仓库编码不合法。"},
                          {"仓库编码：02， ， ", 0, "ok"}}));
    EXPECT_EQ(Stored().size(), 2U);
}

} // namespace
} // namespace test
