#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "ModPub/Conversions.h"
#include "ModPub/Trap.h"

namespace kovra {
namespace {

std::string HeadQuery(const std::string& view, std::int16_t voucherId) {
    return "SELECT AutoId, ID, cCode, dCJVDate, cMaker, dAccountDate, cAccounter, cMemo,  VT_ID, VouchType, "
           "CAST(qxts as money) as qxts, '' AS editprop FROM \r\n" +
           view + " WHERE AutoID = " + std::to_string(voucherId);
}

std::string RowsQuery(const std::string& view, const std::string& id) {
    return "SELECT *, '' AS editprop FROM " + view + " WHERE ID = " + id;
}

} // namespace

bool ClsPriceJustVou::PostPriceVoucher(std::string& message) {
    // A refusal without an error leaves it empty: the outcome then has no description, and the reason that the
    // companion gives is lost. Callers know it so.
    std::string failure;
    try {
        OpenDBS("SELECT * FROM Vouchers_base WHERE CardNumber = N'IA51'");
        const std::string headView = ModPub::ToText(voucherRecordset_->FieldValue("BTQName"));
        const std::string rowsView = ModPub::ToText(voucherRecordset_->FieldValue("BWQName"));

        std::string sql = HeadQuery(headView, voucherId_);
        OpenDBS(sql);
        host::RsXmlHelper& rsXmlHelper = state_.environment.GetRsXmlHelper();
        const std::unique_ptr<host::DOMDocument> head = rsXmlHelper.RecordsetToXml(*voucherRecordset_);
        if (!voucherRecordset_->AtEOF()) {
            sql = RowsQuery(rowsView, ModPub::ToText(voucherRecordset_->FieldValue("ID")));
        }
        // Without a head the query above is opened again.
        OpenDBS(sql);
        const std::unique_ptr<host::DOMDocument> rows = rsXmlHelper.RecordsetToXml(*voucherRecordset_);
        if (companion_->DoAccount(*head, *rows, voucherContext_, *state_.connection, true, message)) {
            return true;
        }
    } catch (...) {
        failure = ModPub::PendingError().description();
    }
    state_.AddOutcome("记账失败！", ModPub::outcome::stopped, failure);
    message = failure;
    return false;
}

} // namespace kovra
