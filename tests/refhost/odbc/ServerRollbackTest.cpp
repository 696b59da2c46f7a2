// SQL Server ends the whole transaction itself after some errors. What becomes of it here, on the real FreeTDS driver.

#include "ClsKovraProof/ClsKovraProof.h"
#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "host/Error.h"
#include "refhost/Environment.h"
#include "refhost/eai/Login.h"
#include "refhost/odbc/OdbcDatabase.h"
#include "tests/support/TdsServer.h"
#include "tests/support/TestAccount.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr std::string_view noDate = "Conversion failed when converting date and/or time from character string.";
constexpr std::string_view deadlock =
    "Transaction (Process ID 52) was deadlocked on lock resources with another process and has been chosen as the "
    "deadlock victim. Rerun the transaction.";

/// A request of one price voucher.
/// @param more further elements of its entry
std::string PriceRequest(std::string_view id, std::string_view accounter, std::string_view more = {}) {
    return "<qxinterface roottag=\"voucher\" docid=\"r1\" proc=\"ADD\"><voucher><header><ID>" + std::string(id) +
           "</ID><cMaker>李工</cMaker><cAccounter>" + std::string(accounter) +
           "</cAccounter><dCJVDate>2024-01-12</dCJVDate><cMemo/></header><body><entry><cInvCode>1004</cInvCode>" +
           std::string(more) + "<iCJVACost>26.5</iCJVACost></entry></body></voucher></qxinterface>";
}

class ServerRollback : public testing::Test {
protected:
    std::unique_ptr<refhost::Database> Open() const { return refhost::odbc::OpenOdbc(server_.ConnectionString()); }

    /// The description of the error that `action` raises.
    template <class Action> static std::string Raised(const Action& action) {
        try {
            action();
        } catch (const host::Error& error) {
            return error.description();
        }
        return "no error";
    }

    /// Begins a transaction that the server then ends with an error of conversion.
    static void LoseTransaction(refhost::Database& database) {
        database.BeginTrans();
        database.Execute("insert into t (a) values (1)");
        EXPECT_EQ(Raised([&] { database.Execute("insert into t (d) values ('no date')"); }), noDate);
    }

    template <class Class> std::string Transact(std::string_view request) const {
        return TransactOn<Class>(server_, request);
    }
    template <class Class> static std::string TransactOn(const test::TdsServer& server, std::string_view request) {
        refhost::Environment environment;
        refhost::Login login("<login QxDbName=\"" + server.ConnectionString() +
                                 "\" cAcc_Id=\"001\" cIYear=\"2024\" cUserId=\"demo\" cUserName=\"王敏\" "
                                 "cUserPassWord=\"\" CurDate=\"2024-01-15\" cServer=\"\" cSerial=\"\" iMonth=\"1\" "
                                 "iStartPeriod=\"1\"/>",
                             environment);
        Class instance(environment);
        return instance.Transact(request, &login);
    }

    /// Imports the provisions D1 to D3, of which the first has a date that is none.
    /// @param rest what a provision has of its date: from inside its header to inside its body
    template <class Rest> void ExpectTheFirstRefused(const Rest& rest) const {
        std::string request = "<qxinterface roottag=\"doc\" docid=\"r1\" proc=\"ADD\">";
        for (const auto& [number, date] : {std::pair{"D1", "someday"}, {"D2", "2024-01-15"}, {"D3", "2024-01-16"}}) {
            request += "<doc><header><Deccode>" + std::string(number) + "</Deccode><vouchtype>48</vouchtype>" +
                       rest(date) + "</body></doc>";
        }
        EXPECT_EQ(Transact<kovra::ClsKovraProof>(request + "</qxinterface>"),
                  "<qxinterface docid=\"r1\" proc=\"ADD\"><item key=\"D1\" code=\"101\" dsc=\"" + std::string(noDate) +
                      "\"/><item key=\"D2\" code=\"0\" dsc=\"ok\"/><item key=\"D3\" code=\"0\" dsc=\"ok\"/>"
                      "</qxinterface>");
    }

    test::TestAccount account_{test::AccountContent::demo};
    test::TdsServer server_{account_.connectionString(), {}};
};

