// The login object of KovraHost.dll, as scripts and Kovra.dll use it.
#include "tests/support/com/ExpectError.h"
#include "tests/support/com/HostFixture.h"

#include <utility>

namespace {

using server::DispatchObject;
using server::VariantHolder;
using test::ExpectError;

constexpr std::string_view noSuchMember = "对象不支持该属性或方法";
constexpr std::string_view complete =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?><login QxDbName=\"Provider=P;Data Source=D\" cAcc_Id=\"001\" "
    "cIYear=\"2024\" cUserId=\"demo\" cUserName=\"王敏\" cUserPassWord=\"pw\" CurDate=\"2024-01-15\" "
    "cServer=\"localhost\" cSerial=\"S1\" iMonth=\"3\" iStartPeriod=\"12\" other=\"x\"/>";

class HostLogin : public test::HostTest {
protected:
    static std::string Read(const DispatchObject& login, const wchar_t* member) {
        return server::ToText(login.Get(member).Get());
    }
};

} // namespace

TEST_F(HostLogin, OffersItsAttributesAsMembers) {
    const DispatchObject login = test::Login(complete);
    const std::pair<const wchar_t*, const char*> members[] = {
        {L"QxDbName", "Provider=P;Data Source=D"},
        {L"cAcc_Id", "001"},
        {L"cIYear", "2024"},
        {L"cUserId", "demo"},
        {L"cUserName", "王敏"},
        {L"cUserPassWord", "pw"},
        {L"CurDate", "2024-01-15"},
        {L"cServer", "localhost"},
        {L"cSerial", "S1"},
        {L"iMonth", "3"},
        {L"iStartPeriod", "12"},
        {L"LoginYear", "2024"},
        {L"ConnectionString", "Provider=P;Data Source=D"},
        {L"AccountId", "001"},
        {L"UserName", "王敏"},
        {L"CurrentDate", "2024-01-15"},
        {L"AccountingMonth", "3"},
        {L"StartPeriod", "12"},
    };
    for (const auto& [member, value] : members)
        EXPECT_EQ(Read(login, member), value);
    EXPECT_EQ(V_VT(&login.Get(L"iMonth").Get()), VT_BSTR);
    EXPECT_EQ(V_VT(&login.Get(L"AccountingMonth").Get()), VT_I4);
    EXPECT_EQ(Read(login, L"CACC_ID"), "001") << "letter case does not count";
    ExpectError(438, noSuchMember, [&] { login.Get(L"other"); });
}

TEST_F(HostLogin, MissingMembersRaiseWhenTheyAreRead) {
    for (const DispatchObject& login : {test::Login("<login/>"), Make(L"KovraHost.Login")}) {
        for (const wchar_t* member :
             {L"QxDbName", L"cAcc_Id", L"cIYear", L"cUserId", L"cUserName", L"cUserPassWord", L"CurDate", L"cServer",
              L"cSerial", L"iMonth", L"iStartPeriod", L"LoginYear", L"ConnectionString", L"AccountId", L"UserName",
              L"CurrentDate", L"AccountingMonth", L"StartPeriod"})
            ExpectError(438, noSuchMember, [&] { login.Get(member); });
    }
    EXPECT_EQ(Read(test::Login("<login cSerial=\"\"/>"), L"cSerial"), "") << "an empty attribute is not missing";
}

TEST_F(HostLogin, MonthThatIsNoNumberRaises) {
    ExpectError(13, "类型不匹配", [] { test::Login("<login iMonth=\"x\"/>").Get(L"AccountingMonth"); });
    ExpectError(6, "溢出", [] { test::Login("<login iStartPeriod=\"40000\"/>").Get(L"StartPeriod"); });
}

TEST_F(HostLogin, TextThatIsNoLoginRaisesAndLeavesTheMembers) {
    const DispatchObject login = test::Login(complete);
    ExpectError(-2147467259, "the login's root element is <a>, not <login>",
                [&] { login.Call(L"LoadXML", Text("<a cAcc_Id=\"002\"/>")); });
    try {
        login.Call(L"LoadXML", Text("nonsense"));
        ADD_FAILURE() << "no error";
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), -2147467259);
        EXPECT_TRUE(error.description().starts_with("the login is not XML: line ")) << error.description();
    }
    EXPECT_EQ(Read(login, L"cAcc_Id"), "001");
    login.Call(L"LoadXML", Text("<login cAcc_Id=\"002\"/>"));
    EXPECT_EQ(Read(login, L"cAcc_Id"), "002");
    ExpectError(438, noSuchMember, [&] { login.Get(L"cSerial"); });
}

TEST_F(HostLogin, SubsystemLoginTakesItsOwnValuesOnly) {
    const DispatchObject login = test::Login(complete);
    const auto admits = [&](std::string_view account, std::string_view year, std::string_view user,
                            std::string_view password) {
        return server::ToBoolean(login
                                     .Call(L"SubsystemLogin", Text("IA"), Text(account), Text(year), Text(user),
                                           Text(password), Text("2024-01-15"), Text("localhost"), Text("S1"))
                                     .Get());
    };
    EXPECT_TRUE(admits("001", "2024", "demo", "pw"));
    EXPECT_FALSE(admits("002", "2024", "demo", "pw"));
    EXPECT_FALSE(admits("001", "2023", "demo", "pw"));
    EXPECT_FALSE(admits("001", "2024", "root", "pw"));
    EXPECT_FALSE(admits("001", "2024", "demo", ""));
}

TEST_F(HostLogin, PeriodDatesComeFromTheAccountsCalendar) {
    account_.Run("INSERT INTO QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) VALUES "
                 "(N'001', 2023, 2, '2023-02-01', '2023-02-28'), (N'002', 2023, 3, '2023-03-01', '2023-03-31')");
    const DispatchObject login = AccountLogin();
    const auto dates = [&](int period) {
        VariantHolder wanted(period);
        VariantHolder first;
        VariantHolder last;
        login.Call(L"PeriodDates", VariantHolder::ByReference(wanted), VariantHolder(2023),
                   VariantHolder::VariantReference(first), VariantHolder::VariantReference(last));
        return std::pair(server::ToValue(first.Get()), server::ToValue(last.Get()));
    };
    // 2023-02-01 is day 44958 after 1899-12-30.
    EXPECT_EQ(dates(2), std::pair(host::Value(host::Date{44958}), host::Value(host::Date{44985})));
    EXPECT_TRUE(dates(3).first.IsNull()) << "another account's";
    EXPECT_TRUE(dates(3).second.IsNull());
}
