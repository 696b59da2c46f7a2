#pragma once

#include "refhost/eai/Login.h"
#include "server/adapters/ComEnvironment.h"
#include "server/inproc/Automation.h"

#include <memory>

namespace refhost::com {

/// The login object `KovraHost.Login`. `LoadXML` fills it; until then it has no member, and reading one raises 438.
class LoginObject final : public server::Automation<LoginObject> {
public:
    /// Takes the members from `<login …/>`, whose layout `refhost::Login` tells. Raises an error, with the members left
    /// as they are, for a text that is no such element.
    server::VariantHolder LoadXML(const server::Arguments& arguments);

    /// `QxDbName`, `cAcc_Id` and so on: the text of the attribute of that name.
    template <std::size_t index> server::VariantHolder Member(const server::Arguments&) {
        return server::VariantHolder(login().Member(memberNames[index]));
    }
    server::VariantHolder SubsystemLogin(const server::Arguments& arguments);
    /// `LoginYear`, `ConnectionString` and so on.
    template <auto member> server::VariantHolder Read(const server::Arguments&) {
        return server::VariantHolder((login().*member)());
    }
    /// Period, year, and two Variants that receive the first and the last date, or Null.
    server::VariantHolder PeriodDates(const server::Arguments& arguments);

    static constexpr server::Method<LoginObject> methods[] = {
        {L"LoadXML", 1, 1, &LoginObject::LoadXML},
        {L"QxDbName", 0, 0, &LoginObject::Member<0>, DISPATCH_PROPERTYGET},
        {L"cAcc_Id", 0, 0, &LoginObject::Member<1>, DISPATCH_PROPERTYGET},
        {L"cIYear", 0, 0, &LoginObject::Member<2>, DISPATCH_PROPERTYGET},
        {L"cUserId", 0, 0, &LoginObject::Member<3>, DISPATCH_PROPERTYGET},
        {L"cUserName", 0, 0, &LoginObject::Member<4>, DISPATCH_PROPERTYGET},
        {L"cUserPassWord", 0, 0, &LoginObject::Member<5>, DISPATCH_PROPERTYGET},
        {L"CurDate", 0, 0, &LoginObject::Member<6>, DISPATCH_PROPERTYGET},
        {L"cServer", 0, 0, &LoginObject::Member<7>, DISPATCH_PROPERTYGET},
        {L"cSerial", 0, 0, &LoginObject::Member<8>, DISPATCH_PROPERTYGET},
        {L"iMonth", 0, 0, &LoginObject::Member<9>, DISPATCH_PROPERTYGET},
        {L"iStartPeriod", 0, 0, &LoginObject::Member<10>, DISPATCH_PROPERTYGET},
        {L"SubsystemLogin", 8, 8, &LoginObject::SubsystemLogin},
        {L"LoginYear", 0, 0, &LoginObject::Read<&refhost::Login::LoginYear>, DISPATCH_PROPERTYGET},
        {L"ConnectionString", 0, 0, &LoginObject::Read<&refhost::Login::ConnectionString>, DISPATCH_PROPERTYGET},
        {L"AccountId", 0, 0, &LoginObject::Read<&refhost::Login::AccountId>, DISPATCH_PROPERTYGET},
        {L"UserName", 0, 0, &LoginObject::Read<&refhost::Login::UserName>, DISPATCH_PROPERTYGET},
        {L"CurrentDate", 0, 0, &LoginObject::Read<&refhost::Login::CurrentDate>, DISPATCH_PROPERTYGET},
        {L"AccountingMonth", 0, 0, &LoginObject::Read<&refhost::Login::AccountingMonth>, DISPATCH_PROPERTYGET},
        {L"StartPeriod", 0, 0, &LoginObject::Read<&refhost::Login::StartPeriod>, DISPATCH_PROPERTYGET},
        {L"PeriodDates", 4, 4, &LoginObject::PeriodDates},
    };

private:
    /// In the order in which `methods` offers them.
    static constexpr const char* memberNames[] = {"QxDbName",  "cAcc_Id",       "cIYear",      "cUserId",
                                                  "cUserName", "cUserPassWord", "CurDate",     "cServer",
                                                  "cSerial",   "iMonth",        "iStartPeriod"};

    refhost::Login& login() const;

    server::ComEnvironment environment_;
    std::unique_ptr<refhost::Login> login_;
};

} // namespace refhost::com
