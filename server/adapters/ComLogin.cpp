#include "server/adapters/ComLogin.h"

#include "server/adapters/ObjectArguments.h"
#include "server/com/Utf16.h"

namespace server {

host::Value ComLogin::Member(std::string_view name) const { return ToValue(login_.Get(ToUtf16(name).c_str()).Get()); }

bool ComLogin::SubsystemLogin(const std::string& subsystemId, const std::string& accountId, const std::string& year,
                              const std::string& userId, const std::string& password, const std::string& date,
                              const std::string& server, const std::string& serial) {
    return ToBoolean(login_
                         .Call(L"SubsystemLogin", VariantHolder(subsystemId), VariantHolder(accountId),
                               VariantHolder(year), VariantHolder(userId), VariantHolder(password), VariantHolder(date),
                               VariantHolder(server), VariantHolder(serial))
                         .Get());
}

std::string ComLogin::LoginYear() const { return ToText(login_.Get(L"LoginYear").Get()); }
std::string ComLogin::ConnectionString() const { return ToText(login_.Get(L"ConnectionString").Get()); }
std::string ComLogin::AccountId() const { return ToText(login_.Get(L"AccountId").Get()); }
std::string ComLogin::UserName() const { return ToText(login_.Get(L"UserName").Get()); }
host::Value ComLogin::CurrentDate() const { return ToValue(login_.Get(L"CurrentDate").Get()); }
int ComLogin::AccountingMonth() const { return ToInt(login_.Get(L"AccountingMonth").Get()); }
int ComLogin::StartPeriod() const { return ToInt(login_.Get(L"StartPeriod").Get()); }

host::HostLogin::PeriodRange ComLogin::PeriodDates(int period, int year) {
    VariantHolder first{host::Value(host::Null{})};
    VariantHolder last{host::Value(host::Null{})};
    login_.Call(L"PeriodDates", UnreadReference(period), VariantHolder(year), VariantHolder::VariantReference(first),
                VariantHolder::VariantReference(last));
    return {ToValue(first.Get()), ToValue(last.Get())};
}

const DispatchObject& ComObject(const host::HostLogin& login) {
    const auto* own = dynamic_cast<const ComLogin*>(&login);
    if (!own)
        RaiseTypeMismatch();
    return own->login();
}

} // namespace server
