#pragma once

#include "host/Environment.h"

#include <memory>
#include <string>
#include <string_view>

namespace refhost {

/// The cost-adjustment component `ZendaTool.clsZendaT`: price adjustment vouchers on the account database.
///
/// It speaks the account's own SQL through the interfaces in `host/` alone, so it works on every account database.
/// An operation without a connection argument uses the connection of the latest operation that had one.
class ZendaT : public host::ZendaT {
public:
    /// @param environment where its recordsets come from; it outlives the component
    explicit ZendaT(host::Environment& environment) : environment_(environment) {}

    /// Refuses while the option `bPriceAdjLocked` of system "IA" is "1": the period-end processing is under way.
    bool AllowAdd(std::string& message, std::shared_ptr<host::VoucherContext>& context,
                  host::Connection& connection) override;
    void OpenDBS(host::Recordset& recordset, host::Connection& connection, std::string_view sql) override;
    /// Creates the result table with the voucher's rows. A row has the stock of its item (and free items, where they
    /// are staged) on the ledger, the price so far and the new one, and what the stock's amount changes by. Under
    /// valuation by item a staged row gives one row, else one for each warehouse of planned or retail prices.
    /// The stock is that of the saved voucher's date; for "-1", a new voucher, that of the login's business date.
    void Update(std::string_view workTable, std::string_view resultTable,
                std::shared_ptr<host::VoucherContext>& context, host::Connection& connection,
                std::string_view voucherId, bool flag) override;
    /// Empty when the card has no default template.
    host::Value GetDefaultTemplateID(std::string_view cardNumber, host::Connection& connection) override;
    /// Year and month of the voucher's date and a running number of four digits or more: "2023010001".
    /// Throws 91 before an operation with a connection, 13 for voucher data without a date.
    host::Value GetVouchNum(std::shared_ptr<host::VoucherContext>& context, std::string_view voucherType,
                            host::RsXmlHelper::VouchData& data, bool flag1, bool flag2) override;
    /// Stores head and rows and takes the new prices over into the items. Where the voucher's date is not the login's
    /// business date, the rows' stock is first taken anew as of the voucher's date. An error leaves nothing of the
    /// voucher behind.
    bool save(host::DOMDocument& head, host::DOMDocument& rows, int mode, std::string& message,
              host::Connection& connection, bool flag, std::shared_ptr<host::VoucherContext>& context) override;
    host::Value GetMaxID(host::Connection& connection, bool flag) override;
    /// Enters the rows into the ledger under the login's name, business date and accounting month, and marks the
    /// voucher. Refuses a voucher that is posted already or unknown, and any while the option `bPostLocked` of system
    /// "IA" is "1". An error leaves nothing of the posting behind.
    bool DoAccount(host::DOMDocument& head, host::DOMDocument& rows, std::shared_ptr<host::VoucherContext>& context,
                   host::Connection& connection, bool flag, std::string& message) override;

private:
    bool OptionIsSet(host::Connection& connection, std::string_view cName);

    host::Environment& environment_;
    host::Connection* latestConnection_ = nullptr;
};

} // namespace refhost
