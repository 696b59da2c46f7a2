#include "tests/support/WatchedHost.h"

#include "tests/support/WatchedDatabase.h"

#include <utility>

namespace test {
namespace {

using Kind = HostOperation::Kind;

/// What every watched component is made of.
class Watched {
protected:
    explicit Watched(HostWatch& watch, Kind kind = Kind::component) : watch_(watch), kind_(kind) {}

    /// Has the operation seen; what runs until the result is released, runs inside it.
    [[nodiscard]] HostWatch::Inside Enter(std::string_view name, std::string_view text = {}) const {
        watch_.Notice({.kind = kind_, .name = name, .text = text});
        return HostWatch::Inside(watch_);
    }
    HostWatch& watch() const { return watch_; }

private:
    HostWatch& watch_;
    Kind kind_;
};

class WatchedLogin : public host::HostLogin, Watched {
public:
    WatchedLogin(host::HostLogin& inner, HostWatch& watch) : Watched(watch), inner_(inner) {}

    host::Value Member(std::string_view name) const override {
        const auto inside = Enter("Member", name);
        return inner_.Member(name);
    }
    bool SubsystemLogin(const std::string& subsystemId, const std::string& accountId, const std::string& year,
                        const std::string& userId, const std::string& password, const std::string& date,
                        const std::string& server, const std::string& serial) override {
        const auto inside = Enter("SubsystemLogin", subsystemId);
        return inner_.SubsystemLogin(subsystemId, accountId, year, userId, password, date, server, serial);
    }
    std::string LoginYear() const override {
        const auto inside = Enter("LoginYear");
        return inner_.LoginYear();
    }
    std::string ConnectionString() const override {
        const auto inside = Enter("ConnectionString");
        return inner_.ConnectionString();
    }
    std::string AccountId() const override {
        const auto inside = Enter("AccountId");
        return inner_.AccountId();
    }
    std::string UserName() const override {
        const auto inside = Enter("UserName");
        return inner_.UserName();
    }
    host::Value CurrentDate() const override {
        const auto inside = Enter("CurrentDate");
        return inner_.CurrentDate();
    }
    int AccountingMonth() const override {
        const auto inside = Enter("AccountingMonth");
        return inner_.AccountingMonth();
    }
    int StartPeriod() const override {
        const auto inside = Enter("StartPeriod");
        return inner_.StartPeriod();
    }
    PeriodRange PeriodDates(int period, int year) override {
        const auto inside = Enter("PeriodDates");
        return inner_.PeriodDates(period, year);
    }

private:
    host::HostLogin& inner_;
};

class WatchedEaiHelper : public host::EaiHelper, Watched {
public:
    WatchedEaiHelper(host::EaiHelper& inner, HostWatch& watch) : Watched(watch, Kind::helper), inner_(inner) {}

    std::string GetAttr(host::DOMNode* element, std::string_view name) override {
        const auto inside = Enter("GetAttr", name);
        return inner_.GetAttr(element, name);
    }
    std::string GetChildText(const host::DOMNode* node, std::string_view name) override {
        const auto inside = Enter("GetChildText", name);
        return inner_.GetChildText(node, name);
    }
    std::string MakeErrorResult(std::string_view code, std::string_view message, std::string_view detail) override {
        const auto inside = Enter("MakeErrorResult", code);
        return inner_.MakeErrorResult(code, message, detail);
    }
    std::string MakeResultDoc(std::string_view docid, std::string_view proc) override {
        const auto inside = Enter("MakeResultDoc", docid);
        return inner_.MakeResultDoc(docid, proc);
    }
    void AddResultItem(host::DOMDocument& resultDocument, std::string_view key, long code,
                       std::string_view description) override {
        const auto inside = Enter("AddResultItem", key);
        inner_.AddResultItem(resultDocument, key, code, description);
    }

private:
    host::EaiHelper& inner_;
};

class WatchedRsXmlHelper : public host::RsXmlHelper, Watched {
public:
    WatchedRsXmlHelper(host::RsXmlHelper& inner, HostWatch& watch) : Watched(watch), inner_(inner) {}

