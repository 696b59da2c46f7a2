#include "tests/support/WatchedHost.h"

#include "tests/support/WatchedDatabase.h"

#include <memory>
#include <utility>

namespace test {
namespace {

using Kind = HostOperation::Kind;

/// A component whose operations are seen before they run. `Pointer` is how it holds the component itself.
template <class Pointer> class Watched : public std::pointer_traits<Pointer>::element_type {
public:
    using Component = typename std::pointer_traits<Pointer>::element_type;

    /// @param watch outlives the component
    Watched(Pointer inner, HostWatch& watch, Kind kind = Kind::component)
        : inner_(std::move(inner)), watch_(watch), kind_(kind) {}

protected:
    /// The component in the course of one operation: what runs until this goes, runs inside that.
    class Asked {
    public:
        Asked(Component& inner, HostWatch& watch) : inner_(inner), inside_(watch) {}
        Component* operator->() const { return &inner_; }

    private:
        Component& inner_;
        HostWatch::Inside inside_;
    };

    /// Has an operation seen, to be asked of what this answers.
    Asked Ask(std::string_view name, std::string_view text = {}) const {
        watch_.Notice({.kind = kind_, .name = name, .text = text});
        return {*inner_, watch_};
    }
    HostWatch& watch() const { return watch_; }

private:
    Pointer inner_;
    HostWatch& watch_;
    Kind kind_;
};

class WatchedLogin : public Watched<host::HostLogin*> {
public:
    using Watched::Watched;

    host::Value Member(std::string_view name) const override { return Ask("Member", name)->Member(name); }
    bool SubsystemLogin(const std::string& subsystemId, const std::string& accountId, const std::string& year,
                        const std::string& userId, const std::string& password, const std::string& date,
                        const std::string& server, const std::string& serial) override {
        return Ask("SubsystemLogin", subsystemId)
            ->SubsystemLogin(subsystemId, accountId, year, userId, password, date, server, serial);
    }
    std::string LoginYear() const override { return Ask("LoginYear")->LoginYear(); }
    std::string ConnectionString() const override { return Ask("ConnectionString")->ConnectionString(); }
    std::string AccountId() const override { return Ask("AccountId")->AccountId(); }
    std::string UserName() const override { return Ask("UserName")->UserName(); }
    host::Value CurrentDate() const override { return Ask("CurrentDate")->CurrentDate(); }
    int AccountingMonth() const override { return Ask("AccountingMonth")->AccountingMonth(); }
    int StartPeriod() const override { return Ask("StartPeriod")->StartPeriod(); }
    PeriodRange PeriodDates(int period, int year) override { return Ask("PeriodDates")->PeriodDates(period, year); }
};

class WatchedEaiHelper : public Watched<host::EaiHelper*> {
public:
    using Watched::Watched;

    std::string GetAttr(host::DOMNode* element, std::string_view name) override {
        return Ask("GetAttr", name)->GetAttr(element, name);
    }
    std::string GetChildText(const host::DOMNode* node, std::string_view name) override {
        return Ask("GetChildText", name)->GetChildText(node, name);
    }
    std::string MakeErrorResult(std::string_view code, std::string_view message, std::string_view detail) override {
        return Ask("MakeErrorResult", code)->MakeErrorResult(code, message, detail);
    }
    std::string MakeResultDoc(std::string_view docid, std::string_view proc) override {
        return Ask("MakeResultDoc", docid)->MakeResultDoc(docid, proc);
    }
    void AddResultItem(host::DOMDocument& resultDocument, std::string_view key, long code,
                       std::string_view description) override {
        Ask("AddResultItem", key)->AddResultItem(resultDocument, key, code, description);
    }
};

class WatchedRsXmlHelper : public Watched<host::RsXmlHelper*> {
public:
    using Watched::Watched;

    std::unique_ptr<host::DOMDocument> RecordsetToXml(host::Recordset& recordset) override {
        return Ask("RecordsetToXml")->RecordsetToXml(recordset);
    }
    std::unique_ptr<VouchData> XmlToVouchData(host::DOMDocument& document) override {
        return Ask("XmlToVouchData")->XmlToVouchData(document);
    }
};

class WatchedConverter : public Watched<std::unique_ptr<host::EaiXmlConverter>> {
public:
    using Watched::Watched;

