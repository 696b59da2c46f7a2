#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "ClsPriceJustVou/PriceVoucher.h"
#include "ModPub/Conversions.h"
#include "ModPub/Interruption.h"
#include "ModPub/Required.h"
#include "ModPub/Trap.h"

namespace kovra {
namespace {

/// Counts the staged rows that `entry` repeats. A staged column that is empty matches every value, and the warehouse is
/// always staged empty: rows of one item repeat each other whatever their warehouses.
std::string RepetitionQuery(const PriceEntry& entry) {
    std::string sql = "select count(cInvCode) as iCount from IA_tmpPriceJDATA";
    const auto condition = [&sql](std::string_view joint, const std::string& column, const std::string& value) {
        sql.append("\r\n").append(joint).append(" (IsNull(").append(column).append(", N'') = N'' or ");
        sql.append(column).append(" = '").append(value).append("')");
    };
    condition("where", "cInvCode", entry.cInvCode);
    condition("And", "cWhCode", entry.cWhCode);
    for (std::size_t i = 0; i < freeItems; ++i) {
        condition("And", "cFree" + std::to_string(i + 1), entry.cFree[i]);
    }
    return sql;
}

std::string StageStatement(const PriceEntry& entry, std::int16_t priceDecimals) {
    std::string sql = "Insert into IA_tmpPriceJDATA (cWhCode, cInvCode, bRandom, iCJVACost, \r\n"
                      "cFree1, cFree2, cFree3, cFree4, cFree5, cFree6, cFree7, cFree8, cFree9, cFree10) \r\n"
                      "values('', '";
    sql.append(entry.cInvCode).append("', 0, \r\n");
    sql.append("cast(").append(ModPub::NumberText(ModPub::ToDouble(entry.iCJVACost)));
    sql.append(" as decimal(38,").append(std::to_string(priceDecimals)).append("))");
    for (const std::string& free : entry.cFree) {
        sql.append(", \r\n'").append(free).append("'");
    }
    return sql.append(")");
}

} // namespace

bool ClsPriceJustVou::ImportPriceVoucher(const host::DOMNode& document, bool isLast, std::string& message,
                                         Report& report) {
    bool imported = false;
    try {
        const PriceHeader header = PriceHeader::Read(document);
        host::DOMNodeList rows = document.SelectNodes("body/entry");
        cAccounter_ = header.cAccounter;
        cMaker_ = header.cMaker;
        if (ModPub::Trim(cMaker_).empty()) {
            cMaker_ = ModPub::Required(voucherContext_).Login().UserName();
        }
        voucherDate_ = ModPub::FormatDate(header.dCJVDate);
        if (ModPub::Trim(voucherDate_).empty()) {
            voucherDate_ = ModPub::FormatDate(state_.login->CurrentDate());
        }
        voucherId_ = -1;

        if (state_.observer != nullptr) {
            state_.observer->EntriesSelected(rows.size());
        }
        bool rowFailed = false;
        std::size_t number = 0;
        for (const host::DOMNodePtr& row : rows) {
            if (state_.observer != nullptr && !state_.observer->EntryBegins(++number, *row)) {
                throw ModPub::Interruption();
            }
            if (!StageRow(header, PriceEntry::Read(*row), message)) {
                rowFailed = true;
                if (state_.observer != nullptr) {
                    state_.observer->EntryRefused(message);
                }
            }
        }
        // A voucher that is saved takes as much memory as its request, which nobody reads any more.
        rows.clear();
        if (isLast) {
            state_.request.reset();
        }
        if (!rowFailed) {
            // Before the voucher is saved: an error from here on counts as imported, and callers know it so.
            imported = true;
            imported = SaveVoucher(header, message);
        }
        // Nothing makes the work table anew for a second document, whose first row then ends in the trap below:
        // requests carry one document.
        DropWorkTable(workTable);
        DropWorkTable(resultTable);
    } catch (const ModPub::Interruption&) {
        // It ends the request, not this document alone.
        throw;
    } catch (...) {
        const host::Error error = ModPub::PendingError();
        state_.AddOutcome(std::to_string(error.number()), ModPub::outcome::stopped, error.description());
        message = report.ErrorMessage(*state_.resultDocument, error.description());
    }
    return imported;
}

bool ClsPriceJustVou::StageRow(const PriceHeader& header, const PriceEntry& entry, std::string& message) {
    OpenDBS(RepetitionQuery(entry));
    const bool repeated = ModPub::ToBoolean(voucherRecordset_->FieldValue("iCount"));
    const bool valid = CheckPriceRow(header, entry, message);
    if (valid && !repeated) {
        state_.connection->Execute(StageStatement(entry, priceDecimals_));
        return true;
    }
    message = "单据" + header.ID + "导入失败：" + message;
    if (repeated) {
        message.append("存货").append(entry.cInvCode).append("重复");
    }
    return false;
}

void ClsPriceJustVou::OpenDBS(std::string_view sql) {
    companion_->OpenDBS(*voucherRecordset_, *state_.connection, sql);
}

} // namespace kovra
