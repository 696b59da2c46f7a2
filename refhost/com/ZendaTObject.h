#pragma once

#include "refhost/ia/ZendaT.h"
#include "server/adapters/AdoConnection.h"
#include "server/adapters/ComEnvironment.h"
#include "server/inproc/Automation.h"

#include <optional>

namespace refhost::com {

/// `ZendaTool.clsZendaT`. A context that is Nothing throws 91 in the operations that need one.
class ZendaTObject final : public server::Automation<ZendaTObject> {
public:
    /// Message, context, connection.
    server::VariantHolder AllowAdd(const server::Arguments& arguments);
    /// Recordset, connection, statement.
    server::VariantHolder OpenDBS(const server::Arguments& arguments);
    /// Work table, result table, context, connection, voucher, flag.
    server::VariantHolder Update(const server::Arguments& arguments);
    /// Card, connection.
    server::VariantHolder GetDefaultTemplateID(const server::Arguments& arguments);
    /// Context, voucher type, voucher data, two flags.
    server::VariantHolder GetVouchNum(const server::Arguments& arguments);
    /// Head, rows, mode, message, connection, flag, context.
    server::VariantHolder Save(const server::Arguments& arguments);
    /// Connection, flag.
    server::VariantHolder GetMaxID(const server::Arguments& arguments);
    /// Head, rows, context, connection, flag, message.
    server::VariantHolder DoAccount(const server::Arguments& arguments);

    static constexpr server::Method<ZendaTObject> methods[] = {
        {L"AllowAdd", 3, 3, &ZendaTObject::AllowAdd},
        {L"OpenDBS", 3, 3, &ZendaTObject::OpenDBS},
        {L"Update", 6, 6, &ZendaTObject::Update},
        {L"GetDefaultTemplateID", 2, 2, &ZendaTObject::GetDefaultTemplateID},
        {L"GetVouchNum", 5, 5, &ZendaTObject::GetVouchNum},
        {L"save", 7, 7, &ZendaTObject::Save},
        {L"GetMaxID", 2, 2, &ZendaTObject::GetMaxID},
        {L"DoAccount", 6, 6, &ZendaTObject::DoAccount},
    };

private:
    /// The connection in `argument`, which the component remembers as its latest.
    host::Connection& Connection(const VARIANT& argument);

    server::ComEnvironment environment_;
    refhost::ZendaT companion_{environment_};
    /// Always in the same place, since the component keeps a pointer to it.
    std::optional<server::AdoConnection> latestConnection_;
};

} // namespace refhost::com