    void FillHead(std::string_view rowXml, std::string_view rowTag, host::DOMDocument& head, host::Recordset& columns,
                  std::string_view mapping) override {
        Ask("FillHead", mapping)->FillHead(rowXml, rowTag, head, columns, mapping);
    }
    void FillBody(std::string_view rowXml, std::string_view rowTag, host::DOMDocument& body, host::Recordset& columns,
                  std::string_view mapping) override {
        Ask("FillBody", mapping)->FillBody(rowXml, rowTag, body, columns, mapping);
    }
    void HeadToXml(host::DOMDocument& document, host::DOMNode& element, std::string_view mapping,
                   host::Recordset& head) override {
        Ask("HeadToXml", mapping)->HeadToXml(document, element, mapping, head);
    }
    void BodyToXml(host::DOMDocument& document, host::DOMNode& element, std::string_view mapping,
                   host::Recordset& body) override {
        Ask("BodyToXml", mapping)->BodyToXml(document, element, mapping, body);
    }
};

class WatchedContext : public Watched<std::shared_ptr<host::VoucherContext>> {
public:
    using Watched::Watched;

    host::HostLogin& Login() override { return Ask("ContextLogin")->Login(); }
};

class WatchedVoucherService : public Watched<std::unique_ptr<host::IaVoucherService>> {
public:
    using Watched::Watched;

    std::shared_ptr<host::VoucherContext> Context(host::HostLogin& login) override {
        return std::make_shared<WatchedContext>(Ask("Context")->Context(login), watch());
    }
    bool VoucherInit(host::HostLogin& login, std::string& message) override {
        return Ask("VoucherInit")->VoucherInit(login, message);
    }
    bool GetDefaultTemplate(std::string_view voucherType, std::unique_ptr<host::Recordset>& recordset,
                            std::string& message, std::string& further) override {
        return Ask("GetDefaultTemplate", voucherType)->GetDefaultTemplate(voucherType, recordset, message, further);
    }
    void SaveVoucher(std::string_view voucherType, host::DOMDocument& head, host::DOMDocument& body,
                     std::string& message, host::Connection& connection, host::DOMDocument& result) override {
        Ask("SaveVoucher", voucherType)->SaveVoucher(voucherType, head, body, message, connection, result);
    }
};

class WatchedPreCheck : public Watched<std::unique_ptr<host::ProvisionPreCheck>> {
public:
    using Watched::Watched;

    bool Check(host::HostLogin& login, std::string& message) override { return Ask("Check")->Check(login, message); }
};

class WatchedZendaT : public Watched<std::unique_ptr<host::ZendaT>> {
public:
    using Watched::Watched;

