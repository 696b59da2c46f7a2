#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "ClsPriceJustVou/PriceVoucher.h"
#include "ModPub/Conversions.h"

namespace kovra {
namespace {

/// The voucher's head as one record. It carries the header's own maker, empty or not.
std::string HeadQuery(const PriceHeader& header, const std::string& voucherDate, std::int16_t voucherId,
                      const std::string& templateId) {
    std::string sql = "select '' as AutoId, '";
    sql.append(voucherDate).append("' as dCJVDate, '").append(header.cMemo).append("' as cMemo, \r\n");
    sql.append("CONVERT(NVARCHAR(60), N'') as cCode, ").append(std::to_string(voucherId)).append(" as ID, '");
    sql.append(header.cMaker).append("' as cMaker, \r\n");
    sql.append("CONVERT(NVARCHAR(40), N'') as cAccounter, '").append(templateId).append("' as VT_ID, '");
    sql.append(voucherType).append("' as VouchType, \r\n");
    return sql.append("'' as cInvCode, 0 as iCJVBCost, 0 as iCJVACost");
}

std::string RowsQuery() {
    std::string sql = "select 'A' as editprop, ";
    return sql.append(resultTable).append(".* from ").append(resultTable);
}

/// Writes the voucher's number into its head record.
void SetNumber(const host::DOMDocument& head, std::string_view number) {
    for (const host::DOMNodePtr& record : head.SelectNodes("//rs:data/z:row")) {
        record->SetAttribute("cCode", number);
    }
}

} // namespace

bool ClsPriceJustVou::SaveVoucher(const PriceHeader& header, std::string& message) {
    host::Connection& connection = *state_.connection;

    DropWorkTable(resultTable);
    companion_->Update(workTable, resultTable, voucherContext_, connection, std::to_string(voucherId_), false);
    const std::string templateId = ModPub::ToText(companion_->GetDefaultTemplateID(cardNumber, connection));

    OpenDBS(HeadQuery(header, voucherDate_, voucherId_, templateId));
    host::RsXmlHelper& rsXmlHelper = state_.environment.GetRsXmlHelper();
    const std::unique_ptr<host::DOMDocument> head = rsXmlHelper.RecordsetToXml(*voucherRecordset_);
    const std::unique_ptr<host::RsXmlHelper::VouchData> vouchData = rsXmlHelper.XmlToVouchData(*head);
    SetNumber(*head, ModPub::ToText(companion_->GetVouchNum(voucherContext_, voucherType, *vouchData, false, true)));

    OpenDBS(RowsQuery());
    const std::unique_ptr<host::DOMDocument> rows = rsXmlHelper.RecordsetToXml(*voucherRecordset_);
    if (!companion_->save(*head, *rows, 2, message, connection, true, voucherContext_)) {
        return false;
    }
    voucherId_ = ModPub::ToInt16(companion_->GetMaxID(connection, false));
    state_.AddOutcome("单据" + header.ID, ModPub::outcome::accepted, "成功导入：");
    return true;
}

} // namespace kovra
