#pragma once

/// The names by which everything outside is created.
namespace server::progid {

// The platform's.
inline constexpr const wchar_t* domDocument = L"Msxml2.DOMDocument";
inline constexpr const wchar_t* connection = L"ADODB.Connection";
inline constexpr const wchar_t* recordset = L"ADODB.Recordset";

// The host's.
inline constexpr const wchar_t* eaiHelper = L"KovraHost.EaiHelper";
inline constexpr const wchar_t* eaiXmlConverter = L"KovraHost.EaiXmlConverter";
inline constexpr const wchar_t* iaVoucherService = L"KovraHost.IaVoucherService";
inline constexpr const wchar_t* provisionPreCheck = L"KovraHost.ProvisionPreCheck";
inline constexpr const wchar_t* rsXmlHelper = L"KovraHost.RsXmlHelper";
inline constexpr const wchar_t* zendaT = L"ZendaTool.clsZendaT";

} // namespace server::progid