    bool AllowAdd(std::string& message, std::shared_ptr<host::VoucherContext>& context,
                  host::Connection& connection) override {
        return Ask("AllowAdd")->AllowAdd(message, context, connection);
    }
    void OpenDBS(host::Recordset& recordset, host::Connection& connection, std::string_view sql) override {
        Ask("OpenDBS", sql)->OpenDBS(recordset, connection, sql);
    }
    void Update(std::string_view workTable, std::string_view resultTable,
                std::shared_ptr<host::VoucherContext>& context, host::Connection& connection,
                std::string_view voucherId, bool flag) override {
        Ask("Update", workTable)->Update(workTable, resultTable, context, connection, voucherId, flag);
    }
    host::Value GetDefaultTemplateID(std::string_view cardNumber, host::Connection& connection) override {
        return Ask("GetDefaultTemplateID", cardNumber)->GetDefaultTemplateID(cardNumber, connection);
    }
    host::Value GetVouchNum(std::shared_ptr<host::VoucherContext>& context, std::string_view voucherType,
                            host::RsXmlHelper::VouchData& data, bool flag1, bool flag2) override {
        return Ask("GetVouchNum", voucherType)->GetVouchNum(context, voucherType, data, flag1, flag2);
    }
    bool save(host::DOMDocument& head, host::DOMDocument& rows, int mode, std::string& message,
              host::Connection& connection, bool flag, std::shared_ptr<host::VoucherContext>& context) override {
        return Ask("save")->save(head, rows, mode, message, connection, flag, context);
    }
    host::Value GetMaxID(host::Connection& connection, bool flag) override {
        return Ask("GetMaxID")->GetMaxID(connection, flag);
    }
    bool DoAccount(host::DOMDocument& head, host::DOMDocument& rows, std::shared_ptr<host::VoucherContext>& context,
                   host::Connection& connection, bool flag, std::string& message) override {
        return Ask("DoAccount")->DoAccount(head, rows, context, connection, flag, message);
    }
};

} // namespace

WatchedEnvironment::WatchedEnvironment(BeforeOperation before, refhost::DatabaseOpener opener, refhost::Trace* trace)
    : Traced(trace, std::move(opener)), watch_(std::move(before)) {}

WatchedEnvironment::~WatchedEnvironment() = default;

std::unique_ptr<host::HostLogin> WatchedEnvironment::Watch(host::HostLogin& login) {
    return std::make_unique<WatchedLogin>(&login, watch_);
}

std::unique_ptr<host::DOMDocument> WatchedEnvironment::CreateDOMDocument() {
    watch_.Notice({.kind = Kind::creation, .name = "DOMDocument"});
    return Traced::CreateDOMDocument();
}

std::unique_ptr<host::Connection> WatchedEnvironment::CreateConnection() {
    watch_.Notice({.kind = Kind::creation, .name = "Connection"});
    return std::make_unique<WatchedConnection>(Traced::CreateConnection(), watch_);
}

std::unique_ptr<host::Recordset> WatchedEnvironment::CreateRecordset() {
    watch_.Notice({.kind = Kind::creation, .name = "Recordset"});
    return std::make_unique<WatchedRecordset>(Traced::CreateRecordset(), watch_);
}

host::EaiHelper& WatchedEnvironment::GetEaiHelper() {
    if (!eaiHelper_) {
        watch_.Notice({.kind = Kind::creation, .name = "EaiHelper"});
        eaiHelper_ = std::make_unique<WatchedEaiHelper>(&Traced::GetEaiHelper(), watch_, Kind::helper);
    }
    return *eaiHelper_;
}

host::RsXmlHelper& WatchedEnvironment::GetRsXmlHelper() {
    if (!rsXmlHelper_) {
        watch_.Notice({.kind = Kind::creation, .name = "RsXmlHelper"});
        rsXmlHelper_ = std::make_unique<WatchedRsXmlHelper>(&Traced::GetRsXmlHelper(), watch_);
    }
    return *rsXmlHelper_;
}

std::unique_ptr<host::EaiXmlConverter> WatchedEnvironment::CreateEaiXmlConverter() {
    watch_.Notice({.kind = Kind::creation, .name = "EaiXmlConverter"});
    return std::make_unique<WatchedConverter>(Traced::CreateEaiXmlConverter(), watch_);
}

std::unique_ptr<host::IaVoucherService> WatchedEnvironment::CreateIaVoucherService() {
    watch_.Notice({.kind = Kind::creation, .name = "IaVoucherService"});
    return std::make_unique<WatchedVoucherService>(Traced::CreateIaVoucherService(), watch_);
}

std::unique_ptr<host::ProvisionPreCheck> WatchedEnvironment::CreateProvisionPreCheck() {
    watch_.Notice({.kind = Kind::creation, .name = "ProvisionPreCheck"});
    return std::make_unique<WatchedPreCheck>(Traced::CreateProvisionPreCheck(), watch_);
}

std::unique_ptr<host::ZendaT> WatchedEnvironment::CreateZendaT() {
    watch_.Notice({.kind = Kind::creation, .name = "ZendaT"});
    return std::make_unique<WatchedZendaT>(Traced::CreateZendaT(), watch_);
}

void WatchedEnvironment::ShowMessage(std::string_view text) {
    watch_.Notice({.kind = Kind::component, .name = "ShowMessage", .text = text});
}

} // namespace test
