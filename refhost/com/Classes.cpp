// The host's components and login as COM classes.
#include "refhost/com/EaiHelperObject.h"
#include "refhost/com/EaiXmlConverterObject.h"
#include "refhost/com/LoginObject.h"
#include "refhost/com/RsXmlHelperObject.h"
#include "refhost/com/VoucherServiceObjects.h"
#include "refhost/com/ZendaTObject.h"
#include "server/adapters/ProgIds.h"
#include "server/inproc/Exports.h"

namespace server {

namespace {

namespace com = refhost::com;

constexpr CLSID loginId = {0x3ABDDCCC, 0xD2EF, 0x42FD, {0xA8, 0x5F, 0x8F, 0xCB, 0x79, 0x0D, 0x77, 0xB9}};
constexpr CLSID eaiHelperId = {0x6FAC9708, 0xEEE6, 0x482C, {0xBC, 0xB4, 0x74, 0x51, 0x3B, 0x94, 0xC5, 0x50}};
constexpr CLSID eaiXmlConverterId = {0x0D93E2E8, 0x4765, 0x4E1E, {0xBA, 0x2A, 0x68, 0x25, 0xF4, 0x4E, 0x3C, 0xE5}};
constexpr CLSID iaVoucherServiceId = {0x1FED39BE, 0x9B23, 0x4BFF, {0x9E, 0xB0, 0x06, 0xCC, 0xBF, 0xF1, 0x54, 0x68}};
constexpr CLSID provisionPreCheckId = {0xA1F723F9, 0x9E7C, 0x450C, {0x9A, 0xA2, 0xE5, 0xC6, 0x6A, 0xD3, 0xA1, 0x8C}};
constexpr CLSID rsXmlHelperId = {0xB88932AB, 0xC1EE, 0x4665, {0x92, 0x02, 0x11, 0x0A, 0x9F, 0x3E, 0xF5, 0x48}};
constexpr CLSID zendaTId = {0xBF91FE03, 0xCCE7, 0x46A9, {0x91, 0x90, 0x15, 0x30, 0x22, 0xEC, 0x75, 0x5F}};

constexpr ClassEntry classes[] = {
    {&loginId, L"KovraHost.Login", &CreateObject<com::LoginObject>},
    {&eaiHelperId, progid::eaiHelper, &CreateObject<com::EaiHelperObject>},
    {&eaiXmlConverterId, progid::eaiXmlConverter, &CreateObject<com::EaiXmlConverterObject>},
    {&iaVoucherServiceId, progid::iaVoucherService, &CreateObject<com::IaVoucherServiceObject>},
    {&provisionPreCheckId, progid::provisionPreCheck, &CreateObject<com::ProvisionPreCheckObject>},
    {&rsXmlHelperId, progid::rsXmlHelper, &CreateObject<com::RsXmlHelperObject>},
    {&zendaTId, progid::zendaT, &CreateObject<com::ZendaTObject>},
};

} // namespace

const Registrant& LibraryContents() noexcept {
    static const Registrant contents{classes};
    return contents;
}

} // namespace server
