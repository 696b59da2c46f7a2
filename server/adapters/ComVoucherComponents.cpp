#include "server/adapters/ComVoucherComponents.h"

#include "server/adapters/ObjectArguments.h"
#include "server/adapters/ProgIds.h"
#include "server/adapters/XmlDocument.h"

namespace server {

namespace {

class ComIaVoucherService final : public host::IaVoucherService {
public:
    explicit ComIaVoucherService(RecordClasses& classes)
        : recordsets_(classes.recordsets), service_(classes.services.Create()) {}

    std::shared_ptr<host::VoucherContext> Context(host::HostLogin& login) override {
        ComPtr<IDispatch> context = ToObject(service_.Call(L"Context", ByValue(login)).Get());
        return std::make_shared<ComVoucherContext>(DispatchObject(std::move(context)));
    }
    bool VoucherInit(host::HostLogin& login, std::string& message) override {
        return ToBoolean(service_.Call(L"VoucherInit", ByValue(login), TextReference(message)).Get());
    }
    bool GetDefaultTemplate(std::string_view voucherType, std::unique_ptr<host::Recordset>& recordset,
                            std::string& message, std::string& further) override {
        const bool made = !recordset;
        const VariantHolder found = service_.Call(
            L"GetDefaultTemplate", VariantHolder(voucherType), ObjectReference(recordset), TextReference(message),
            TextReference(further), VariantHolder(std::string_view()), VariantHolder(0));
        if (made && recordset)
            recordset = std::make_unique<AdoRecordset>(ComRecordset(*recordset).object(), recordsets_);
        return ToBoolean(found.Get());
    }
    void SaveVoucher(std::string_view voucherType, host::DOMDocument& head, host::DOMDocument& body,
                     std::string& message, host::Connection& connection, host::DOMDocument& result) override {
        service_.Call(L"SaveVoucher", VariantHolder(voucherType), ByValue(head), ByValue(body), TextReference(message),
                      ObjectReference(connection), ObjectReference(result));
    }

private:
    const AdoRecordsetClass& recordsets_;
    DispatchObject service_;
};

class ComProvisionPreCheck final : public host::ProvisionPreCheck {
public:
    explicit ComProvisionPreCheck(RecordClasses& classes) : check_(classes.preChecks.Create()) {}

    bool Check(host::HostLogin& login, std::string& message) override {
        return ToBoolean(check_.Call(L"Check", ByValue(login), TextReference(message)).Get());
    }

private:
    DispatchObject check_;
};

class ComEaiXmlConverter final : public host::EaiXmlConverter {
public:
    explicit ComEaiXmlConverter(RecordClasses& classes) : converter_(classes.converters.Create()) {}

    void FillHead(std::string_view rowXml, std::string_view rowTag, host::DOMDocument& head, host::Recordset& columns,
                  std::string_view mapping) override {
        Fill(L"FillHead", rowXml, rowTag, head, columns, mapping);
    }
    void FillBody(std::string_view rowXml, std::string_view rowTag, host::DOMDocument& body, host::Recordset& columns,
                  std::string_view mapping) override {
        Fill(L"FillBody", rowXml, rowTag, body, columns, mapping);
    }
    void HeadToXml(host::DOMDocument&, host::DOMNode& element, std::string_view mapping,
                   host::Recordset& head) override {
        ToXml(L"HeadToXml", element, mapping, head);
    }
    void BodyToXml(host::DOMDocument&, host::DOMNode& element, std::string_view mapping,
                   host::Recordset& body) override {
        ToXml(L"BodyToXml", element, mapping, body);
    }

private:
    void Fill(const wchar_t* operation, std::string_view rowXml, std::string_view rowTag, host::DOMDocument& records,
              host::Recordset& columns, std::string_view mapping) {
        const VariantHolder nothing(static_cast<IDispatch*>(nullptr));
        converter_.Call(operation, VariantHolder(rowXml), VariantHolder(rowTag), ByValue(records), ByValue(columns),
                        VariantHolder(mapping), nothing);
    }
    void ToXml(const wchar_t* operation, host::DOMNode& element, std::string_view mapping, host::Recordset& records) {
        host::DOMNode* node = &element;
        VariantHolder notExamined[2];
        converter_.Call(operation, ObjectReference(node), VariantHolder(mapping), ObjectReference(records),
                        VariantHolder::VariantReference(notExamined[0]),
                        VariantHolder::VariantReference(notExamined[1]));
    }

    DispatchObject converter_;
};

class ComRsXmlHelper final : public host::RsXmlHelper {
public:
    ComRsXmlHelper() : helper_(DispatchObject::Create(progid::rsXmlHelper)) {}

