// The host's components and login as COM classes.
#include "refhost/com/EaiHelperObject.h"
#include "refhost/com/EaiXmlConverterObject.h"
#include "refhost/com/LoginObject.h"
#include "refhost/com/RsXmlHelperObject.h"
#include "refhost/com/VoucherServiceObjects.h"
#include "refhost/com/ZendaTObject.h"
#include "server/adapters/ProgIds.h"
#include "server/inproc/Exports.h"

#include <KovraHost.h>

namespace server {

namespace {

namespace com = refhost::com;

/// The identifier of the classes as an application.
constexpr GUID application = {0xE6867B85, 0x14A1, 0x46AE, {0x89, 0xB1, 0xE7, 0xC7, 0x20, 0x09, 0xFB, 0x76}};

constexpr ClassEntry classes[] = {
    {&CLSID_Login, L"KovraHost.Login", &CreateObject<com::LoginObject>},
    {&CLSID_EaiHelper, progid::eaiHelper, &CreateObject<com::EaiHelperObject>},
    {&CLSID_EaiXmlConverter, progid::eaiXmlConverter, &CreateObject<com::EaiXmlConverterObject>},
    {&CLSID_IaVoucherService, progid::iaVoucherService, &CreateObject<com::IaVoucherServiceObject>},
    {&CLSID_ProvisionPreCheck, progid::provisionPreCheck, &CreateObject<com::ProvisionPreCheckObject>},
    {&CLSID_RsXmlHelper, progid::rsXmlHelper, &CreateObject<com::RsXmlHelperObject>},
    {&CLSID_clsZendaT, progid::zendaT, &CreateObject<com::ZendaTObject>},
};

} // namespace

const Registrant& LibraryContents() noexcept {
    static const Registrant contents{.classes = classes,
                                     .typeLibrary = &LIBID_KovraHost,
                                     .typeLibraryName = L"KovraHost",
                                     .application = &application};
    return contents;
}

} // namespace server
