#include "tests/ClsKovraProof/ProofFixture.h"
#include "tests/support/NameOfCase.h"

#include <cstdlib>
#include <fstream>

#include <gmock/gmock.h>

namespace {

using test::bodyTemplate;
using test::ExecuteLine;
using test::Failed;
using test::headTemplate;
using test::NumberLookup;
using test::TransactionLine;
using testing::ElementsAre;
using testing::IsEmpty;

/// A body row that passes every check.
const std::string goodRow = "<entry><cInvCode>1001</cInvCode><iThisPrice>12.5</iThisPrice></entry>";

const std::string begin = TransactionLine("BeginTrans");
const std::string commit = TransactionLine("CommitTrans");
const std::string rollback = TransactionLine("RollbackTrans");

class ProvisionImport : public test::ProofFixture {
protected:
    /// Puts a document with two rows into the account.
    void Store(int id, const std::string& number) {
        const std::string idText = std::to_string(id);
        account.Run("INSERT INTO IA_DecReady (ID, cDecCode) VALUES (" + idText + ", N'" + number + "')\nGO\n" +
                    "INSERT INTO IA_DecReadys (ID, cInvCode) VALUES (" + idText + ", N'old1')\nGO\n" +
                    "INSERT INTO IA_DecReadys (ID, cInvCode) VALUES (" + idText + ", N'old2')");
    }
    std::vector<std::string> Heads() const { return account.Rows("SELECT ID, cDecCode FROM IA_DecReady ORDER BY ID"); }
    std::vector<std::string> Bodies() const {
        return account.Rows("SELECT ID, cInvCode FROM IA_DecReadys ORDER BY AutoID");
    }
    /// Refuses one row under "ADD" with `key` and `message` and expects `statements`.
    void ExpectRefused(const std::string& row, const std::string& key, const std::string& message,
                       const std::vector<std::string>& statements) {
        const Outcome outcome = Transact(Request("ADD", row));
        EXPECT_EQ(outcome.result, Result("ADD", Item(key, 101, message)));
        EXPECT_EQ(outcome.statements, statements);
        EXPECT_THAT(Heads(), IsEmpty());
        EXPECT_THAT(Bodies(), IsEmpty());
    }
    /// The statements of a document D1 that is refused before its transaction.
    const std::vector<std::string> untilChecks = {NumberLookup("D1"), headTemplate, bodyTemplate};
    const std::vector<std::string> rolledBack = {NumberLookup("D1"), headTemplate, bodyTemplate, begin, rollback};
    const std::vector<std::string> saved = {NumberLookup("D1"), headTemplate, bodyTemplate, begin, commit};
};

TEST_F(ProvisionImport, SavesHeadAndRowsInOneTransaction) {
    const Outcome outcome = Transact(Request(
        "ADD", Doc("D1",
                   "<entry><cWhCode>01</cWhCode><cInvCode>1001</cInvCode><iQuantity>3</iQuantity>"
                   "<iThisPrice>12.5</iThisPrice></entry><entry><cInvCode>1002</cInvCode><iThisPrice/></entry>",
                   "<dDecDate>2023-01-15</dDecDate><cMemo>年末 &lt;A&amp;B&gt; 'x'</cMemo><unknown>u</unknown>")));
    EXPECT_EQ(outcome.result, Result("ADD", Item("D1", 0, "ok")));
    EXPECT_EQ(outcome.statements, saved);
    EXPECT_THAT(account.Rows("SELECT ID, cDecCode, cVouchType, dDecDate, cMemo, VT_ID, iprintcount, dVeriDate "
                             "FROM IA_DecReady"),
                ElementsAre(R"({"ID":1,"cDecCode":"D1","cVouchType":"48","dDecDate":"2023-01-15",)"
                            R"("cMemo":"年末 <A&B> 'x'","VT_ID":4801,"iprintcount":0,"dVeriDate":null})"));
    EXPECT_THAT(account.Rows("SELECT ID, cWhCode, cInvCode, iQuantity, iThisPrice FROM IA_DecReadys ORDER BY AutoID"),
                ElementsAre(R"({"ID":1,"cWhCode":"01","cInvCode":"1001","iQuantity":3,"iThisPrice":12.5})",
                            R"({"ID":1,"cWhCode":null,"cInvCode":"1002","iQuantity":null,"iThisPrice":null})"));
}

TEST_F(ProvisionImport, GivesEachDocumentItsOwnTransaction) {
    const Outcome outcome =
        Transact(Request("ADD", Doc("D1", goodRow) + "<doc/>" + Doc("D2", goodRow) + Doc("D1", goodRow)));
    EXPECT_EQ(outcome.result, Result("ADD", Item("D1", 0, "ok") + Item("", 101, "没有header节点") +
                                                Item("D2", 0, "ok") + Item("D1", 101, "单据号：D1已存在。")));
    EXPECT_THAT(outcome.statements,
                ElementsAre(NumberLookup("D1"), headTemplate, bodyTemplate, begin, commit, NumberLookup("D2"),
                            headTemplate, bodyTemplate, begin, commit, NumberLookup("D1")));
    EXPECT_THAT(Heads(), ElementsAre(R"({"ID":1,"cDecCode":"D1"})", R"({"ID":2,"cDecCode":"D2"})"));
}

TEST_F(ProvisionImport, RefusesARowWithoutHeader) { ExpectRefused("<doc><body/></doc>", "", "没有header节点", {}); }

TEST_F(ProvisionImport, RefusesAMissingOrEmptyNumber) {
    ExpectRefused("<doc><header/><body/></doc>", "", "单据号不能为空。", {});
    ExpectRefused("<doc><header><Deccode/></header><body/></doc>", "", "单据号不能为空。", {});
}

TEST_F(ProvisionImport, AddRefusesANumberThatExistsAndDeletesNothing) {
    Store(7, "D1");
    const Outcome outcome = Transact(Request("ADD", Doc("D1", goodRow)));
    EXPECT_EQ(outcome.result, Result("ADD", Item("D1", 101, "单据号：D1已存在。")));
    EXPECT_THAT(outcome.statements, ElementsAre(NumberLookup("D1")));
    EXPECT_THAT(Heads(), ElementsAre(R"({"ID":7,"cDecCode":"D1"})"));
    EXPECT_THAT(Bodies(), ElementsAre(R"({"ID":7,"cInvCode":"old1"})", R"({"ID":7,"cInvCode":"old2"})"));
}

TEST_F(ProvisionImport, EditReplacesADocument) {
    Store(7, "D1");
    Store(8, "D2");
    const Outcome outcome = Transact(Request("EDIT", Doc("D1", goodRow)));
    EXPECT_EQ(outcome.result, Result("EDIT", Item("D1", 0, "ok")));
    EXPECT_THAT(outcome.statements,
                ElementsAre(NumberLookup("D1"), ExecuteLine("Delete IA_DecReady Where cDecCode='D1'"),
                            ExecuteLine("Delete IA_DecReadys Where ID=7"), headTemplate, bodyTemplate, begin, commit));
    EXPECT_THAT(Heads(), ElementsAre(R"({"ID":8,"cDecCode":"D2"})", R"({"ID":9,"cDecCode":"D1"})"));
    EXPECT_THAT(Bodies(), ElementsAre(R"({"ID":8,"cInvCode":"old1"})", R"({"ID":8,"cInvCode":"old2"})",
                                      R"({"ID":9,"cInvCode":"1001"})"));
}

TEST_F(ProvisionImport, EditAddsADocumentOfANewNumber) {
    const Outcome outcome = Transact(Request("edit", Doc("D1", goodRow)));
    EXPECT_EQ(outcome.result, Result("edit", Item("D1", 0, "ok")));
    EXPECT_EQ(outcome.statements, saved);
}

TEST_F(ProvisionImport, EditDeletesTheRowsOfTheFirstDocumentOfTheNumberOnly) {
    Store(7, "D1");
    Store(8, "D1");
    Transact(Request("EDIT", Doc("D1", goodRow)));
    EXPECT_THAT(Heads(), ElementsAre(R"({"ID":1,"cDecCode":"D1"})"));
    EXPECT_THAT(Bodies(), ElementsAre(R"({"ID":8,"cInvCode":"old1"})", R"({"ID":8,"cInvCode":"old2"})",
                                      R"({"ID":1,"cInvCode":"1001"})"));
}

/// A document that is refused at one of the steps behind the deletes of "EDIT".
struct LateRefusal {
    const char* name;
    std::string row;
    const char* message;
};

class EditedAway : public ProvisionImport, public testing::WithParamInterface<LateRefusal> {};

TEST_P(EditedAway, StaysDeletedWhenTheNewDocumentIsRefused) {
    Store(7, "D1");
    const Outcome outcome = Transact(Request("EDIT", GetParam().row));
    EXPECT_EQ(outcome.result, Result("EDIT", Item("D1", 101, GetParam().message)));
    ASSERT_GE(outcome.statements.size(), 3U);
    EXPECT_EQ(outcome.statements[1], ExecuteLine("Delete IA_DecReady Where cDecCode='D1'"));
    EXPECT_EQ(outcome.statements[2], ExecuteLine("Delete IA_DecReadys Where ID=7"));
    EXPECT_THAT(Heads(), IsEmpty());
    EXPECT_THAT(Bodies(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Steps, EditedAway,
    testing::Values(LateRefusal{"NoBody", "<doc><header><Deccode>D1</Deccode></header></doc>", "没有body节点"},
                    LateRefusal{"WrongType",
                                "<doc><header><Deccode>D1</Deccode><vouchtype>49</vouchtype></header><body/></doc>",
                                "单据号为D1vouchtype单据类型节点值非法!"},
                    LateRefusal{"NoItem",
                                "<doc><header><Deccode>D1</Deccode><vouchtype>48</vouchtype></header>"
                                "<body><entry/></body></doc>",
                                "单据号为D1没有存货节点!"},
                    LateRefusal{"NotSaved",
                                "<doc><header><Deccode>D1</Deccode><vouchtype>48</vouchtype></header>"
                                "<body><entry><cInvCode>1001</cInvCode><iQuantity>x</iQuantity></entry></body></doc>",
                                "列iQuantity的值x不是数值。"}),
    test::nameOfCase);

TEST_F(ProvisionImport, RefusesARowWithoutBody) {
    ExpectRefused("<doc><header><Deccode>D1</Deccode><vouchtype>48</vouchtype></header></doc>", "D1", "没有body节点",
                  {NumberLookup("D1")});
}

TEST_F(ProvisionImport, RefusesAMissingVoucherType) {
    ExpectRefused("<doc><header><Deccode>D1</Deccode></header><body/></doc>", "D1",
                  "单据号为D1vouchtype单据类型节点不存在!", {NumberLookup("D1")});
}

TEST_F(ProvisionImport, RefusesAnotherVoucherType) {
    for (const char* type : {"49", "", " 48", "048"}) {
        ExpectRefused(std::string("<doc><header><Deccode>D1</Deccode><vouchtype>") + type +
                          "</vouchtype></header><body/></doc>",
                      "D1", "单据号为D1vouchtype单据类型节点值非法!", {NumberLookup("D1")});
    }
}

TEST_F(ProvisionImport, MarksTheHeadForTheVoucherComponent) {
    script.saveVoucher = [](std::string_view voucherType, host::DOMDocument& head, host::DOMDocument& body,
                            std::string&, host::DOMDocument&) {
        EXPECT_EQ(voucherType, "48");
        const host::DOMNodeList rows = head.SelectNodes("//z:row");
        ASSERT_EQ(rows.size(), 1U);
        EXPECT_EQ(rows[0]->GetAttribute("cDecCode"), "D1");
        EXPECT_EQ(rows[0]->GetAttribute("cVouchType"), "48");
        EXPECT_EQ(rows[0]->GetAttribute("bEai"), "1");
        EXPECT_EQ(rows[0]->GetAttribute("dVeriDate"), "");
        EXPECT_EQ(rows[0]->GetAttribute("iprintcount"), "0");
        EXPECT_EQ(rows[0]->GetAttribute("VT_ID"), "4801");
        EXPECT_EQ(body.SelectNodes("//z:row").size(), 1U);
        EXPECT_NE(head.SelectSingleNode("//s:AttributeType[@name='cpersonname']"), nullptr);
        EXPECT_NE(body.SelectSingleNode("//s:AttributeType[@name='cwhname']"), nullptr);
    };
    EXPECT_EQ(Transact(Request("ADD", Doc("D1", goodRow))).result, Result("ADD", Item("D1", 0, "ok")));
}

TEST_F(ProvisionImport, ReportsWhyTheVoucherComponentRefuses) {
    script.voucherInit = [](std::string& message) {
        message = "没有权限";
        return false;
    };
    ExpectRefused(Doc("D1", goodRow), "D1", "没有权限", untilChecks);
}

TEST_F(ProvisionImport, TakesARefusalWithoutReasonForSaved) {
    // Nothing has been begun, so nothing is committed.
    script.voucherInit = [](std::string&) { return false; };
    const Outcome outcome = Transact(Request("ADD", Doc("D1", goodRow)));
    EXPECT_EQ(outcome.result, Result("ADD", Item("D1", 0, "ok")));
    EXPECT_EQ(outcome.statements, untilChecks);
    EXPECT_THAT(Heads(), IsEmpty());
}

TEST_F(ProvisionImport, RefusesWithoutDefaultTemplate) {
    account.Run("Delete VoucherTemplates Where cVouchType='48'");
    ExpectRefused(Doc("D1", goodRow), "D1", "单据号为D1的取缺省模板时失败！", untilChecks);
}

TEST_F(ProvisionImport, RefusesAnEmptyTemplate) {
    script.getDefaultTemplate = [this](std::string_view, std::unique_ptr<host::Recordset>& found, std::string&) {
        test::ScriptedEnvironment environment(faults, script, nullptr);
        const auto connection = environment.CreateConnection();
        connection->Open(account.connectionString(), "", "", host::command_option::unspecified);
        found = environment.CreateRecordset();
        found->Open("Select VT_ID From VoucherTemplates Where 1=2", *connection, host::CursorType::openStatic,
                    host::LockType::readOnly, host::command_option::text);
        return true;
    };
    ExpectRefused(Doc("D1", goodRow), "D1", "单据号为D1的取缺省模板时失败！", untilChecks);
}

TEST_F(ProvisionImport, KeepsWhatTheTemplateLookUpSays) {
    script.getDefaultTemplate = [](std::string_view, std::unique_ptr<host::Recordset>&, std::string& message) {
        EXPECT_EQ(message, "单据号为D1");
        message = "模板已锁定";
        return false;
    };
    ExpectRefused(Doc("D1", goodRow), "D1", "模板已锁定的取缺省模板时失败！", untilChecks);
}

TEST_F(ProvisionImport, LooksAtTheTypeOfTheRecordBehindAMissingTemplate) {
    script.afterFillHead = [](host::DOMDocument& head) {
        std::string xml = head.Xml();
        const std::string attribute = " cVouchType=\"48\"";
        xml.erase(xml.find(attribute), attribute.size());
        ASSERT_TRUE(head.LoadXML(xml));
    };
    ExpectRefused(Doc("D1", goodRow), "D1", "单据号为D1的取缺省模板时失败！vouchtype单据类型节点不存在！", untilChecks);
    script.afterFillHead = [](host::DOMDocument& head) {
        head.SelectSingleNode("//z:row")->SetAttribute("cVouchType", "49");
    };
    ExpectRefused(Doc("D1", goodRow), "D1", "单据号为D1的取缺省模板时失败！vouchtype单据类型不合法！", untilChecks);
}

TEST_F(ProvisionImport, RefusesARecordOfAnotherTypeThatHasATemplate) {
    account.Run("INSERT INTO VoucherTemplates (VT_ID, cVouchType, bDefault) VALUES (4901, N'49', 1)");
    script.afterFillHead = [](host::DOMDocument& head) {
        head.SelectSingleNode("//z:row")->SetAttribute("cVouchType", "49");
    };
    ExpectRefused(Doc("D1", goodRow), "D1", "单据号为D1vouchtype单据类型不合法！", untilChecks);
}

TEST_F(ProvisionImport, ReportsWhyProvisionsMayNotBeMade) {
    account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 1, 1)");
    ExpectRefused(Doc("D1", goodRow), "D1", "单据号为D12023年1月已结账，不能录入跌价准备单。", untilChecks);
}

TEST_F(ProvisionImport, AsksForPermissionBeforeItLooksAtTheRows) {
    script.preCheck = [](std::string& message) {
        EXPECT_EQ(message, "");
        message = "：不行";
        return false;
    };
    ExpectRefused(Doc("D1", "<entry/>"), "D1", "单据号为D1：不行", untilChecks);
}

TEST_F(ProvisionImport, RefusesABodyRowWithoutItem) {
    ExpectRefused(Doc("D1", goodRow + "<entry><iThisPrice>1</iThisPrice></entry>"), "D1", "单据号为D1没有存货节点!",
                  untilChecks);
}

TEST_F(ProvisionImport, RefusesABodyRowWithAnEmptyItem) {
    ExpectRefused(Doc("D1", "<entry><cInvCode/><iThisPrice>abc</iThisPrice></entry>"), "D1",
                  "单据号为D1存货节点值为空!", untilChecks);
}

TEST_F(ProvisionImport, RefusesAProvisionThatIsNoNumber) {
    for (const char* provision : {"abc", "1.2.3", "12元", " "}) {
        ExpectRefused(Doc("D1", goodRow + "<entry><cInvCode>A'7</cInvCode><iThisPrice xml:space='preserve'>" +
                                    std::string(provision) + "</iThisPrice></entry>"),
                      "D1", "单据号为D1的存货编码为A'7跌价余额节点值不合法！", untilChecks);
    }
}

TEST_F(ProvisionImport, TakesAProvisionThatIsEmptyMissingOrANumber) {
    const Outcome outcome = Transact(Request(
        "ADD", Doc("D1", "<entry><cInvCode>1</cInvCode><iThisPrice/></entry><entry><cInvCode>2</cInvCode></entry>"
                         "<entry><cInvCode>3</cInvCode><iThisPrice>-1,234.50</iThisPrice></entry>"
                         "<entry><cInvCode>4</cInvCode><iThisPrice>1e2</iThisPrice></entry>")));
    EXPECT_EQ(outcome.result, Result("ADD", Item("D1", 0, "ok")));
    EXPECT_THAT(account.Rows("SELECT iThisPrice FROM IA_DecReadys ORDER BY AutoID"),
                ElementsAre(R"({"iThisPrice":null})", R"({"iThisPrice":null})", R"({"iThisPrice":-1234.5})",
                            R"({"iThisPrice":100})"));
}

TEST_F(ProvisionImport, SavesADocumentWithoutBodyRows) {
    const Outcome outcome = Transact(Request("ADD", Doc("D1", "")));
    EXPECT_EQ(outcome.result, Result("ADD", Item("D1", 0, "ok")));
    EXPECT_EQ(outcome.statements, saved);
    EXPECT_THAT(Heads(), ElementsAre(R"({"ID":1,"cDecCode":"D1"})"));
}

TEST_F(ProvisionImport, RollsBackWhatTheSaveRefuses) {
    script.saveVoucher = [](std::string_view, host::DOMDocument&, host::DOMDocument&, std::string& message,
                            host::DOMDocument& result) {
        EXPECT_EQ(message, "");
        message = "单据已锁定";
        // The component's own message wins over its check results.
        result.LoadXML(R"(<r xmlns:z="#RowsetSchema"><zeroout><z:row cinvcode="1"/></zeroout></r>)");
    };
    ExpectRefused(Doc("D1", goodRow), "D1", "单据已锁定", rolledBack);
}

TEST_F(ProvisionImport, RollsBackWhatIsBeyondTheStock) {
    account.Run("INSERT INTO CurrentStock (cWhCode, cInvCode, iQuantity) VALUES (N'01', N'1001', 5)\nGO\n"
                "INSERT INTO CurrentStock (cWhCode, cInvCode, iQuantity) VALUES (N'01', N'1002', 5)");
    ExpectRefused(Doc("D1", "<entry><cWhCode>01</cWhCode><cInvCode>1001</cInvCode><iQuantity>6</iQuantity></entry>"
                            "<entry><cWhCode>01</cWhCode><cInvCode>1003</cInvCode><iQuantity>99</iQuantity></entry>"
                            "<entry><cWhCode>01</cWhCode><cInvCode>1002</cInvCode><iQuantity>5.5</iQuantity></entry>"),
                  "D1", "存货1001现存量不足;存货1002现存量不足;", rolledBack);
}

TEST_F(ProvisionImport, RollsBackWhatIsBeyondTheBudget) {
    account.Run("INSERT INTO ItemBudget (cItem_class, cItemCode, iBudget) VALUES (N'97', N'P1', 10)");
    ExpectRefused(Doc("D1", "<entry><cInvCode>1001</cInvCode><iThisPrice>10.01</iThisPrice>"
                            "<cItem_class>97</cItem_class><cItemCode>P1</cItemCode></entry>"),
                  "D1", "存货[1001]项目预算检查失败;", rolledBack);
}

TEST_F(ProvisionImport, AnErrorInTheSaveStopsTheLoopAndLeavesTheTransaction) {
    int calls = 0;
    script.saveVoucher = [&calls](std::string_view, host::DOMDocument&, host::DOMDocument&, std::string&,
                                  host::DOMDocument&) {
        if (++calls == 2) {
            throw host::Error(-2147467259, "连接中断");
        }
    };
    const Outcome outcome = Transact(Request("ADD", Doc("D1", goodRow) + Doc("D2", goodRow) + Doc("D3", goodRow)));
    EXPECT_EQ(outcome.result, Result("ADD", Item("D1", 0, "ok") + Item("", 999, "连接中断")));
    EXPECT_THAT(outcome.statements, ElementsAre(NumberLookup("D1"), headTemplate, bodyTemplate, begin, commit,
                                                NumberLookup("D2"), headTemplate, bodyTemplate, begin));
}

TEST_F(ProvisionImport, WhatAnInterruptedSaveWroteGoesWithTheConnection) {
    faults.transaction = [](std::string_view operation) {
        if (operation == "CommitTrans") {
            throw host::Error(-2147467259, "连接中断");
        }
    };
    const Outcome outcome = Transact(Request("ADD", Doc("D1", goodRow) + Doc("D2", goodRow)));
    EXPECT_EQ(outcome.result, Result("ADD", Item("", 999, "连接中断")));
    EXPECT_THAT(outcome.statements,
                ElementsAre(NumberLookup("D1"), headTemplate, bodyTemplate, begin, Failed(commit, -2147467259)));
    EXPECT_THAT(Heads(), IsEmpty());
    EXPECT_THAT(Bodies(), IsEmpty());
}

TEST_F(ProvisionImport, AFailingStatementStopsTheLoop) {
    account.Run("DROP TABLE IA_DecReadys");
    const Outcome outcome = Transact(Request("ADD", "<doc/>" + Doc("D1", goodRow) + Doc("D2", goodRow)));
    EXPECT_EQ(outcome.result,
              Result("ADD", Item("", 101, "没有header节点") + Item("", 999, "Invalid object name 'ia_decreadys'.")));
    EXPECT_THAT(outcome.statements, ElementsAre(NumberLookup("D1"), headTemplate, Failed(bodyTemplate, -2147217865)));
}

TEST_F(ProvisionImport, ABrokenMappingFileStopsTheLoop) {
    std::ofstream(account.folder() / "EaiProof.Xml") << "<mapping/>";
    setenv("KOVRA_MAPPINGS", account.folder().c_str(), 1);
    const Outcome outcome = Transact(Request("ADD", Doc("D1", goodRow) + Doc("D2", goodRow)));
    unsetenv("KOVRA_MAPPINGS");
    EXPECT_EQ(outcome.result, Result("ADD", Item("", 999, "映射文件EaiProof.Xml无效：应有且只有一个元素head。")));
    EXPECT_EQ(outcome.statements, untilChecks);
}

TEST_F(ProvisionImport, SplicesTheNumberAsItStands) {
    const Outcome outcome = Transact(Request("ADD", Doc("D'1", goodRow)));
    EXPECT_THAT(outcome.statements, ElementsAre(Failed(NumberLookup("D'1"), -2147217900)));
    EXPECT_THAT(outcome.result, testing::StartsWith(R"(<qxinterface docid="r1" proc="ADD"><item key="" code="999")"));
}

TEST_F(ProvisionImport, ADocumentWithoutHeadRecordStopsTheLoop) {
    script.afterFillHead = [](host::DOMDocument& head) { head.LoadXML("<xml/>"); };
    const Outcome outcome = Transact(Request("ADD", Doc("D1", goodRow)));
    EXPECT_EQ(outcome.result, Result("ADD", Item("", 999, "对象变量或 With 块变量未设置")));
    EXPECT_EQ(outcome.statements, untilChecks);
}

TEST_F(ProvisionImport, OffersNoOtherOperation) {
    for (const char* proc : {"EMPTY", "Delete", ""}) {
        const Outcome outcome = Transact(Request(proc, Doc("D1", goodRow)));
        EXPECT_EQ(outcome.result, R"(<error code="710" dsc="本模块暂不提供此功能！"/>)");
        EXPECT_THAT(outcome.statements, IsEmpty());
    }
}

TEST_F(ProvisionImport, AnswersARequestWithoutRows) {
    const Outcome outcome = Transact(Request("add", "<other/>"));
    EXPECT_EQ(outcome.result, R"(<qxinterface docid="r1" proc="add"/>)");
    EXPECT_THAT(outcome.statements, IsEmpty());
}

TEST_F(ProvisionImport, RefusesWhatIsNoXml) {
    const Outcome outcome = Transact("<qxinterface");
    EXPECT_EQ(outcome.result, R"(<error code="100" dsc="解析XML时发生错误,请你检查XML参数格式"/>)");
    EXPECT_THAT(outcome.statements, IsEmpty());
}

} // namespace
