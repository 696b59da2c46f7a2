#include "refhost/ia/ProvisionPreCheck.h"

#include "ModPub/Conversions.h"
#include "ModPub/Lookup.h"

namespace refhost {

bool ProvisionPreCheck::Check(host::HostLogin& login, std::string& message) {
    const std::string year = std::to_string(ModPub::ToInt16(login.LoginYear()));
    const std::string month = std::to_string(login.AccountingMonth());
    const bool closed = connection_.Use(login, [&](host::Connection& connection) {
        return ModPub::LookupFinds(environment_, connection,
                                   "Select bflag_IA From GL_mend Where iyear=" + year + " And iperiod=" + month +
                                       " And bflag_IA=1");
    });
    if (closed) {
        message = year + "年" + month + "月已结账，不能录入跌价准备单。";
    }
    return !closed;
}

} // namespace refhost
