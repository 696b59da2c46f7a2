#pragma once

#include "host/DOMDocument.h"
#include "host/Database.h"
#include "host/EaiHelper.h"
#include "host/Error.h"
#include "host/HostLogin.h"
#include "host/Value.h"
#include "host/VoucherComponents.h"

#include <memory>
#include <string_view>

namespace host {

/// What stands behind a handle.
///
/// A document, node, connection or recordset is a handle on an object, as a variable of the host's language is. An
/// operation of a host component that takes one by reference (and not `const`) may put another object behind it, or
/// none, just as it may replace a `shared_ptr` or `unique_ptr` that it is given: what stands there after the call,
/// ended well or by an error, is what the caller goes on with. An object of another type throws 13 from the operation.
/// A handle with no object behind it throws 91 at its next use.
///
/// The world a class works in: it creates documents, connections, recordsets and host components.
/// Every member throws `Error` 429 when what it is asked for cannot be created.
class Environment {
public:
    virtual ~Environment() = default;

    virtual std::unique_ptr<DOMDocument> CreateDOMDocument() = 0;
    virtual std::unique_ptr<Connection> CreateConnection() = 0;
    virtual std::unique_ptr<Recordset> CreateRecordset() = 0;

    /// The thread's helper, created on first use.
    virtual EaiHelper& GetEaiHelper() = 0;
    /// The thread's recordset translator, created on first use.
    virtual RsXmlHelper& GetRsXmlHelper() = 0;

    virtual std::unique_ptr<EaiXmlConverter> CreateEaiXmlConverter() = 0;
    virtual std::unique_ptr<IaVoucherService> CreateIaVoucherService() = 0;
    virtual std::unique_ptr<ProvisionPreCheck> CreateProvisionPreCheck() = 0;
    /// Creates `ZendaTool.clsZendaT`.
    virtual std::unique_ptr<ZendaT> CreateZendaT() = 0;

    /// Shows a message to the user: a message box in an interactive Windows process, standard error elsewhere.
    virtual void ShowMessage(std::string_view text) = 0;
};

} // namespace host
