#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "ClsPriceJustVou/PriceVoucher.h"
#include "ModPub/Conversions.h"
#include "ModPub/Interruption.h"
#include "ModPub/ReadAccOption.h"
#include "ModPub/Trap.h"

namespace kovra {
namespace {

/// A number of decimals from the options of system "AA"; 0 where the option is missing.
std::int16_t ReadDecimals(ModPub::ImportState& state, std::string_view option) {
    return ModPub::ToInt16(ModPub::Val(ModPub::ReadAccOption(state.environment, *state.connection, "AA", option)));
}

} // namespace

std::string ClsPriceJustVou::ImportVouchers(const host::DOMNodeList& documents) {
    host::Connection& connection = *state_.connection;
    bool inTransaction = false;
    if (state_.observer != nullptr) {
        state_.observer->RowsSelected(documents.size());
    }
    try {
        std::string message;
        if (!companion_->AllowAdd(message, voucherContext_, connection)) {
            state_.AddOutcome({}, ModPub::outcome::stopped, message);
            return state_.resultDocument->Xml();
        }
        // The decimals of quantities are read though no step uses them: a bad option stops the request.
        ReadDecimals(state_, "iStrsQuanDecDgt");
        priceDecimals_ = ReadDecimals(state_, "iStrsPriDecDgt");
        connection.BeginTrans();
        inTransaction = true;
        CreatePriceWorkTable(workTable);

        // Message and report go on from document to document: the outcome of a second refused document repeats what
        // the first one's said, and callers know it so.
        Report report(reportBound_);
        std::size_t number = 0;
        for (const host::DOMNodePtr& document : documents) {
            ++number;
            if (state_.observer != nullptr && !state_.observer->RowBegins(number, *document)) {
                throw ModPub::Interruption();
            }
            if (report.isFull()) {
                message.clear();
            }
            std::string_view told;
            if (ImportPriceVoucher(*document, number == documents.size(), message, report)) {
                if (ModPub::Trim(cAccounter_).empty() || PostPriceVoucher(message) || message.empty()) {
                    continue;
                }
                told = report.Replace(message);
            } else {
                told = report.Refuse(message);
            }
            state_.AddOutcome({}, ModPub::outcome::stopped, told);
        }
        std::string result = state_.resultDocument->Xml();
        connection.CommitTrans();
        return result;
    } catch (...) {
        state_.AddOutcome("产生未知异常，导入失败！", ModPub::outcome::stopped, ModPub::PendingError().description());
        std::string result = state_.resultDocument->Xml();
        if (inTransaction) {
            if (state_.observer != nullptr) {
                state_.observer->RequestUndone();
            }
            connection.RollbackTrans();
        }
        return result;
    }
}

} // namespace kovra
