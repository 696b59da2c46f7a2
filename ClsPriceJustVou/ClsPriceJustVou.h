#pragma once

#include "ClsPriceJustVou/Report.h"
#include "ModPub/ImportState.h"
#include "ModPub/RequestFields.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace kovra {

struct PriceEntry;
struct PriceHeader;

/// Imports price adjustment vouchers: "ADD" stages each document's rows in a work table, saves it through the host's
/// cost-adjustment component and, where a bookkeeper is named, posts it. One transaction holds the whole request.
class ClsPriceJustVou {
public:
    /// Creates the companion component and the voucher recordset. Throws what the environment throws, 429 where the
    /// companion cannot be created.
    /// @param observer watches the import; nobody where it is nullptr
    /// @param reportBound bytes that the report of a request's refused documents may grow to
    explicit ClsPriceJustVou(host::Environment& environment, ModPub::ImportObserver* observer = nullptr,
                             std::size_t reportBound = Report::defaultBound);
    ~ClsPriceJustVou();
    ClsPriceJustVou(const ClsPriceJustVou&) = delete;
    ClsPriceJustVou& operator=(const ClsPriceJustVou&) = delete;

    /// Imports one request; serves one call an instance.
    /// @param sXml the request, UTF-8
    /// @param login the caller's login
    /// @return the result document or an error result, or the empty text after "EMPTY". Never throws.
    std::string Transact(std::string_view sXml, host::HostLogin* login);

    /// First and last day of an accounting month of the login's account, as texts "YYYY-MM-DD".
    /// @param varStart receives the first day; may be nullptr; left alone when the calendar has no such month
    /// @param varEnd receives the last day, likewise
    /// @return whether the calendar has the month
    /// Throws 91 before `Transact` has opened the connection, and the database's error.
    bool GetStartEndDate(std::int16_t intMonth, std::int16_t intYear, host::Value* varStart = nullptr,
                         host::Value* varEnd = nullptr);

    /// The fields that it reads of a request.
    static ModPub::RequestFields Fields();

private:
    std::string ImportVouchers(const host::DOMNodeList& documents);
    void CreatePriceWorkTable(std::string_view name);
    void DropWorkTable(std::string_view name);
    /// @param isLast whether nothing of the request is read any more behind this document
    bool ImportPriceVoucher(const host::DOMNode& document, bool isLast, std::string& message, Report& report);
    bool StageRow(const PriceHeader& header, const PriceEntry& entry, std::string& message);
    bool SaveVoucher(const PriceHeader& header, std::string& message);
    bool CheckPriceRow(const PriceHeader& header, const PriceEntry& entry, std::string& message);
    bool PostPriceVoucher(std::string& message);
    /// Opens the voucher recordset on a query of this class through the companion.
    void OpenDBS(std::string_view sql);

    ModPub::ImportState state_;
    std::size_t reportBound_;
    std::unique_ptr<host::ZendaT> companion_;
    std::unique_ptr<host::Recordset> voucherRecordset_;
    /// Operations of the companion may replace it.
    std::shared_ptr<host::VoucherContext> voucherContext_;
    /// Scale of the staged prices.
    std::int16_t priceDecimals_ = 0;

    // Of the document at hand.
    std::string voucherDate_;
    std::string cAccounter_;
    std::string cMaker_;
    /// -1 until the voucher is saved.
    std::int16_t voucherId_ = -1;
};

} // namespace kovra
