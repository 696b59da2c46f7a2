#include "refhost/eai/Login.h"

#include "ModPub/Numbers.h"
#include "ModPub/RuntimeErrors.h"
#include "host/Environment.h"
#include "refhost/trace/HostCall.h"
#include "text/Fault.h"

#include <array>
#include <utility>

namespace refhost {
namespace {

constexpr std::array<const char*, 11> memberNames = {"QxDbName",  "cAcc_Id",       "cIYear",      "cUserId",
                                                     "cUserName", "cUserPassWord", "CurDate",     "cServer",
                                                     "cSerial",   "iMonth",        "iStartPeriod"};

/// `text` as a T-SQL literal.
std::string Quoted(std::string_view text) {
    std::string quoted = "N'";
    for (const char c : text)
        quoted.append(c == '\'' ? 2 : 1, c);
    return quoted.append("'");
}

} // namespace

Login::Login(const std::string& xml, host::Environment& environment) : environment_(environment) {
    const std::unique_ptr<host::DOMDocument> document = environment.CreateDOMDocument();
    if (!document->LoadXML(xml))
        throw text::Fault(
            {"the login is not XML: " + document->LoadError(), "登录文件不是 XML：" + document->LoadError()});
    const host::DOMNodePtr root = document->DocumentElement();
    if (root->NodeName() != "login")
        throw text::Fault({"the login's root element is <" + root->NodeName() + ">, not <login>",
                           "登录文件的根元素是 <" + root->NodeName() + ">，应为 <login>"});
    for (const char* name : memberNames) {
        if (auto value = root->GetAttribute(name))
            members_.emplace(name, std::move(*value));
    }
}

const std::string& Login::Text(std::string_view member) const {
    const auto found = members_.find(member);
    if (found == members_.end())
        ModPub::RaiseRuntimeError(host::error_number::noSuchMember);
    return found->second;
}

int Login::Number(std::string_view member) const { return ModPub::ToInt16(Text(member)); }

host::Value Login::Member(std::string_view name) const { return Text(name); }

bool Login::SubsystemLogin(const std::string&, const std::string& accountId, const std::string& year,
                           const std::string& userId, const std::string& password, const std::string&,
                           const std::string&, const std::string&) {
    return accountId == Text("cAcc_Id") && year == Text("cIYear") && userId == Text("cUserId") &&
           password == Text("cUserPassWord");
}

std::string Login::LoginYear() const { return Text("cIYear"); }
std::string Login::ConnectionString() const { return Text("QxDbName"); }
std::string Login::AccountId() const { return Text("cAcc_Id"); }
std::string Login::UserName() const { return Text("cUserName"); }
host::Value Login::CurrentDate() const { return Text("CurDate"); }
int Login::AccountingMonth() const { return Number("iMonth"); }
int Login::StartPeriod() const { return Number("iStartPeriod"); }

host::HostLogin::PeriodRange Login::PeriodDates(int period, int year) {
    const HostCall call;
    if (!connection_) {
        auto connection = environment_.CreateConnection();
        connection->Open(ConnectionString(), "", "", host::command_option::unspecified);
        connection_ = std::move(connection);
    }
    const auto calendar = environment_.CreateRecordset();
    calendar->Open("SELECT dBegin, dEnd FROM QxSystem..UA_Period WHERE cAcc_ID = " + Quoted(AccountId()) +
                       " AND iYear = " + std::to_string(year) + " AND iId = " + std::to_string(period),
                   *connection_, host::CursorType::openStatic, host::LockType::readOnly, host::command_option::text);
    PeriodRange range;
    if (!calendar->AtEOF())
        range = {calendar->FieldValue("dBegin"), calendar->FieldValue("dEnd")};
    calendar->Close();
    return range;
}

} // namespace refhost
