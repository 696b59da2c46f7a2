#include "tests/ClsKovraProof/ProofFixture.h"

#include <gmock/gmock.h>

namespace {

using testing::IsEmpty;

/// A login that notes how it is asked.
class NotingLogin : public host::HostLogin {
public:
    explicit NotingLogin(std::string connectionString) : connectionString_(std::move(connectionString)) {}

    host::Value Member(std::string_view name) const override {
        asked.emplace_back(name);
        if (name == missing) {
            throw host::Error(host::error_number::noSuchMember, "对象不支持该属性或方法");
        }
        if (name == "QxDbName") {
            return connectionString_;
        }
        return name == "cIYear" ? host::Value(2023) : host::Value("<" + std::string(name) + ">");
    }
    bool SubsystemLogin(const std::string& subsystemId, const std::string& accountId, const std::string& year,
                        const std::string& userId, const std::string& password, const std::string& date,
                        const std::string& server, const std::string& serial) override {
        logins.push_back({subsystemId, accountId, year, userId, password, date, server, serial});
        if (fails) {
            throw host::Error(-2147220991, "许可证已用完");
        }
        return false;
    }
    std::string LoginYear() const override { return "2023"; }
    std::string ConnectionString() const override { return connectionString_; }
    std::string AccountId() const override { return "001"; }
    std::string UserName() const override { return ""; }
    host::Value CurrentDate() const override { return "2023-01-15"; }
    int AccountingMonth() const override { return 1; }
    int StartPeriod() const override { return 1; }
    PeriodRange PeriodDates(int, int) override { return {}; }

    mutable std::vector<std::string> asked;
    std::vector<std::vector<std::string>> logins;
    std::string missing;
    bool fails = false;

private:
    std::string connectionString_;
};

using SubsystemLogin = test::ProofFixture;

TEST_F(SubsystemLogin, HandsTheLoginsMembersOnInTheirOrderAndGoesOnWhateverTheAnswer) {
    NotingLogin login(account.connectionString());
    EXPECT_EQ(Transact(Request("ADD", "<doc/>"), login).result, Result("ADD", Item("", 101, "没有header节点")));
    EXPECT_THAT(login.asked, testing::ElementsAre("QxDbName", "cAcc_Id", "cIYear", "cUserId", "cUserPassWord",
                                                  "CurDate", "cServer", "cSerial"));
    ASSERT_EQ(login.logins.size(), 1U);
    EXPECT_THAT(login.logins[0], testing::ElementsAre("IA", "<cAcc_Id>", "2023", "<cUserId>", "<cUserPassWord>",
                                                      "<CurDate>", "<cServer>", "<cSerial>"));
}

TEST_F(SubsystemLogin, AnErrorInItEndsTheRequest) {
    NotingLogin login(account.connectionString());
    login.fails = true;
    const Outcome outcome = Transact(Request("ADD", "<doc/>"), login);
    EXPECT_EQ(outcome.result, R"(<error code="-2147220991" dsc="许可证已用完"/>)");
    EXPECT_THAT(outcome.statements, IsEmpty());
}

TEST_F(SubsystemLogin, AMissingMemberEndsTheRequestBeforeIt) {
    NotingLogin login(account.connectionString());
    login.missing = "cSerial";
    EXPECT_EQ(Transact(Request("ADD", "<doc/>"), login).result, R"(<error code="438" dsc="对象不支持该属性或方法"/>)");
    EXPECT_THAT(login.logins, IsEmpty());
}

TEST_F(SubsystemLogin, ComesBeforeTheRequestIsRead) {
    NotingLogin login(account.connectionString());
    login.fails = true;
    EXPECT_EQ(Transact("<no xml", login).result, R"(<error code="-2147220991" dsc="许可证已用完"/>)");
}

TEST_F(SubsystemLogin, ComesAfterTheConnectionIsOpen) {
    NotingLogin login("Provider=Unknown");
    EXPECT_THAT(Transact(Request("ADD", "<doc/>"), login).result, testing::StartsWith(R"(<error code="3706")"));
    EXPECT_THAT(login.logins, IsEmpty());
}

} // namespace
