#include "ClsKovraProof/ClsKovraProof.h"
#include "ClsKovraProof/ProvisionDoc.h"
#include "ModPub/Conversions.h"
#include "ModPub/Required.h"

namespace kovra {
namespace {

using ModPub::Required;

std::string CheckVouchType(const ProvisionDoc& doc) {
    const host::DOMNodePtr vouchType = doc.row.SelectSingleNode("header/vouchtype");
    if (!vouchType) {
        return doc.Label() + "vouchtype单据类型节点不存在!";
    }
    if (vouchType->Text() != provisionVouchType) {
        return doc.Label() + "vouchtype单据类型节点值非法!";
    }
    return {};
}

std::unique_ptr<host::Recordset> OpenTemplate(host::Environment& environment, host::Connection& connection,
                                              std::string_view sql) {
    std::unique_ptr<host::Recordset> recordset = environment.CreateRecordset();
    recordset->SetCursorLocation(host::CursorLocation::client);
    recordset->Open(sql, connection, host::CursorType::openStatic, host::LockType::optimistic,
                    host::command_option::unspecified);
    return recordset;
}

std::unique_ptr<host::DOMDocument> SaveTemplate(host::Environment& environment, const host::Recordset& recordset) {
    std::unique_ptr<host::DOMDocument> document = environment.CreateDOMDocument();
    recordset.Save(*document);
    return document;
}

} // namespace

void ClsKovraProof::ImportProvisionDoc(const host::DOMNode& row, bool edit) {
    ProvisionDoc doc{.row = row, .edit = edit, .number = {}};
    // An error leaves a transaction that was begun to the connection.
    const std::string message = SaveProvisionDoc(doc);
    if (!message.empty()) {
        if (doc.inTransaction) {
            state_.connection->RollbackTrans();
        }
        state_.AddRefused(doc.number, message);
    } else {
        if (doc.inTransaction) {
            state_.connection->CommitTrans();
        }
        state_.AddAccepted(doc.number);
    }
}

/// The steps up to the save; returns the message that refuses the document, or the empty text.
std::string ClsKovraProof::SaveProvisionDoc(ProvisionDoc& doc) {
    const host::DOMNodePtr header = doc.row.SelectSingleNode("header");
    if (!header) {
        return "没有header节点";
    }
    doc.number = state_.environment.GetEaiHelper().GetChildText(header.get(), "Deccode");
    if (doc.number.empty()) {
        return "单据号不能为空。";
    }
    if (std::string message = ClearNumber(doc); !message.empty()) {
        return message;
    }
    if (!doc.row.SelectSingleNode("body")) {
        return "没有body节点";
    }
    if (std::string message = CheckVouchType(doc); !message.empty()) {
        return message;
    }

    const ProvisionRecords records = MakeRecords(doc);
    const host::DOMNodePtr firstHeadRow = records.head->SelectSingleNode("//z:row");
    Required(firstHeadRow).SetAttribute("bEai", "1");
    firstHeadRow->SetAttribute("dVeriDate", "");

    const std::unique_ptr<host::IaVoucherService> service = state_.environment.CreateIaVoucherService();
    std::string message;
    if (!service->VoucherInit(*state_.login, message)) {
        return message;
    }
    if (message = CheckHeadRows(doc, *service, *records.head); !message.empty()) {
        return message;
    }
    if (message = CheckBodyRows(doc, *records.body); !message.empty()) {
        return message;
    }

    state_.connection->BeginTrans();
    doc.inTransaction = true;
    const std::unique_ptr<host::DOMDocument> result = state_.environment.CreateDOMDocument();
    service->SaveVoucher(firstHeadRow->GetAttribute("cVouchType").value_or(""), *records.head, *records.body, message,
                         *state_.connection, *result);
    return message.empty() ? GetRetString(*result) : message;
}

/// Refuses the number of an existing document under "ADD"; under "EDIT" deletes that document.
std::string ClsKovraProof::ClearNumber(const ProvisionDoc& doc) {
    const std::unique_ptr<host::Recordset> found = state_.environment.CreateRecordset();
    found->Open("Select ID From IA_DecReady Where cDecCode='" + doc.number + "'", *state_.connection,
                host::CursorType::openStatic, host::LockType::optimistic, host::command_option::unspecified);
    if (!(found->AtEOF() && found->AtBOF())) {
        if (!doc.edit) {
            return "单据号：" + doc.number + "已存在。";
        }
        // Committed at once: the old document stays gone even when the new one is refused later.
        state_.connection->Execute("Delete IA_DecReady Where cDecCode='" + doc.number + "'");
        state_.connection->Execute("Delete IA_DecReadys Where ID=" + ModPub::ToText(found->FieldValue(0)));
    }
    found->Close();
    return {};
}

ProvisionRecords ClsKovraProof::MakeRecords(const ProvisionDoc& doc) {
    host::Environment& environment = state_.environment;
    const std::unique_ptr<host::Recordset> head =
        OpenTemplate(environment, *state_.connection,
                     "Select *,convert(varchar(30),'') as cdepname,convert(varchar(30),'') as cpersonname,1 as bEai "
                     "From ia_decready Where 1=2");
    const std::unique_ptr<host::Recordset> body = OpenTemplate(
        environment, *state_.connection, "Select *,convert(varchar(30),'') as cwhname From ia_decreadys Where 1=2");
    ProvisionRecords records{SaveTemplate(environment, *head), SaveTemplate(environment, *body)};

    const std::unique_ptr<host::EaiXmlConverter> converter = environment.CreateEaiXmlConverter();
    const std::string rowXml = doc.row.Xml();
    converter->FillHead(rowXml, state_.rowTag, *records.head, *head, provisionMapping);
    converter->FillBody(rowXml, state_.rowTag, *records.body, *body, provisionMapping);
    return records;
}

} // namespace kovra
