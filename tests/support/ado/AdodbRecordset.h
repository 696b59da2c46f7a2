#pragma once

#include "host/Database.h"
#include "server/inproc/Automation.h"
#include "tests/support/ado/TraceFile.h"

#include <memory>

namespace test {

/// ADO's Recordset over an embedded account database.
class AdodbRecordset final : public server::Automation<AdodbRecordset> {
public:
    AdodbRecordset();

    const host::Recordset& recordset() const noexcept { return *recordset_; }

    /// `ActiveConnection` is an object; a connection string in its place is not taken.
    server::VariantHolder Open(const server::Arguments& arguments);
    server::VariantHolder Close(const server::Arguments&);
    server::VariantHolder MoveNext(const server::Arguments&);
    /// Into a document alone, and as XML alone.
    server::VariantHolder Save(const server::Arguments& arguments);
    server::VariantHolder AtEOF(const server::Arguments&);
    server::VariantHolder AtBOF(const server::Arguments&);
    server::VariantHolder RecordCount(const server::Arguments&);
    server::VariantHolder State(const server::Arguments&);
    server::VariantHolder CursorLocation(const server::Arguments& arguments);
    server::VariantHolder Fields(const server::Arguments& arguments);

    static constexpr server::Method<AdodbRecordset> methods[] = {
        {L"Open", 0, 5, &AdodbRecordset::Open},
        {L"Close", 0, 0, &AdodbRecordset::Close},
        {L"MoveNext", 0, 0, &AdodbRecordset::MoveNext},
        {L"Save", 1, 2, &AdodbRecordset::Save},
        {L"EOF", 0, 0, &AdodbRecordset::AtEOF},
        {L"BOF", 0, 0, &AdodbRecordset::AtBOF},
        {L"RecordCount", 0, 0, &AdodbRecordset::RecordCount},
        {L"State", 0, 0, &AdodbRecordset::State},
        {L"CursorLocation", 0, 1, &AdodbRecordset::CursorLocation, DISPATCH_PROPERTYGET | DISPATCH_PROPERTYPUT},
        {L"Fields", 0, 1, &AdodbRecordset::Fields},
    };

private:
    std::shared_ptr<refhost::Trace> trace_;
    std::unique_ptr<host::Recordset> recordset_;
};

} // namespace test
