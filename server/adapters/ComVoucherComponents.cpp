#include "server/adapters/ComVoucherComponents.h"

#include "host/Forwarding.h"
#include "server/adapters/AdoConnection.h"
#include "server/adapters/AdoRecordset.h"
#include "server/adapters/ProgIds.h"
#include "server/adapters/XmlDocument.h"
#include "server/adapters/XmlNode.h"

namespace server {

namespace {

class ComVouchData final : public host::RsXmlHelper::VouchData {
public:
    explicit ComVouchData(DispatchObject data) noexcept : data_(std::move(data)) {}
    const DispatchObject& data() const noexcept { return data_; }

private:
    DispatchObject data_;
};

VariantHolder Holder(const DispatchObject& object) { return VariantHolder(object.object().Get()); }
VariantHolder Holder(const host::DOMDocument& document) {
    return VariantHolder(static_cast<IDispatch*>(ComDocument(document).Get()));
}
VariantHolder Holder(host::Connection& connection) { return Holder(ComConnection(connection)); }
VariantHolder Holder(host::Recordset& recordset) { return Holder(ComRecordset(recordset)); }
VariantHolder Holder(const host::HostLogin& login) { return Holder(ComObject(login)); }

/// A text that an operation may fill: goes along by reference, and comes back when the call has succeeded.
class TextArgument {
public:
    explicit TextArgument(std::string& text) : text_(text), held_(text) {}

    VariantHolder Reference() { return VariantHolder::ByReference(held_); }
    void TakeBack() { text_ = ToText(held_.Get()); }

private:
    std::string& text_;
    VariantHolder held_;
};

/// A voucher context that an operation may replace.
class ContextArgument {
public:
    explicit ContextArgument(std::shared_ptr<host::VoucherContext>& context) : context_(context), held_(Of(context)) {}

    VariantHolder Reference() { return VariantHolder::ByReference(held_); }
    void TakeBack() {
        ComPtr<IDispatch> now = ToObject(held_.Get());
        if (const auto* own = dynamic_cast<const ComVoucherContext*>(context_.get());
            !own || own->context().object().Get() != now.Get())
            context_ = now ? std::make_shared<ComVoucherContext>(DispatchObject(std::move(now))) : nullptr;
    }

private:
    static VariantHolder Of(const std::shared_ptr<host::VoucherContext>& context) {
        const auto* own = dynamic_cast<const ComVoucherContext*>(context.get());
        return VariantHolder(own ? own->context().object().Get() : nullptr);
    }

