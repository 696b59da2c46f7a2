#include "server/adapters/ComVoucherComponents.h"

#include "server/adapters/ObjectArguments.h"
#include "server/adapters/ProgIds.h"
#include "server/adapters/XmlDocument.h"

namespace server {

host::HostLogin& ComVoucherContext::Login() {
    if (!login_)
        login_ = std::make_unique<ComLogin>(DispatchObject(ToObject(context_.Get(L"Login").Get())));
    return *login_;
}

ComIaVoucherService::ComIaVoucherService(RecordClasses& classes)
    : recordsets_(classes.recordsets), service_(classes.services.Create()) {}

std::shared_ptr<host::VoucherContext> ComIaVoucherService::Context(host::HostLogin& login) {
    ComPtr<IDispatch> context = ToObject(service_.Call(L"Context", ByValue(login)).Get());
    return std::make_shared<ComVoucherContext>(DispatchObject(std::move(context)));
}

bool ComIaVoucherService::VoucherInit(host::HostLogin& login, std::string& message) {
    return ToBoolean(service_.Call(L"VoucherInit", ByValue(login), TextReference(message)).Get());
}

bool ComIaVoucherService::GetDefaultTemplate(std::string_view voucherType, std::unique_ptr<host::Recordset>& recordset,
                                             std::string& message, std::string& further) {
    const bool made = !recordset;
    const VariantHolder found = service_.Call(
        L"GetDefaultTemplate", VariantHolder(voucherType), ObjectReference(recordset), TextReference(message),
        TextReference(further), VariantHolder(std::string_view()), VariantHolder(0));
    if (made && recordset)
        recordset = std::make_unique<AdoRecordset>(ComRecordset(*recordset).object(), recordsets_);
    return ToBoolean(found.Get());
}

void ComIaVoucherService::SaveVoucher(std::string_view voucherType, host::DOMDocument& head, host::DOMDocument& body,
                                      std::string& message, host::Connection& connection, host::DOMDocument& result) {
    service_.Call(L"SaveVoucher", VariantHolder(voucherType), ByValue(head), ByValue(body), TextReference(message),
                  ObjectReference(connection), ObjectReference(result));
}

ComProvisionPreCheck::ComProvisionPreCheck(RecordClasses& classes) : check_(classes.preChecks.Create()) {}

bool ComProvisionPreCheck::Check(host::HostLogin& login, std::string& message) {
    return ToBoolean(check_.Call(L"Check", ByValue(login), TextReference(message)).Get());
}

ComEaiXmlConverter::ComEaiXmlConverter(RecordClasses& classes) : converter_(classes.converters.Create()) {}

void ComEaiXmlConverter::FillHead(std::string_view rowXml, std::string_view rowTag, host::DOMDocument& head,
                                  host::Recordset& columns, std::string_view mapping) {
    Fill(L"FillHead", rowXml, rowTag, head, columns, mapping);
}

void ComEaiXmlConverter::FillBody(std::string_view rowXml, std::string_view rowTag, host::DOMDocument& body,
                                  host::Recordset& columns, std::string_view mapping) {
    Fill(L"FillBody", rowXml, rowTag, body, columns, mapping);
}

void ComEaiXmlConverter::HeadToXml(host::DOMDocument&, host::DOMNode& element, std::string_view mapping,
                                   host::Recordset& head) {
    ToXml(L"HeadToXml", element, mapping, head);
}

void ComEaiXmlConverter::BodyToXml(host::DOMDocument&, host::DOMNode& element, std::string_view mapping,
                                   host::Recordset& body) {
    ToXml(L"BodyToXml", element, mapping, body);
}

void ComEaiXmlConverter::Fill(const wchar_t* operation, std::string_view rowXml, std::string_view rowTag,
                              host::DOMDocument& records, host::Recordset& columns, std::string_view mapping) {
    const VariantHolder nothing(static_cast<IDispatch*>(nullptr));
    converter_.Call(operation, VariantHolder(rowXml), VariantHolder(rowTag), ByValue(records), ByValue(columns),
                    VariantHolder(mapping), nothing);
}

void ComEaiXmlConverter::ToXml(const wchar_t* operation, host::DOMNode& element, std::string_view mapping,
                               host::Recordset& records) {
    host::DOMNode* node = &element;
    VariantHolder notExamined[2];
    converter_.Call(operation, ObjectReference(node), VariantHolder(mapping), ObjectReference(records),
                    VariantHolder::VariantReference(notExamined[0]), VariantHolder::VariantReference(notExamined[1]));
}

ComRsXmlHelper::ComRsXmlHelper() : helper_(DispatchObject::Create(progid::rsXmlHelper)) {}

std::unique_ptr<host::DOMDocument> ComRsXmlHelper::RecordsetToXml(host::Recordset& recordset) {
    const ComPtr<IDispatch> document = ToObject(helper_.Call(L"RecordsetToXml", ByValue(recordset)).Get());
    return std::make_unique<XmlDocument>(document.As<IXMLDOMDocument>());
}

std::unique_ptr<host::RsXmlHelper::VouchData> ComRsXmlHelper::XmlToVouchData(host::DOMDocument& document) {
    ComPtr<IDispatch> data = ToObject(helper_.Call(L"XmlToVouchData", ByValue(document)).Get());
    return std::make_unique<ComVouchData>(DispatchObject(std::move(data)));
}

ComZendaT::ComZendaT() : companion_(DispatchObject::Create(progid::zendaT)) {}

bool ComZendaT::AllowAdd(std::string& message, std::shared_ptr<host::VoucherContext>& context,
                         host::Connection& connection) {
    return ToBoolean(
        companion_.Call(L"AllowAdd", TextReference(message), ObjectReference(context), ObjectReference(connection))
            .Get());
}

void ComZendaT::OpenDBS(host::Recordset& recordset, host::Connection& connection, std::string_view sql) {
    companion_.Call(L"OpenDBS", ObjectReference(recordset), ObjectReference(connection), UnreadReference(sql));
}

void ComZendaT::Update(std::string_view workTable, std::string_view resultTable,
                       std::shared_ptr<host::VoucherContext>& context, host::Connection& connection,
                       std::string_view voucherId, bool flag) {
    companion_.Call(L"Update", UnreadReference(workTable), UnreadReference(resultTable), ObjectReference(context),
                    ObjectReference(connection), UnreadReference(voucherId), VariantHolder(flag));
}

host::Value ComZendaT::GetDefaultTemplateID(std::string_view cardNumber, host::Connection& connection) {
    return ToValue(
        companion_.Call(L"GetDefaultTemplateID", UnreadReference(cardNumber), ObjectReference(connection)).Get());
}

host::Value ComZendaT::GetVouchNum(std::shared_ptr<host::VoucherContext>& context, std::string_view voucherType,
                                   host::RsXmlHelper::VouchData& data, bool flag1, bool flag2) {
    return ToValue(companion_
                       .Call(L"GetVouchNum", ObjectReference(context), UnreadReference(voucherType),
                             ObjectReference(data), VariantHolder(flag1), VariantHolder(flag2))
                       .Get());
}

bool ComZendaT::save(host::DOMDocument& head, host::DOMDocument& rows, int mode, std::string& message,
                     host::Connection& connection, bool flag, std::shared_ptr<host::VoucherContext>& context) {
    return ToBoolean(companion_
                         .Call(L"save", ObjectReference(head), ObjectReference(rows), VariantHolder(mode),
                               TextReference(message), ObjectReference(connection), VariantHolder(flag),
                               ObjectReference(context))
                         .Get());
}

host::Value ComZendaT::GetMaxID(host::Connection& connection, bool flag) {
    return ToValue(companion_.Call(L"GetMaxID", ObjectReference(connection), VariantHolder(flag)).Get());
}

bool ComZendaT::DoAccount(host::DOMDocument& head, host::DOMDocument& rows,
                          std::shared_ptr<host::VoucherContext>& context, host::Connection& connection, bool flag,
                          std::string& message) {
    return ToBoolean(companion_
                         .Call(L"DoAccount", ObjectReference(head), ObjectReference(rows), ObjectReference(context),
                               ObjectReference(connection), VariantHolder(flag), TextReference(message))
                         .Get());
}

} // namespace server