    std::unique_ptr<host::DOMDocument> RecordsetToXml(host::Recordset& recordset) override {
        const auto inside = Enter("RecordsetToXml");
        return inner_.RecordsetToXml(recordset);
    }
    std::unique_ptr<VouchData> XmlToVouchData(host::DOMDocument& document) override {
        const auto inside = Enter("XmlToVouchData");
        return inner_.XmlToVouchData(document);
    }

private:
    host::RsXmlHelper& inner_;
};

class WatchedConverter : public host::EaiXmlConverter, Watched {
public:
    WatchedConverter(std::unique_ptr<host::EaiXmlConverter> inner, HostWatch& watch)
        : Watched(watch), inner_(std::move(inner)) {}

    void FillHead(std::string_view rowXml, std::string_view rowTag, host::DOMDocument& head, host::Recordset& columns,
                  std::string_view mapping) override {
        const auto inside = Enter("FillHead", mapping);
        inner_->FillHead(rowXml, rowTag, head, columns, mapping);
    }
    void FillBody(std::string_view rowXml, std::string_view rowTag, host::DOMDocument& body, host::Recordset& columns,
                  std::string_view mapping) override {
        const auto inside = Enter("FillBody", mapping);
        inner_->FillBody(rowXml, rowTag, body, columns, mapping);
    }
    void HeadToXml(host::DOMDocument& document, host::DOMNode& element, std::string_view mapping,
                   host::Recordset& head) override {
        const auto inside = Enter("HeadToXml", mapping);
        inner_->HeadToXml(document, element, mapping, head);
    }
    void BodyToXml(host::DOMDocument& document, host::DOMNode& element, std::string_view mapping,
                   host::Recordset& body) override {
        const auto inside = Enter("BodyToXml", mapping);
        inner_->BodyToXml(document, element, mapping, body);
    }

private:
    std::unique_ptr<host::EaiXmlConverter> inner_;
};

class WatchedContext : public host::VoucherContext, Watched {
public:
    WatchedContext(std::shared_ptr<host::VoucherContext> inner, HostWatch& watch)
        : Watched(watch), inner_(std::move(inner)) {}

    host::HostLogin& Login() override {
        const auto inside = Enter("ContextLogin");
        return inner_->Login();
    }

private:
    std::shared_ptr<host::VoucherContext> inner_;
};

class WatchedVoucherService : public host::IaVoucherService, Watched {
public:
    WatchedVoucherService(std::unique_ptr<host::IaVoucherService> inner, HostWatch& watch)
        : Watched(watch), inner_(std::move(inner)) {}

    std::shared_ptr<host::VoucherContext> Context(host::HostLogin& login) override {
        const auto inside = Enter("Context");
        return std::make_shared<WatchedContext>(inner_->Context(login), watch());
    }
    bool VoucherInit(host::HostLogin& login, std::string& message) override {
        const auto inside = Enter("VoucherInit");
        return inner_->VoucherInit(login, message);
    }
    bool GetDefaultTemplate(std::string_view voucherType, std::unique_ptr<host::Recordset>& recordset,
                            std::string& message, std::string& further) override {
        const auto inside = Enter("GetDefaultTemplate", voucherType);
        return inner_->GetDefaultTemplate(voucherType, recordset, message, further);
    }
    void SaveVoucher(std::string_view voucherType, host::DOMDocument& head, host::DOMDocument& body,
                     std::string& message, host::Connection& connection, host::DOMDocument& result) override {
        const auto inside = Enter("SaveVoucher", voucherType);
        inner_->SaveVoucher(voucherType, head, body, message, connection, result);
    }

private:
    std::unique_ptr<host::IaVoucherService> inner_;
};

class WatchedPreCheck : public host::ProvisionPreCheck, Watched {
public:
    WatchedPreCheck(std::unique_ptr<host::ProvisionPreCheck> inner, HostWatch& watch)
        : Watched(watch), inner_(std::move(inner)) {}

