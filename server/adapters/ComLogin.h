#pragma once

#include "host/HostLogin.h"
#include "server/com/DispatchObject.h"

namespace server {

/// The login object that a caller hands to `Transact`; every member is reached by its name.
class ComLogin final : public host::HostLogin {
public:
    explicit ComLogin(DispatchObject login) noexcept : login_(std::move(login)) {}

    const DispatchObject& login() const noexcept { return login_; }

    host::Value Member(std::string_view name) const override;
    bool SubsystemLogin(const std::string& subsystemId, const std::string& accountId, const std::string& year,
                        const std::string& userId, const std::string& password, const std::string& date,
                        const std::string& server, const std::string& serial) override;
    std::string LoginYear() const override;
    std::string ConnectionString() const override;
    std::string AccountId() const override;
    std::string UserName() const override;
    host::Value CurrentDate() const override;
    int AccountingMonth() const override;
    int StartPeriod() const override;
    PeriodRange PeriodDates(int period, int year) override;

private:
    DispatchObject login_;
};

/// The COM object behind `login`. Throws error 13 for a login that is not a COM object.
const DispatchObject& ComObject(const host::HostLogin& login);

} // namespace server
