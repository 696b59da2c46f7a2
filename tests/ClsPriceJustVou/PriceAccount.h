#pragma once

#include "ClsPriceJustVou/Report.h"
#include "tests/support/FaultyEnvironment.h"
#include "tests/support/TestAccount.h"

#include <string>
#include <string_view>
#include <vector>

namespace test {

inline constexpr std::string_view byItem = "按存货核算";
inline constexpr std::string_view byWarehouse = "按仓库核算";
inline constexpr std::string_view byDepartment = "按部门核算";

/// A voucher document; every member is text of the request.
struct Voucher {
    std::string ID = "P1";
    std::string cMaker = "李工";
    std::string cAccounter = {};
    std::string dCJVDate = "2023-01-15";
    std::string cMemo = {};
    /// The `entry` elements.
    std::string entries = {};

    std::string Xml() const;
};

/// An `entry` element; `more` holds further child elements.
std::string Entry(std::string_view cInvCode, std::string_view iCJVACost, std::string_view more = {});

/// A request of vouchers.
std::string Request(const std::vector<Voucher>& vouchers, std::string_view proc = "ADD");

/// One `item` of a result document.
struct Outcome {
    std::string key;
    std::string code;
    std::string dsc;
    bool operator==(const Outcome&) const = default;
};
void PrintTo(const Outcome& outcome, std::ostream* out);

/// The outcomes of a result document.
std::vector<Outcome> Outcomes(const std::string& result);

/// An account in which price adjustments go through: January 2023 is open, the items 1004 and 1007 have planned prices
/// and stock.
class PriceAccount {
public:
    explicit PriceAccount(std::string_view valuation = byItem);

    const TestAccount& database() const { return account_; }
    void Run(std::string_view batches) const { account_.Run(batches); }
    std::vector<std::string> Rows(std::string_view sql) const { return account_.Rows(sql); }
    /// The names of the work tables that are there.
    std::vector<std::string> WorkTables() const;

    /// The login's changeable members.
    struct {
        std::string CurDate = "2023-01-15";
        std::string cUserName = "王会计";
        std::string iMonth = "1";
    } login;
    /// Failures to come; a statement or transaction hook runs beside the log.
    Faults faults;

    std::string LoginXml() const;
    /// Imports one request through a new instance; the log then holds what the class asked for.
    std::string Import(const std::string& request, std::size_t reportBound = kovra::Report::defaultBound);
    /// What the class itself asked of the database, in order: "BeginTrans", …, and statements by their labels.
    const std::vector<std::string>& log() const { return log_; }
    /// The statements as they were sent.
    const std::vector<std::string>& statements() const { return statements_; }
    /// The hooks that log, then fail.
    Faults LoggedFaults();

private:
    TestAccount account_;
    std::vector<std::string> log_;
    std::vector<std::string> statements_;
};

/// A hook that fails the statements that hold `piece`.
std::function<void(std::string_view)> FailOn(std::string piece,
                                             host::ErrorNumber number = host::error_number::unspecified,
                                             std::string description = "Injected failure.");

} // namespace test
