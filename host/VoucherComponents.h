#pragma once

#include "host/DOMDocument.h"
#include "host/Database.h"
#include "host/HostLogin.h"

#include <memory>
#include <string>
#include <string_view>

namespace host {

/// What the host's voucher components hand around as the setting they work in: it carries the caller's login.
class VoucherContext {
public:
    virtual ~VoucherContext() = default;

    /// The login that the context was made from.
    virtual HostLogin& Login() = 0;
};

/// The host's inventory-accounting voucher component. Every member may throw `Error`.
class IaVoucherService {
public:
    virtual ~IaVoucherService() = default;

    /// The voucher context of `login`, for the companion component.
    virtual std::shared_ptr<VoucherContext> Context(HostLogin& login) = 0;

    /// Prepares the component. @return false, with `message` filled, when it refuses
    virtual bool VoucherInit(HostLogin& login, std::string& message) = 0;

    /// Opens the default template of a voucher type.
    /// @param voucherType for example "48"
    /// @param recordset receives the template, with the field `VT_ID`; stays empty when there is none
    /// @param further a further text the component may fill
    /// @return whether there was one to open
    virtual bool GetDefaultTemplate(std::string_view voucherType, std::unique_ptr<Recordset>& recordset,
                                    std::string& message, std::string& further) = 0;

    /// Saves a voucher from its head and body records (`z:row` elements).
    /// @param message filled on failure
    /// @param result filled with check results (`zeroout`, `itemcheck`)
    virtual void SaveVoucher(std::string_view voucherType, DOMDocument& head, DOMDocument& body, std::string& message,
                             Connection& connection, DOMDocument& result) = 0;
};

/// The host's check whether provisions may be made now. May throw `Error`.
class ProvisionPreCheck {
public:
    virtual ~ProvisionPreCheck() = default;

    /// @return false, with the reason in `message`, when they may not
    virtual bool Check(HostLogin& login, std::string& message) = 0;
};

/// The host's converter between request elements and records, driven by mapping files. Every member may throw `Error`.
class EaiXmlConverter {
public:
    virtual ~EaiXmlConverter() = default;

    /// Fills `head` (a saved template) with the head record of a request row.
    /// @param rowXml the row element's XML text
    /// @param rowTag the row element's name
    /// @param mapping name of the mapping file, for example "EaiProof.Xml"
    virtual void FillHead(std::string_view rowXml, std::string_view rowTag, DOMDocument& head, Recordset& columns,
                          std::string_view mapping) = 0;
    /// Fills `body` with the body records of a request row; arguments as above.
    virtual void FillBody(std::string_view rowXml, std::string_view rowTag, DOMDocument& body, Recordset& columns,
                          std::string_view mapping) = 0;
    /// Writes the current head record into `element`, a new element of `document`.
    virtual void HeadToXml(DOMDocument& document, DOMNode& element, std::string_view mapping, Recordset& head) = 0;
    /// Adds every body record to `element`.
    virtual void BodyToXml(DOMDocument& document, DOMNode& element, std::string_view mapping, Recordset& body) = 0;
};

/// The host's translator of recordsets; one instance a thread. Every member may throw `Error`.
class RsXmlHelper {
public:
    virtual ~RsXmlHelper() = default;

    /// What `ZendaT::GetVouchNum` takes as voucher data.
    class VouchData {
    public:
        virtual ~VouchData() = default;
    };

    /// The recordset in the ADO persistence layout (`z:row` elements under `rs:data`).
    virtual std::unique_ptr<DOMDocument> RecordsetToXml(Recordset& recordset) = 0;
    virtual std::unique_ptr<VouchData> XmlToVouchData(DOMDocument& document) = 0;
};

/// The host's cost-adjustment component `ZendaTool.clsZendaT`. Every member may throw `Error`.
/// Operations that take a context may replace it.
class ZendaT {
public:
    virtual ~ZendaT() = default;

    /// Whether price adjustments may be added now. @param message filled with the reason when not
    virtual bool AllowAdd(std::string& message, std::shared_ptr<VoucherContext>& context, Connection& connection) = 0;
    /// Opens `recordset` on `sql`; an open one is closed first.
    virtual void OpenDBS(Recordset& recordset, Connection& connection, std::string_view sql) = 0;
    /// Creates and fills `resultTable` with the voucher's rows and their adjusted amounts from `workTable`.
    virtual void Update(std::string_view workTable, std::string_view resultTable,
                        std::shared_ptr<VoucherContext>& context, Connection& connection, std::string_view voucherId,
                        bool flag) = 0;
    /// The default template identifier of a voucher card ("IA51").
    virtual Value GetDefaultTemplateID(std::string_view cardNumber, Connection& connection) = 0;
    /// The next voucher number, as text.
    virtual Value GetVouchNum(std::shared_ptr<VoucherContext>& context, std::string_view voucherType,
                              RsXmlHelper::VouchData& data, bool flag1, bool flag2) = 0;
    /// Saves the voucher. @return true when saved, else `message` is filled
    virtual bool save(DOMDocument& head, DOMDocument& rows, int mode, std::string& message, Connection& connection,
                      bool flag, std::shared_ptr<VoucherContext>& context) = 0;
    /// The identifier of the voucher just saved.
    virtual Value GetMaxID(Connection& connection, bool flag) = 0;
    /// Posts the voucher to the ledger. @return true when posted
    virtual bool DoAccount(DOMDocument& head, DOMDocument& rows, std::shared_ptr<VoucherContext>& context,
                           Connection& connection, bool flag, std::string& message) = 0;
};

} // namespace host
