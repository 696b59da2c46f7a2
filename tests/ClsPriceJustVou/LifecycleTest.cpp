#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "host/Error.h"
#include "refhost/eai/Login.h"
#include "tests/ClsPriceJustVou/PriceAccount.h"
#include "tests/support/ErrorOf.h"

#include <csignal>
#include <optional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using test::Entry;
using test::PriceAccount;
using test::Request;
using testing::ElementsAre;
using testing::IsEmpty;

/// Two calls of one instance over one account.
class Instance {
public:
    explicit Instance(const PriceAccount& account)
        : login_(account.LoginXml(), environment_), instance_(environment_) {}

    kovra::ClsPriceJustVou& operator*() { return instance_; }
    kovra::ClsPriceJustVou* operator->() { return &instance_; }
    std::string Transact(const std::string& request) { return instance_.Transact(request, &login_); }

private:
    refhost::Environment environment_;
    refhost::Login login_;
    kovra::ClsPriceJustVou instance_;
};

TEST(Initialiser, LetsTheCompanionsErrorOut) {
    class WithoutCompanion : public refhost::Environment {
    public:
        std::unique_ptr<host::ZendaT> CreateZendaT() override {
            throw host::Error(host::error_number::cannotCreateObject, "ActiveX 部件不能创建对象");
        }
        std::unique_ptr<host::Recordset> CreateRecordset() override {
            ADD_FAILURE() << "The recordset comes after the companion.";
            return refhost::Environment::CreateRecordset();
        }
    } environment;
    EXPECT_EQ(test::ErrorNumberOf([&] { const kovra::ClsPriceJustVou instance(environment); }), 429);
}

TEST(Transact, TellsItsOwnTexts) {
    const PriceAccount account;
    EXPECT_EQ(Instance(account).Transact("<a"), R"(<error code="100" dsc="解析XML时发生错误，请检查XML参数格式"/>)");
    for (const char* proc : {"EDIT", "Edit", "edit", "DELETE", ""}) {
        EXPECT_EQ(Instance(account).Transact(Request({}, proc)), R"(<error code="710" dsc="本模块暂不提供此功能"/>)")
            << proc;
    }
    for (const char* proc : {"EMPTY", "Empty"}) {
        EXPECT_EQ(Instance(account).Transact(Request({}, proc)), "") << proc;
    }
    EXPECT_EQ(Instance(account).Transact(Request({}, "add")), R"(<qxinterface docid="J1" proc="add"/>)");
}

TEST(Transact, ServesOneCallAnInstance) {
    const PriceAccount account;
    Instance instance(account);
    EXPECT_EQ(instance.Transact(Request({}, "EMPTY")), "");
    EXPECT_EQ(instance.Transact(Request({}, "EMPTY")),
              R"(<error code="3705" dsc="Operation is not allowed when the object is open."/>)");
}

TEST(Transact, NoLoginIsAnErrorResult) {
    refhost::Environment environment;
    kovra::ClsPriceJustVou instance(environment);
    EXPECT_EQ(instance.Transact(Request({}), nullptr), R"(<error code="91" dsc="对象变量或 With 块变量未设置"/>)");
}

TEST(GetStartEndDate, GivesTheMonthsDays) {
    const PriceAccount account;
    Instance instance(account);
    instance.Transact(Request({}, "EMPTY"));
    host::Value first;
    host::Value last;
    EXPECT_TRUE(instance->GetStartEndDate(1, 2023, &first, &last));
    EXPECT_EQ(first, host::Value("2023-01-01"));
    EXPECT_EQ(last, host::Value("2023-01-30"));
}

TEST(GetStartEndDate, TakesAbsentArguments) {
    const PriceAccount account;
    Instance instance(account);
    instance.Transact(Request({}, "EMPTY"));
    EXPECT_TRUE(instance->GetStartEndDate(1, 2023));
    host::Value last;
    EXPECT_TRUE(instance->GetStartEndDate(1, 2023, nullptr, &last));
    EXPECT_EQ(last, host::Value("2023-01-30"));
}

TEST(GetStartEndDate, LeavesArgumentsAloneForAnUnknownMonth) {
    const PriceAccount account;
    Instance instance(account);
    instance.Transact(Request({}, "EMPTY"));
    host::Value first("before");
    host::Value last(5);
    EXPECT_FALSE(instance->GetStartEndDate(12, 2023, &first, &last));
    EXPECT_EQ(first, host::Value("before"));
    EXPECT_EQ(last, host::Value(5));
}

TEST(GetStartEndDate, SendsItsQuery) {
    PriceAccount account;
    account.Import(Request({{.entries = Entry("1004", "26.5")}}));
    EXPECT_THAT(account.statements(),
                testing::Contains("Select dBegin,dEnd from QxSystem..UA_Period with (nolock) where cAcc_ID= N'001' and "
                                  "iYear=2023 and iID=1"));
}

TEST(GetStartEndDate, RaisesBeforeACallAndForAFailingQuery) {
    PriceAccount account;
    Instance instance(account);
    EXPECT_EQ(test::ErrorNumberOf([&] { instance->GetStartEndDate(1, 2023); }), 91);
    instance.Transact(Request({}, "EMPTY"));
    account.Run("DROP TABLE QxSystem..UA_Period");
    EXPECT_EQ(test::ErrorNumberOf([&] { instance->GetStartEndDate(1, 2023); }), host::error_number::noTable);
}

/// Kills the process at a statement that holds the piece, as a power cut would.
class KilledAt : public testing::TestWithParam<const char*> {};

TEST_P(KilledAt, DatabaseHoldsNothingOfTheRequest) {
    PriceAccount account;
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        account.faults.statement = [](std::string_view sql) {
            if (sql.find(GetParam()) != std::string_view::npos) {
                raise(SIGKILL);
            }
        };
        account.Import(Request({{.cAccounter = "王会计", .entries = Entry("1004", "26.5")}}));
        _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "The request went through.";
    EXPECT_EQ(WTERMSIG(status), SIGKILL);

    EXPECT_THAT(account.WorkTables(), IsEmpty());
    EXPECT_THAT(account.Rows("SELECT ID FROM CostJustVouch"), IsEmpty());
    EXPECT_THAT(account.Rows("SELECT ID FROM CostJustVouchs"), IsEmpty());
    EXPECT_THAT(account.Rows("SELECT AutoID FROM Ia_subsidiary WHERE cVouType = N'22'"), IsEmpty());
    EXPECT_THAT(account.Rows("SELECT iInvRCost FROM inventory WHERE cInvCode = N'1004'"),
                ElementsAre(R"({"iInvRCost":25})"));
    EXPECT_THAT(test::Outcomes(account.Import(Request({{.entries = Entry("1004", "26.5")}}))),
                ElementsAre(test::Outcome{"单据P1", "0", "成功导入："}));
}

INSTANTIATE_TEST_SUITE_P(Statement, KilledAt,
                         testing::Values("select count(cInvCode)", "select '' as AutoId", "UPDATE P SET fInvRCost",
                                         "SELECT MAX(AutoID)", "SET cAccounter"));

} // namespace