TEST_F(ServerRollback, IsASuccessToRollBackAndLeavesTheConnectionInAutocommit) {
    account_.Run("create table t (a int, d datetime)");
    const auto database = Open();
    LoseTransaction(*database);
    database->RollbackTrans();
    EXPECT_EQ(account_.Rows("select a from t"), std::vector<std::string>{});

    database->Execute("insert into t (a) values (2)");
    EXPECT_EQ(account_.Rows("select a from t"), std::vector<std::string>{R"({"a":2})"});
    database->BeginTrans();
    database->Execute("insert into t (a) values (3)");
    database->CommitTrans();
    EXPECT_EQ(account_.Rows("select count(*) as n from t"), std::vector<std::string>{R"({"n":2})"});
}

TEST_F(ServerRollback, MakesACommitFailWithTheErrorThatDidIt) {
    account_.Run("create table t (a int, d datetime)");
    const auto database = Open();
    LoseTransaction(*database);
    EXPECT_EQ(Raised([&] { database->CommitTrans(); }),
              "The server has rolled the transaction back after this error: " + std::string(noDate));
    database->RollbackTrans();
    EXPECT_EQ(account_.Rows("select a from t"), std::vector<std::string>{});
    database->BeginTrans();
    database->CommitTrans();
}

TEST_F(ServerRollback, LetsNothingMoreInThatWouldBeCommittedAtOnce) {
    account_.Run("create table t (a int, d datetime)");
    const auto database = Open();
    LoseTransaction(*database);
    EXPECT_EQ(Raised([&] { database->Execute("insert into t (a) values (4)"); }),
              "The server has rolled the transaction back after this error: " + std::string(noDate));
    database->RollbackTrans();
    EXPECT_EQ(account_.Rows("select a from t"), std::vector<std::string>{});
}

TEST_F(ServerRollback, IsNotSupposedAfterAnErrorThatKeepsTheTransaction) {
    account_.Run("create table t (a int not null primary key)");
    const auto database = Open();
    database->BeginTrans();
    database->Execute("insert into t (a) values (1)");
    EXPECT_NE(Raised([&] { database->Execute("insert into t (a) values (1)"); }), "no error");
    database->Execute("insert into t (a) values (2)");
    database->CommitTrans();
    EXPECT_EQ(account_.Rows("select count(*) as n from t"), std::vector<std::string>{R"({"n":2})"});
}

TEST_F(ServerRollback, EndsWithTheConnectionThatIsReleased) {
    account_.Run("create table t (a int, d datetime)");
    {
        const auto database = Open();
        LoseTransaction(*database);
    }
    EXPECT_EQ(account_.Rows("select a from t"), std::vector<std::string>{});
}

TEST_F(ServerRollback, RefusesOneProvisionWithItsOwnErrorAndLetsTheNextOnesGoOn) {
    ExpectTheFirstRefused([](std::string_view date) {
        return "<dDecDate>" + std::string(date) + "</dDecDate></header><body><entry><cInvCode>1001</cInvCode></entry>";
    });
    EXPECT_EQ(account_.Rows("select cDecCode from IA_DecReady where cDecCode like 'D_' order by cDecCode"),
              (std::vector<std::string>{R"({"cDecCode":"D2"})", R"({"cDecCode":"D3"})"}));
}

TEST_F(ServerRollback, StopsAPriceVoucherWithItsOwnErrorAndLetsTheNextRequestsGoOn) {
    // A free item whose text becomes a comparison of text and number.
    const std::string refused = Transact<kovra::ClsPriceJustVou>(
        PriceRequest("P1", "", "<cFree1>' or cInvCode = 7 or cast('x' as int) = 1 or cFree1 = '</cFree1>"));
    const std::string error = "Conversion failed when converting the varchar value 'x' to data type int.";
    EXPECT_NE(refused.find("key=\"-2147217913\" code=\"999\" dsc=\"" + error + "\""), std::string::npos) << refused;
    EXPECT_NE(refused.find("key=\"产生未知异常，导入失败！\" code=\"999\" dsc=\"The server has rolled the transaction "
                           "back after this error: " +
                           error + "\""),
              std::string::npos)
        << refused;
    EXPECT_EQ(account_.Rows("select name from sysobjects where name like 'IA_tmp%'"), std::vector<std::string>{});

    for (const std::string_view id : {"P2", "P3"}) {
        EXPECT_EQ(Transact<kovra::ClsPriceJustVou>(PriceRequest(id, "")),
                  "<qxinterface docid=\"r1\" proc=\"ADD\"><item key=\"单据" + std::string(id) +
                      "\" code=\"0\" dsc=\"成功导入：\"/></qxinterface>");
    }
    EXPECT_EQ(account_.Rows("select count(*) as n from CostJustVouch where dCJVDate = '2024-01-12'"),
              std::vector<std::string>{R"({"n":2})"});
}