    std::shared_ptr<host::VoucherContext>& context_;
    VariantHolder held_;
};

} // namespace

host::HostLogin& ComVoucherContext::Login() {
    if (!login_)
        login_ = std::make_unique<ComLogin>(DispatchObject(ToObject(context_.Get(L"Login").Get())));
    return *login_;
}

ComIaVoucherService::ComIaVoucherService() : service_(DispatchObject::Create(progid::iaVoucherService)) {}

std::shared_ptr<host::VoucherContext> ComIaVoucherService::Context(host::HostLogin& login) {
    ComPtr<IDispatch> context = ToObject(service_.Call(L"Context", Holder(login)).Get());
    return std::make_shared<ComVoucherContext>(DispatchObject(std::move(context)));
}

bool ComIaVoucherService::VoucherInit(host::HostLogin& login, std::string& message) {
    TextArgument text(message);
    const VariantHolder result = service_.Call(L"VoucherInit", Holder(login), text.Reference());
    text.TakeBack();
    return ToBoolean(result.Get());
}

bool ComIaVoucherService::GetDefaultTemplate(std::string_view voucherType, std::unique_ptr<host::Recordset>& recordset,
                                             std::string& message, std::string& further) {
    VariantHolder opened(static_cast<IDispatch*>(nullptr));
    TextArgument text(message);
    TextArgument furtherText(further);
    const VariantHolder result =
        service_.Call(L"GetDefaultTemplate", VariantHolder(voucherType), VariantHolder::ByReference(opened),
                      text.Reference(), furtherText.Reference(), VariantHolder(std::string_view()), VariantHolder(0));
    text.TakeBack();
    furtherText.TakeBack();
    if (ComPtr<IDispatch> object = ToObject(opened.Get()))
        recordset = std::make_unique<AdoRecordset>(DispatchObject(std::move(object)));
    return ToBoolean(result.Get());
}

void ComIaVoucherService::SaveVoucher(std::string_view voucherType, host::DOMDocument& head, host::DOMDocument& body,
                                      std::string& message, host::Connection& connection, host::DOMDocument& result) {
    TextArgument text(message);
    VariantHolder connectionObject = Holder(connection);
    VariantHolder resultDocument = Holder(result);
    service_.Call(L"SaveVoucher", VariantHolder(voucherType), Holder(head), Holder(body), text.Reference(),
                  VariantHolder::ByReference(connectionObject), VariantHolder::ByReference(resultDocument));
    text.TakeBack();
}

ComProvisionPreCheck::ComProvisionPreCheck() : check_(DispatchObject::Create(progid::provisionPreCheck)) {}

bool ComProvisionPreCheck::Check(host::HostLogin& login, std::string& message) {
    TextArgument text(message);
    const VariantHolder result = check_.Call(L"Check", Holder(login), text.Reference());
    text.TakeBack();
    return ToBoolean(result.Get());
}

ComEaiXmlConverter::ComEaiXmlConverter() : converter_(DispatchObject::Create(progid::eaiXmlConverter)) {}

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
    converter_.Call(operation, VariantHolder(rowXml), VariantHolder(rowTag), Holder(records), Holder(columns),
                    VariantHolder(mapping), nothing);
}

void ComEaiXmlConverter::ToXml(const wchar_t* operation, host::DOMNode& element, std::string_view mapping,
                               host::Recordset& records) {
    VariantHolder node(static_cast<IDispatch*>(ComNode(&element).Get()));
    VariantHolder recordset = Holder(records);
    VariantHolder notExamined[2];
    converter_.Call(operation, VariantHolder::ByReference(node), VariantHolder(mapping),
                    VariantHolder::ByReference(recordset), VariantHolder::VariantReference(notExamined[0]),
                    VariantHolder::VariantReference(notExamined[1]));
}

ComRsXmlHelper::ComRsXmlHelper() : helper_(DispatchObject::Create(progid::rsXmlHelper)) {}

std::unique_ptr<host::DOMDocument> ComRsXmlHelper::RecordsetToXml(host::Recordset& recordset) {
    const ComPtr<IDispatch> document = ToObject(helper_.Call(L"RecordsetToXml", Holder(recordset)).Get());
    return std::make_unique<XmlDocument>(document.As<IXMLDOMDocument>());
}

std::unique_ptr<host::RsXmlHelper::VouchData> ComRsXmlHelper::XmlToVouchData(host::DOMDocument& document) {
    ComPtr<IDispatch> data = ToObject(helper_.Call(L"XmlToVouchData", Holder(document)).Get());
    return std::make_unique<ComVouchData>(DispatchObject(std::move(data)));
}

ComZendaT::ComZendaT() : companion_(DispatchObject::Create(progid::zendaT)) {}

bool ComZendaT::AllowAdd(std::string& message, std::shared_ptr<host::VoucherContext>& context,
                         host::Connection& connection) {
    TextArgument text(message);
    ContextArgument contextObject(context);
    VariantHolder connectionObject = Holder(connection);
    const VariantHolder result = companion_.Call(L"AllowAdd", text.Reference(), contextObject.Reference(),
                                                 VariantHolder::ByReference(connectionObject));
    text.TakeBack();
    contextObject.TakeBack();
    return ToBoolean(result.Get());
}

void ComZendaT::OpenDBS(host::Recordset& recordset, host::Connection& connection, std::string_view sql) {
    VariantHolder recordsetObject = Holder(recordset);
    VariantHolder connectionObject = Holder(connection);
    VariantHolder text(sql);
    companion_.Call(L"OpenDBS", VariantHolder::ByReference(recordsetObject),
                    VariantHolder::ByReference(connectionObject), VariantHolder::ByReference(text));
    dynamic_cast<AdoRecordset&>(host::Undecorated(recordset)).Refresh();
}

