// The two classes of ADO that are created by name.
#include "server/inproc/Exports.h"
#include "tests/support/ado/AdodbConnection.h"
#include "tests/support/ado/AdodbRecordset.h"

namespace server {

namespace {

constexpr CLSID connectionId = {0x6D6A5B5E, 0x3A0F, 0x4B7C, {0x9B, 0x55, 0x14, 0x0A, 0x2F, 0x8C, 0x61, 0xD1}};
constexpr CLSID recordsetId = {0xB2C0E0B7, 0x90C4, 0x4E0D, {0xA6, 0x3B, 0x77, 0x5E, 0x0D, 0x41, 0xC9, 0x32}};

constexpr ClassEntry classes[] = {
    {&connectionId, L"ADODB.Connection", &CreateObject<test::AdodbConnection>},
    {&recordsetId, L"ADODB.Recordset", &CreateObject<test::AdodbRecordset>},
};

} // namespace

const Registrant& LibraryContents() noexcept {
    static const Registrant contents{classes};
    return contents;
}

} // namespace server