/// The rows come behind a head that is written already, and goes with them.
TEST_F(ServerRollback, OfAProvisionsRowsTakesItsHeadWithIt) {
    ExpectTheFirstRefused([](std::string_view date) {
        return "</header><body><entry><cInvCode>1001</cInvCode></entry><entry><cInvCode>1002</cInvCode><cDefine36>" +
               std::string(date) + "</cDefine36></entry>";
    });
    EXPECT_EQ(account_.Rows("select H.cDecCode, count(*) as n from IA_DecReady H join IA_DecReadys B on B.ID = H.ID "
                            "where H.cDecCode like 'D_' group by H.cDecCode order by H.cDecCode"),
              (std::vector<std::string>{R"({"cDecCode":"D2","n":2})", R"({"cDecCode":"D3","n":2})"}));
    EXPECT_EQ(account_.Rows("select ID from IA_DecReadys where ID not in (select ID from IA_DecReady)"),
              std::vector<std::string>{});
}

TEST_F(ServerRollback, ByADeadlockRefusesOneProvisionAndLetsTheNextOneGoOn) {
    const test::TdsServer server(account_.connectionString(), {.deadlockAt = "'1002'"});
    const auto document = [](std::string_view number, std::string_view item) {
        return "<doc><header><Deccode>" + std::string(number) +
               "</Deccode><vouchtype>48</vouchtype></header><body><entry><cInvCode>" + std::string(item) +
               "</cInvCode></entry></body></doc>";
    };
    EXPECT_EQ(TransactOn<kovra::ClsKovraProof>(server, "<qxinterface roottag=\"doc\" docid=\"r1\" proc=\"ADD\">" +
                                                           document("D1", "1002") + document("D2", "1001") +
                                                           "</qxinterface>"),
              "<qxinterface docid=\"r1\" proc=\"ADD\"><item key=\"D1\" code=\"101\" dsc=\"" + std::string(deadlock) +
                  "\"/><item key=\"D2\" code=\"0\" dsc=\"ok\"/></qxinterface>");
    EXPECT_EQ(account_.Rows("select cDecCode from IA_DecReady where cDecCode like 'D_'"),
              std::vector<std::string>{R"({"cDecCode":"D2"})"});
}

/// Where a voucher's rows are written, and where it is posted: the component cannot go back to where it began, and what
/// the request wrote is gone. The commit tells so.
TEST_F(ServerRollback, InAPriceVouchersSavingOrPostingIsToldByTheCommitThatFails) {
    const std::string before = account_.Rows("select count(*) as n from Ia_subsidiary").at(0);
    for (const char* const statement :
         {"INSERT INTO CostJustVouchs", "UPDATE I SET iInvRCost", "INSERT INTO Ia_subsidiary"}) {
        const test::TdsServer server(account_.connectionString(), {.deadlockAt = statement});
        const std::string result = TransactOn<kovra::ClsPriceJustVou>(server, PriceRequest("P1", "李工"));
        EXPECT_NE(result.find("code=\"999\" dsc=\"" + std::string(deadlock) + "\""), std::string::npos) << result;
        EXPECT_NE(
            result.find("key=\"产生未知异常，导入失败！\" code=\"999\" dsc=\"The server has rolled the transaction "
                        "back after this error: " +
                        std::string(deadlock) + "\""),
            std::string::npos)
            << statement << '\n'
            << result;
        EXPECT_EQ(account_.Rows("select ID from CostJustVouch where dCJVDate = '2024-01-12'"),
                  std::vector<std::string>{})
            << statement;
        EXPECT_EQ(account_.Rows("select ID from CostJustVouchs where ID not in (select ID from CostJustVouch)"),
                  std::vector<std::string>{})
            << statement;
        EXPECT_EQ(account_.Rows("select iInvRCost from inventory where cInvCode = '1004' and iInvRCost = 26.5"),
                  std::vector<std::string>{})
            << statement;
        EXPECT_EQ(account_.Rows("select count(*) as n from Ia_subsidiary").at(0), before) << statement;
        EXPECT_EQ(account_.Rows("select name from sysobjects where name like 'IA_tmp%'"), std::vector<std::string>{});
    }
    EXPECT_NE(Transact<kovra::ClsPriceJustVou>(PriceRequest("P2", "李工")).find("code=\"0\""), std::string::npos);
}

} // namespace
