#include "ClsKovraProof/ClsKovraProof.h"
#include "ClsKovraProof/ProvisionDoc.h"
#include "ModPub/Conversions.h"
#include "ModPub/Required.h"

namespace kovra {

/// Gives each head row its template; returns the message that refuses the document, or the empty text.
std::string ClsKovraProof::CheckHeadRows(const ProvisionDoc& doc, host::IaVoucherService& service,
                                         host::DOMDocument& head) {
    for (const host::DOMNodePtr& row : head.SelectNodes("//z:row")) {
        row->SetAttribute("dVeriDate", "");
        row->SetAttribute("iprintcount", "0");
        const std::optional<std::string> vouchType = row->GetAttribute("cVouchType");
        std::string message = doc.Label();
        bool refused = false;
        const auto refuse = [&](std::string_view text) {
            message += text;
            refused = true;
        };

        std::unique_ptr<host::Recordset> found;
        std::string further;
        if (!service.GetDefaultTemplate(vouchType.value_or(""), found, message, further) ||
            (ModPub::Required(found).AtEOF() && found->AtBOF())) {
            refuse("的取缺省模板时失败！");
        } else {
            row->SetAttribute("VT_ID", ModPub::ToText(found->FieldValue("VT_ID")));
        }
        // Looked at after a missing template too, so that both texts may stand in one message.
        if (!vouchType) {
            refuse("vouchtype单据类型节点不存在！");
        } else if (*vouchType != provisionVouchType) {
            refuse("vouchtype单据类型不合法！");
        }
        if (refused) {
            return message;
        }
    }
    return {};
}

/// Returns the message that refuses the document, or the empty text.
std::string ClsKovraProof::CheckBodyRows(const ProvisionDoc& doc, const host::DOMDocument& body) {
    std::string reason;
    if (!state_.environment.CreateProvisionPreCheck()->Check(*state_.login, reason)) {
        return doc.Label() + reason;
    }
    for (const host::DOMNodePtr& row : body.SelectNodes("//z:row")) {
        const std::optional<std::string> cInvCode = row->GetAttribute("cInvCode");
        if (!cInvCode) {
            return doc.Label() + "没有存货节点!";
        }
        if (cInvCode->empty()) {
            return doc.Label() + "存货节点值为空!";
        }
        const std::string iThisPrice = row->GetAttribute("iThisPrice").value_or("");
        if (!iThisPrice.empty() && !ModPub::IsNumeric(iThisPrice)) {
            return doc.Label() + "的存货编码为" + *cInvCode + "跌价余额节点值不合法！";
        }
    }
    return {};
}

} // namespace kovra
