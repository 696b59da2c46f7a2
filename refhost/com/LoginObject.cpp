#include "refhost/com/LoginObject.h"

#include "ModPub/RuntimeErrors.h"

namespace refhost::com {

using server::Arguments;
using server::ToInt;
using server::ToText;
using server::VariantHolder;

VariantHolder LoginObject::LoadXML(const Arguments& arguments) {
    login_ = std::make_unique<refhost::Login>(ToText(arguments[0]), environment_);
    return {};
}

VariantHolder LoginObject::SubsystemLogin(const Arguments& arguments) {
    return VariantHolder(login().SubsystemLogin(ToText(arguments[0]), ToText(arguments[1]), ToText(arguments[2]),
                                                ToText(arguments[3]), ToText(arguments[4]), ToText(arguments[5]),
                                                ToText(arguments[6]), ToText(arguments[7])));
}

VariantHolder LoginObject::PeriodDates(const Arguments& arguments) {
    const host::HostLogin::PeriodRange range = login().PeriodDates(ToInt(arguments[0]), ToInt(arguments[1]));
    arguments.Return(2, VariantHolder(range.first));
    arguments.Return(3, VariantHolder(range.last));
    return {};
}

refhost::Login& LoginObject::login() const {
    if (!login_)
        ModPub::RaiseRuntimeError(host::error_number::noSuchMember);
    return *login_;
}

} // namespace refhost::com
