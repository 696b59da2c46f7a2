#pragma once

#include "server/com/Platform.h"

#include <span>
#include <string>
#include <string_view>

namespace test {

/// A class as the registry shall name it.
struct RegisteredClass {
    const wchar_t* progId;
    const wchar_t* classId;
};

/// The classes of Kovra.dll, by the names and identifiers that clients know them by.
inline constexpr RegisteredClass kovraClasses[] = {
    {L"Kovra.ClsInvSubject", L"{36BFF491-8268-43F5-927F-F6B9E34CF10C}"},
    {L"Kovra.ClsOppSubject", L"{04EE14B4-1A08-42D1-8C8E-A9FA123CBD6E}"},
    {L"Kovra.ClsOppSubjectST", L"{9FFF41CD-6825-431C-A287-DE0377F1157F}"},
    {L"Kovra.ClsKovra", L"{E3DB20F9-17C7-4DE6-8C6A-D28B1E6EA042}"},
    {L"Kovra.ClsKovraProof", L"{8442F440-004F-4FFA-9128-5D8BCCA01D5B}"},
    {L"Kovra.ClsPriceJustVou", L"{13FE1BDB-97ED-45FB-B874-CA3962960540}"},
};
/// The one that cannot be created without the ERP's companion.
inline constexpr std::wstring_view needsCompanion = L"Kovra.ClsPriceJustVou";

/// The classes of KovraHost.dll, likewise.
inline constexpr RegisteredClass hostClasses[] = {
    {L"KovraHost.Login", L"{3ABDDCCC-D2EF-42FD-A85F-8FCB790D77B9}"},
    {L"KovraHost.EaiHelper", L"{6FAC9708-EEE6-482C-BCB4-74513B94C550}"},
    {L"KovraHost.EaiXmlConverter", L"{0D93E2E8-4765-4E1E-BA2A-6825F44E3CE5}"},
    {L"KovraHost.IaVoucherService", L"{1FED39BE-9B23-4BFF-9EB0-06CCBFF15468}"},
    {L"KovraHost.ProvisionPreCheck", L"{A1F723F9-9E7C-450C-9AA2-E5C66AD3A18C}"},
    {L"KovraHost.RsXmlHelper", L"{B88932AB-C1EE-4665-9202-110A9F3EF548}"},
    {L"ZendaTool.clsZendaT", L"{BF91FE03-CCE7-46A9-9190-153022EC755F}"},
};

/// Fails the running test unless `root` has the keys of all classes, as a library of this program's folder writes them.
/// @param typeLibrary the identifier of the classes' type library, empty for none
void ExpectRegistered(HKEY root, std::span<const RegisteredClass> classes, const std::wstring& file,
                      const std::wstring& typeLibrary);

/// Fails the running test when `root` has a key of one of the classes.
void ExpectNotRegistered(HKEY root, std::span<const RegisteredClass> classes);

} // namespace test
