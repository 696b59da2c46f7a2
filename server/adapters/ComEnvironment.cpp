#include "server/adapters/ComEnvironment.h"

#include "server/adapters/AdoConnection.h"
#include "server/adapters/ComEaiHelper.h"
#include "server/adapters/ComVoucherComponents.h"
#include "server/adapters/ThreadHelpers.h"
#include "server/adapters/XmlDocument.h"
#include "server/com/Platform.h"
#include "server/com/Utf16.h"

namespace server {

namespace {

/// The helper in `place`, created on first use.
template <class Interface> Interface& Helped(std::unique_ptr<Interface>& place, std::unique_ptr<Interface> (*make)()) {
    if (!place) {
        std::unique_ptr<Interface> made = make();
        // Making it may have brought a call that made one, which somebody may hold.
        if (!place)
            place = std::move(made);
    }
    return *place;
}

bool IsInteractive() noexcept {
    USEROBJECTFLAGS flags{};
    return GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags, nullptr) &&
           (flags.dwFlags & WSF_VISIBLE) != 0;
}

void WriteToStandardError(std::string_view text) noexcept {
    const HANDLE output = GetStdHandle(STD_ERROR_HANDLE);
    DWORD written = 0;
    WriteFile(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    WriteFile(output, "\r\n", 2, &written, nullptr);
}

} // namespace

std::unique_ptr<host::DOMDocument> ComEnvironment::CreateDOMDocument() { return std::make_unique<XmlDocument>(); }
std::unique_ptr<host::Connection> ComEnvironment::CreateConnection() { return std::make_unique<AdoConnection>(); }
std::unique_ptr<host::Recordset> ComEnvironment::CreateRecordset() {
    return std::make_unique<AdoRecordset>(Classes().recordsets);
}
host::EaiHelper& ComEnvironment::GetEaiHelper() {
    return Helped(ThreadHelpers::OfThisThread().eaiHelper, MakeEaiHelper);
}

host::RsXmlHelper& ComEnvironment::GetRsXmlHelper() {
    return Helped(ThreadHelpers::OfThisThread().rsXmlHelper, MakeRsXmlHelper);
}

std::unique_ptr<host::EaiXmlConverter> ComEnvironment::CreateEaiXmlConverter() {
    return MakeEaiXmlConverter(Classes());
}

std::unique_ptr<host::IaVoucherService> ComEnvironment::CreateIaVoucherService() {
    return MakeIaVoucherService(Classes());
}

std::unique_ptr<host::ProvisionPreCheck> ComEnvironment::CreateProvisionPreCheck() {
    return MakeProvisionPreCheck(Classes());
}

std::unique_ptr<host::ZendaT> ComEnvironment::CreateZendaT() { return MakeZendaT(); }

RecordClasses& ComEnvironment::Classes() {
    if (!classes_)
        classes_ = std::make_unique<RecordClasses>();
    return *classes_;
}

void ComEnvironment::ShowMessage(std::string_view text) {
    // A box that cannot be shown after all, on a desktop without a display, answers 0.
    if (!IsInteractive() || MessageBoxW(nullptr, ToUtf16(text).c_str(), L"Kovra", MB_OK | MB_TASKMODAL) == 0)
        WriteToStandardError(text);
}

} // namespace server