    bool Check(host::HostLogin& login, std::string& message) override {
        const auto inside = Enter("Check");
        return inner_->Check(login, message);
    }

private:
    std::unique_ptr<host::ProvisionPreCheck> inner_;
};

class WatchedZendaT : public host::ZendaT, Watched {
public:
    WatchedZendaT(std::unique_ptr<host::ZendaT> inner, HostWatch& watch) : Watched(watch), inner_(std::move(inner)) {}

    bool AllowAdd(std::string& message, std::shared_ptr<host::VoucherContext>& context,
                  host::Connection& connection) override {
        const auto inside = Enter("AllowAdd");
        return inner_->AllowAdd(message, context, connection);
    }
    void OpenDBS(host::Recordset& recordset, host::Connection& connection, std::string_view sql) override {
        const auto inside = Enter("OpenDBS", sql);
        inner_->OpenDBS(recordset, connection, sql);
    }
    void Update(std::string_view workTable, std::string_view resultTable,
                std::shared_ptr<host::VoucherContext>& context, host::Connection& connection,
                std::string_view voucherId, bool flag) override {
        const auto inside = Enter("Update", workTable);
        inner_->Update(workTable, resultTable, context, connection, voucherId, flag);
    }
    host::Value GetDefaultTemplateID(std::string_view cardNumber, host::Connection& connection) override {
        const auto inside = Enter("GetDefaultTemplateID", cardNumber);
        return inner_->GetDefaultTemplateID(cardNumber, connection);
    }
    host::Value GetVouchNum(std::shared_ptr<host::VoucherContext>& context, std::string_view voucherType,
                            host::RsXmlHelper::VouchData& data, bool flag1, bool flag2) override {
        const auto inside = Enter("GetVouchNum", voucherType);
        return inner_->GetVouchNum(context, voucherType, data, flag1, flag2);
    }
    bool save(host::DOMDocument& head, host::DOMDocument& rows, int mode, std::string& message,
              host::Connection& connection, bool flag, std::shared_ptr<host::VoucherContext>& context) override {
        const auto inside = Enter("save");
        return inner_->save(head, rows, mode, message, connection, flag, context);
    }
    host::Value GetMaxID(host::Connection& connection, bool flag) override {
        const auto inside = Enter("GetMaxID");
        return inner_->GetMaxID(connection, flag);
    }
    bool DoAccount(host::DOMDocument& head, host::DOMDocument& rows, std::shared_ptr<host::VoucherContext>& context,
                   host::Connection& connection, bool flag, std::string& message) override {
        const auto inside = Enter("DoAccount");
        return inner_->DoAccount(head, rows, context, connection, flag, message);
    }

private:
    std::unique_ptr<host::ZendaT> inner_;
};

} // namespace

WatchedEnvironment::WatchedEnvironment(BeforeOperation before, refhost::DatabaseOpener opener, refhost::Trace* trace)
    : Traced(trace, std::move(opener)), watch_(std::move(before)) {}

WatchedEnvironment::~WatchedEnvironment() = default;

std::unique_ptr<host::HostLogin> WatchedEnvironment::Watch(host::HostLogin& login) {
    return std::make_unique<WatchedLogin>(login, watch_);
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
        eaiHelper_ = std::make_unique<WatchedEaiHelper>(Traced::GetEaiHelper(), watch_);
    }
    return *eaiHelper_;
}

host::RsXmlHelper& WatchedEnvironment::GetRsXmlHelper() {
    if (!rsXmlHelper_) {
        watch_.Notice({.kind = Kind::creation, .name = "RsXmlHelper"});
        rsXmlHelper_ = std::make_unique<WatchedRsXmlHelper>(Traced::GetRsXmlHelper(), watch_);
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
