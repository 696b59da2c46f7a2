#pragma once

#include "host/Value.h"

#include <string>
#include <string_view>

namespace host {

/// The host's login object, handed to `Transact` by the caller.
/// Every member throws `Error`: 438 when the object lacks what is asked.
class HostLogin {
public:
    virtual ~HostLogin() = default;

    /// A member read by its name through late binding: "QxDbName", "cAcc_Id", "cIYear", "cUserId", "cUserPassWord",
    /// "CurDate", "cServer", "cSerial".
    virtual Value Member(std::string_view name) const = 0;

    /// Logs the user into the subsystem `subsystemId` ("IA").
    /// @param date the business date as text
    /// @return whether the host took the login
    virtual bool SubsystemLogin(const std::string& subsystemId, const std::string& accountId, const std::string& year,
                                const std::string& userId, const std::string& password, const std::string& date,
                                const std::string& server, const std::string& serial) = 0;

    /// The accounting year of the login, as text.
    virtual std::string LoginYear() const = 0;
    /// The ADO connection string of the account's database.
    virtual std::string ConnectionString() const = 0;
    /// The account id.
    virtual std::string AccountId() const = 0;
    /// The operator's name.
    virtual std::string UserName() const = 0;
    /// The login's business date as the host gives it; a text or a date.
    virtual Value CurrentDate() const = 0;
    /// The login's accounting month, 1 to 12.
    virtual int AccountingMonth() const = 0;
    /// The login's own period number: the starting period of the inventory module.
    virtual int StartPeriod() const = 0;

    /// First and last date of an accounting period.
    struct PeriodRange {
        /// Dates, or Null when the calendar has no such period.
        Value first = Null{};
        Value last = Null{};
    };

    /// The dates of period `period` of `year` from the account's calendar.
    virtual PeriodRange PeriodDates(int period, int year) = 0;
};

} // namespace host
