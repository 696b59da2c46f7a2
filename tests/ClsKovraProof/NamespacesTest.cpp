// Documents whose namespaces are declared above them.
#include "ClsKovraProof/ClsKovraProof.h"
#include "tests/support/Import.h"

#include <gmock/gmock.h>

namespace {

using test::Import;
using testing::ElementsAre;

constexpr const char* fields =
    "<header><Deccode>P1</Deccode><vouchtype>48</vouchtype><cMemo xsi:nil=\"true\"/></header>"
    "<body><entry><cInvCode>1001</cInvCode><iThisPrice xsi:nil=\"true\"/></entry></body>";

std::string Request(const std::string& proc, const std::string& tag) {
    return "<qxinterface xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xmlns:x=\"urn:x\" roottag=\"" + tag +
           "\" docid=\"D\" proc=\"" + proc + "\"><" + tag + ">" + fields + "</" + tag + "></qxinterface>";
}

constexpr const char* saved = R"(<qxinterface docid="D" proc="ADD"><item key="P1" code="0" dsc="ok"/></qxinterface>)";
constexpr const char* rows = "select H.cDecCode, B.cInvCode from IA_DecReady H join IA_DecReadys B on B.ID = H.ID";

TEST(ProvisionNamespaces, DeclaredAboveTheDocument) {
    const test::TestAccount account;
    EXPECT_EQ(Import<kovra::ClsKovraProof>(account, Request("ADD", "p"), account.LoginXml()).result, saved);
    EXPECT_THAT(account.Rows(rows), ElementsAre(R"({"cDecCode":"P1","cInvCode":"1001"})"));
}

TEST(ProvisionNamespaces, OfTheRowTag) {
    const test::TestAccount account;
    EXPECT_EQ(Import<kovra::ClsKovraProof>(account, Request("ADD", "x:p"), account.LoginXml()).result, saved);
    EXPECT_THAT(account.Rows(rows), ElementsAre(R"({"cDecCode":"P1","cInvCode":"1001"})"));
}

TEST(ProvisionNamespaces, AreNoReasonToLoseTheOldDocument) {
    const test::TestAccount account;
    account.Run("INSERT INTO IA_DecReady (ID, cDecCode) VALUES (7, N'P1')\nGO\n"
                "INSERT INTO IA_DecReadys (ID, cInvCode) VALUES (7, N'old')");
    EXPECT_EQ(Import<kovra::ClsKovraProof>(account, Request("EDIT", "p"), account.LoginXml()).result,
              R"(<qxinterface docid="D" proc="EDIT"><item key="P1" code="0" dsc="ok"/></qxinterface>)");
    EXPECT_THAT(account.Rows(rows), ElementsAre(R"({"cDecCode":"P1","cInvCode":"1001"})"));
}

} // namespace