    std::unique_ptr<host::DOMDocument> RecordsetToXml(host::Recordset& recordset) override {
        const ComPtr<IDispatch> document = ToObject(helper_.Call(L"RecordsetToXml", ByValue(recordset)).Get());
        return std::make_unique<XmlDocument>(document.As<IXMLDOMDocument>());
    }
    std::unique_ptr<host::RsXmlHelper::VouchData> XmlToVouchData(host::DOMDocument& document) override {
        ComPtr<IDispatch> data = ToObject(helper_.Call(L"XmlToVouchData", ByValue(document)).Get());
        return std::make_unique<ComVouchData>(DispatchObject(std::move(data)));
    }

private:
    DispatchObject helper_;
};

class ComZendaT final : public host::ZendaT {
public:
    ComZendaT() : companion_(DispatchObject::Create(progid::zendaT)) {}

    bool AllowAdd(std::string& message, std::shared_ptr<host::VoucherContext>& context,
                  host::Connection& connection) override {
        return ToBoolean(
            companion_.Call(L"AllowAdd", TextReference(message), ObjectReference(context), ObjectReference(connection))
                .Get());
    }
    void OpenDBS(host::Recordset& recordset, host::Connection& connection, std::string_view sql) override {
        companion_.Call(L"OpenDBS", ObjectReference(recordset), ObjectReference(connection), UnreadReference(sql));
    }
    void Update(std::string_view workTable, std::string_view resultTable,
                std::shared_ptr<host::VoucherContext>& context, host::Connection& connection,
                std::string_view voucherId, bool flag) override {
        companion_.Call(L"Update", UnreadReference(workTable), UnreadReference(resultTable), ObjectReference(context),
                        ObjectReference(connection), UnreadReference(voucherId), VariantHolder(flag));
    }
    host::Value GetDefaultTemplateID(std::string_view cardNumber, host::Connection& connection) override {
        return ToValue(
            companion_.Call(L"GetDefaultTemplateID", UnreadReference(cardNumber), ObjectReference(connection)).Get());
    }
    host::Value GetVouchNum(std::shared_ptr<host::VoucherContext>& context, std::string_view voucherType,
                            host::RsXmlHelper::VouchData& data, bool flag1, bool flag2) override {
        return ToValue(companion_
                           .Call(L"GetVouchNum", ObjectReference(context), UnreadReference(voucherType),
                                 ObjectReference(data), VariantHolder(flag1), VariantHolder(flag2))
                           .Get());
    }
    bool save(host::DOMDocument& head, host::DOMDocument& rows, int mode, std::string& message,
              host::Connection& connection, bool flag, std::shared_ptr<host::VoucherContext>& context) override {
        return ToBoolean(companion_
                             .Call(L"save", ObjectReference(head), ObjectReference(rows), VariantHolder(mode),
                                   TextReference(message), ObjectReference(connection), VariantHolder(flag),
                                   ObjectReference(context))
                             .Get());
    }
    host::Value GetMaxID(host::Connection& connection, bool flag) override {
        return ToValue(companion_.Call(L"GetMaxID", ObjectReference(connection), VariantHolder(flag)).Get());
    }
    bool DoAccount(host::DOMDocument& head, host::DOMDocument& rows, std::shared_ptr<host::VoucherContext>& context,
                   host::Connection& connection, bool flag, std::string& message) override {
        return ToBoolean(companion_
                             .Call(L"DoAccount", ObjectReference(head), ObjectReference(rows), ObjectReference(context),
                                   ObjectReference(connection), VariantHolder(flag), TextReference(message))
                             .Get());
    }

private:
    DispatchObject companion_;
};

} // namespace

host::HostLogin& ComVoucherContext::Login() {
    if (!login_)
        login_ = std::make_unique<ComLogin>(DispatchObject(ToObject(context_.Get(L"Login").Get())));
    return *login_;
}

std::unique_ptr<host::IaVoucherService> MakeIaVoucherService(RecordClasses& classes) {
    return std::make_unique<ComIaVoucherService>(classes);
}

std::unique_ptr<host::ProvisionPreCheck> MakeProvisionPreCheck(RecordClasses& classes) {
    return std::make_unique<ComProvisionPreCheck>(classes);
}

std::unique_ptr<host::EaiXmlConverter> MakeEaiXmlConverter(RecordClasses& classes) {
    return std::make_unique<ComEaiXmlConverter>(classes);
}

std::unique_ptr<host::RsXmlHelper> MakeRsXmlHelper() { return std::make_unique<ComRsXmlHelper>(); }

std::unique_ptr<host::ZendaT> MakeZendaT() { return std::make_unique<ComZendaT>(); }

} // namespace server