void ComZendaT::Update(std::string_view workTable, std::string_view resultTable,
                       std::shared_ptr<host::VoucherContext>& context, host::Connection& connection,
                       std::string_view voucherId, bool flag) {
    VariantHolder work(workTable);
    VariantHolder result(resultTable);
    VariantHolder id(voucherId);
    ContextArgument contextObject(context);
    VariantHolder connectionObject = Holder(connection);
    companion_.Call(L"Update", VariantHolder::ByReference(work), VariantHolder::ByReference(result),
                    contextObject.Reference(), VariantHolder::ByReference(connectionObject),
                    VariantHolder::ByReference(id), VariantHolder(flag));
    contextObject.TakeBack();
}

host::Value ComZendaT::GetDefaultTemplateID(std::string_view cardNumber, host::Connection& connection) {
    VariantHolder card(cardNumber);
    VariantHolder connectionObject = Holder(connection);
    return ToValue(companion_
                       .Call(L"GetDefaultTemplateID", VariantHolder::ByReference(card),
                             VariantHolder::ByReference(connectionObject))
                       .Get());
}

host::Value ComZendaT::GetVouchNum(std::shared_ptr<host::VoucherContext>& context, std::string_view voucherType,
                                   host::RsXmlHelper::VouchData& data, bool flag1, bool flag2) {
    ContextArgument contextObject(context);
    VariantHolder type(voucherType);
    VariantHolder dataObject = Holder(dynamic_cast<ComVouchData&>(data).data());
    const VariantHolder number =
        companion_.Call(L"GetVouchNum", contextObject.Reference(), VariantHolder::ByReference(type),
                        VariantHolder::ByReference(dataObject), VariantHolder(flag1), VariantHolder(flag2));
    contextObject.TakeBack();
    return ToValue(number.Get());
}

bool ComZendaT::save(host::DOMDocument& head, host::DOMDocument& rows, int mode, std::string& message,
                     host::Connection& connection, bool flag, std::shared_ptr<host::VoucherContext>& context) {
    VariantHolder headDocument = Holder(head);
    VariantHolder rowsDocument = Holder(rows);
    TextArgument text(message);
    VariantHolder connectionObject = Holder(connection);
    ContextArgument contextObject(context);
    const VariantHolder result =
        companion_.Call(L"save", VariantHolder::ByReference(headDocument), VariantHolder::ByReference(rowsDocument),
                        VariantHolder(mode), text.Reference(), VariantHolder::ByReference(connectionObject),
                        VariantHolder(flag), contextObject.Reference());
    text.TakeBack();
    contextObject.TakeBack();
    return ToBoolean(result.Get());
}

host::Value ComZendaT::GetMaxID(host::Connection& connection, bool flag) {
    VariantHolder connectionObject = Holder(connection);
    return ToValue(
        companion_.Call(L"GetMaxID", VariantHolder::ByReference(connectionObject), VariantHolder(flag)).Get());
}

bool ComZendaT::DoAccount(host::DOMDocument& head, host::DOMDocument& rows,
                          std::shared_ptr<host::VoucherContext>& context, host::Connection& connection, bool flag,
                          std::string& message) {
    VariantHolder headDocument = Holder(head);
    VariantHolder rowsDocument = Holder(rows);
    ContextArgument contextObject(context);
    VariantHolder connectionObject = Holder(connection);
    TextArgument text(message);
    const VariantHolder result = companion_.Call(
        L"DoAccount", VariantHolder::ByReference(headDocument), VariantHolder::ByReference(rowsDocument),
        contextObject.Reference(), VariantHolder::ByReference(connectionObject), VariantHolder(flag), text.Reference());
    contextObject.TakeBack();
    text.TakeBack();
    return ToBoolean(result.Get());
}

} // namespace server
