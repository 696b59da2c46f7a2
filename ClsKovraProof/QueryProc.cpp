#include "ClsKovraProof/ClsKovraProof.h"
#include "ModPub/Conversions.h"
#include "ModPub/Required.h"

#include <utility>

namespace kovra {
namespace {

using ModPub::Required;

/// Name of the mapping that turns records into elements.
constexpr std::string_view stockMapping = "StoreInOutXmlRs.Xml";

constexpr std::string_view dropView =
    " if exists (select * from dbo.sysobjects where id = object_id(N'[dbo].[RdRecordView]')"
    " and OBJECTPROPERTY(id, N'IsView') = 1)"
    " drop view [dbo].[RdRecordView] ";

constexpr std::string_view createView =
    " create  View RdRecordView AS "
    " select   ID, bRdFlag,cVouchType,cBusType,cSource,cBusCode,cWhCode,dDate,cCode,cRdCode,cDepCode,cPersonCode,"
    "cPTCode,cSTCode,A.cCusCode,cVenCode,cOrderCode,"
    "  cARVCode,cBillCode,cDLCode,cProBatch,cHandler,A.cMemo,A.iTaxRate,A.cExch_Name,A.iExchRate,bTransFlag,"
    "cAccounter,cMaker,iNetLock,dKeepdate,dVeriDate,bpufirst,biafirst,iMQuantity,"
    "  dARVDate,cChkCode,dChkDate,cChkPerson,VT_ID,bIsSTQc,cPsPCode,cMPoCode,gspcheck,ipurorderid,ipurarriveid,"
    "iproorderid,iarriveid,isalebillid, "
    "  convert(char, convert(money,A.qxts), 2) as qxts,cDefine1,cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,"
    "cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,cDefine12,cDefine13,cDefine15,cDefine16,"
    "  B.cCusAddress as cDefine14 from rdrecord  A left join Customer B  on   A.cCusCode=B.cCusCode ";

void OpenRecords(host::Recordset& recordset, std::string_view sql, host::Connection& connection) {
    recordset.Open(sql, connection, host::CursorType::openStatic, host::LockType::readOnly,
                   host::command_option::unspecified);
}

/// The kind of documents that a query description asks for.
std::string DocumentKind(const host::DOMDocument& description) {
    const std::optional<std::string> kind = Required(description.SelectSingleNode("//storeinout")).AttributeAt(0);
    if (!kind) {
        ModPub::RaiseRuntimeError(host::error_number::objectNotSet);
    }
    return *kind;
}

} // namespace

bool ClsKovraProof::QueryProc(ConditionList eleList, std::string& sRetXml) {
    host::Environment& environment = state_.environment;
    const std::unique_ptr<host::DOMDocument> description = environment.CreateDOMDocument();
    description->LoadXML(sRetXml);
    // Out of reach of a call that comes from inside of this one; an error leaves the next call to make its own.
    std::unique_ptr<host::DOMDocument> envelope = envelope_ ? std::move(envelope_) : environment.CreateDOMDocument();
    envelope->LoadXML(sRetXml);
    const host::DOMNodePtr root = envelope->DocumentElement();
    Required(root).SetText("");

    host::Connection& connection = Required(state_.connection);
    connection.Execute(dropView);
    connection.Execute(createView);

    const std::string headQuery =
        "select * from rdrecordView " + GetQueryCondition(eleList, connection, DocumentKind(*description));
    const std::unique_ptr<host::Recordset> head = environment.CreateRecordset();
    const std::unique_ptr<host::Recordset> body = environment.CreateRecordset();
    head->SetCursorLocation(host::CursorLocation::client);
    body->SetCursorLocation(host::CursorLocation::client);
    OpenRecords(*head, headQuery, connection);
    while (!head->AtEOF()) {
        const host::DOMNodePtr element =
            envelope->CreateElement(environment.GetEaiHelper().GetAttr(envelope->DocumentElement().get(), "roottag"));
        if (!converter_) {
            converter_ = environment.CreateEaiXmlConverter();
        }
        converter_->HeadToXml(*envelope, *element, stockMapping, *head);
        OpenRecords(*body, "select * from rdrecords where id=" + ModPub::ToText(head->FieldValue("id")), connection);
        converter_->BodyToXml(*envelope, *element, stockMapping, *body);
        body->Close();
        root->AppendChild(*element);
        head->MoveNext();
    }
    head->Close();
    sRetXml = envelope->Xml();
    envelope_ = std::move(envelope);
    return false;
}

} // namespace kovra
