// Several programs that import into one account of a server at once.

#include "tests/support/Program.h"
#include "tests/support/TdsServer.h"
#include "tests/support/TestAccount.h"

#include <list>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr int programs = 4;

class TogetherOnAServer : public testing::Test {
protected:
    /// Lets program after program begin with a request of its own, and expects that each accepts all of it.
    /// @param request gives the request of a program, counted from 0
    template <class Request> void Import(const std::string& className, const Request& request) {
        test::WriteBytes(account_.folder() / "login.xml",
                         "<login QxDbName=\"" + server_.ConnectionString() +
                             "\" cAcc_Id=\"001\" cIYear=\"2024\" cUserId=\"demo\" cUserName=\"王敏\" "
                             "cUserPassWord=\"\" CurDate=\"2024-01-15\" cServer=\"\" cSerial=\"\" iMonth=\"1\" "
                             "iStartPeriod=\"1\"/>");
        std::list<test::Program> running;
        for (int index = 0; index < programs; ++index) {
            const std::filesystem::path folder = account_.folder() / std::to_string(index);
            std::filesystem::create_directory(folder);
            test::WriteBytes(folder / "request.xml", request(index));
            running.emplace_back(folder,
                                 std::vector<std::string>{"transact", "--class", className, "--login", "../login.xml",
                                                          "--trace", "trace.jsonl", "request.xml"});
        }
        int index = 0;
        for (test::Program& program : running) {
            const test::Ended ended = program.Wait();
            EXPECT_EQ(ended.status, 0) << ended.output << ended.error;
            EXPECT_EQ(ended.output.find("code=\"999\""), std::string::npos) << ended.output;
            EXPECT_EQ(ended.output.find("code=\"101\""), std::string::npos) << ended.output;
            // What keeps a SQL Server's numbers apart; the database behind this server lets one write at a time anyway.
            EXPECT_NE(test::ReadBytes(account_.folder() / std::to_string(index++) / "trace.jsonl")
                          .find("WITH (UPDLOCK, HOLDLOCK)"),
                      std::string::npos);
        }
    }

    test::TestAccount account_{test::AccountContent::demo};
    test::TdsServer server_{account_.connectionString(), {}};
};

TEST_F(TogetherOnAServer, EveryProvisionGetsANumberOfItsOwn) {
    constexpr int each = 40;
    Import("ClsKovraProof", [](int program) {
        std::string request = "<qxinterface roottag=\"doc\" docid=\"r\" proc=\"ADD\">";
        for (int n = 0; n < each; ++n) {
            request += "<doc><header><Deccode>T" + std::to_string(program * each + n) +
                       "</Deccode><vouchtype>48</vouchtype></header><body><entry><cInvCode>1001</cInvCode></entry>"
                       "</body></doc>";
        }
        return request + "</qxinterface>";
    });
    EXPECT_EQ(account_.Rows("select count(*) as documents, count(distinct ID) as numbers from IA_DecReady where "
                            "cDecCode like 'T%'"),
              std::vector<std::string>{R"({"documents":160,"numbers":160})"});
}

/// The work table of price vouchers is one for the account: a second import waits until the first is through.
TEST_F(TogetherOnAServer, PriceVouchersWaitForEachOther) {
    Import("ClsPriceJustVou", [](int program) {
        return "<qxinterface roottag=\"voucher\" docid=\"r\" proc=\"ADD\"><voucher><header><ID>" +
               std::to_string(program) +
               "</ID><cMaker>李工</cMaker><cAccounter/><dCJVDate>2024-01-12</dCJVDate><cMemo>together</cMemo></header>"
               "<body><entry><cInvCode>1004</cInvCode><iCJVACost>26.5</iCJVACost></entry></body></voucher>"
               "</qxinterface>";
    });
    EXPECT_EQ(account_.Rows("select count(distinct ID) as ids, count(distinct cCode) as numbers from CostJustVouch "
                            "where cMemo = 'together'"),
              std::vector<std::string>{R"({"ids":4,"numbers":4})"});
    EXPECT_EQ(account_.Rows("select name from sysobjects where name like 'IA_tmp%'"), std::vector<std::string>{});
}

} // namespace
