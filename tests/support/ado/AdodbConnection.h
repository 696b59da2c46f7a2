#pragma once

#include "host/Database.h"
#include "server/inproc/Automation.h"
#include "tests/support/ado/TraceFile.h"

#include <memory>

namespace test {

/// ADO's Connection over an embedded account database.
class AdodbConnection final : public server::Automation<AdodbConnection> {
public:
    AdodbConnection();

    /// The connection behind `object`. Throws 3001 when that is no connection of this library.
    static host::Connection& Behind(const server::ComPtr<IDispatch>& object);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;

    server::VariantHolder Open(const server::Arguments& arguments);
    /// The recordset that it returns is closed, as ADO's is for a statement without rows: nobody here reads one.
    server::VariantHolder Execute(const server::Arguments& arguments);
    server::VariantHolder BeginTrans(const server::Arguments&);
    server::VariantHolder CommitTrans(const server::Arguments&);
    server::VariantHolder RollbackTrans(const server::Arguments&);
    server::VariantHolder Close(const server::Arguments&);
    server::VariantHolder State(const server::Arguments&);

    static constexpr server::Method<AdodbConnection> methods[] = {
        {L"Open", 0, 4, &AdodbConnection::Open},
        {L"Execute", 1, 3, &AdodbConnection::Execute},
        {L"BeginTrans", 0, 0, &AdodbConnection::BeginTrans},
        {L"CommitTrans", 0, 0, &AdodbConnection::CommitTrans},
        {L"RollbackTrans", 0, 0, &AdodbConnection::RollbackTrans},
        {L"Close", 0, 0, &AdodbConnection::Close},
        {L"State", 0, 0, &AdodbConnection::State},
    };

private:
    std::shared_ptr<refhost::Trace> trace_;
    std::unique_ptr<host::Connection> connection_;
    bool open_ = false;
};

} // namespace test
