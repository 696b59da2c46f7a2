#pragma once

#include "host/Database.h"
#include "host/HostLogin.h"

#include <map>
#include <memory>
#include <string>

namespace host {
class Environment;
}

namespace refhost {

/// The login object of the reference host, made from `<login …/>`, whose attributes are its members: `QxDbName`,
/// `cAcc_Id`, `cIYear`, `cUserId`, `cUserName`, `cUserPassWord`, `CurDate` ("YYYY-MM-DD"), `cServer`, `cSerial`,
/// `iMonth` and `iStartPeriod`.
///
/// Reading a member whose attribute is missing throws 438, as does reading a member that no login has. A month or
/// period that is no number throws 13, one outside 16 bits 6.
class Login final : public host::HostLogin {
public:
    /// Throws std::runtime_error when `xml` is no such element.
    /// @param environment where the document that reads `xml` and the login's own connection come from; it outlives the
    /// login
    Login(const std::string& xml, host::Environment& environment);

    host::Value Member(std::string_view name) const override;
    /// True when the account, year, user and password are the login's own.
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
    /// Reads `QxSystem..UA_Period` through a connection of the login's own.
    PeriodRange PeriodDates(int period, int year) override;

private:
    const std::string& Text(std::string_view member) const;
    int Number(std::string_view member) const;

    host::Environment& environment_;
    std::map<std::string, std::string, std::less<>> members_;
    /// Opened when first needed.
    std::unique_ptr<host::Connection> connection_;
};

} // namespace refhost
