// The host of the machine: MSXML, ADO and the ERP's registered components, by the same adapters as Kovra.dll.
#include "cli/Host.h"
#include "cli/LoginFile.h"
#include "cli/Registered.h"
#include "os/WindowsApi.h"
#include "refhost/com/LoginObject.h"
#include "server/adapters/ComLogin.h"
#include "server/com/Utf16.h"
#include "server/inproc/Exports.h"
#include "server/trace/TracedComEnvironment.h"

#include <optional>
#include <utility>

namespace server {

// The program offers no class of its own.
const Registrant& LibraryContents() noexcept {
    static const Registrant contents{};
    return contents;
}

} // namespace server

namespace cli {
namespace {

using server::DispatchObject;
using server::VariantHolder;

/// COM for this thread, as an apartment-threaded client has it.
class Apartment {
public:
    Apartment() { server::ThrowIfFailed(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)); }
    ~Apartment() { CoUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

/// The login of a file as an automation object, which the ERP's components can be handed.
DispatchObject LoginObjectOf(const std::string& path, host::Environment& environment) {
    DispatchObject login(server::CreateObject<refhost::com::LoginObject>());
    login.Call(L"LoadXML", VariantHolder(ReadLoginXml(path, environment)));
    return login;
}

class ComHost final : public Host {
public:
    explicit ComHost(refhost::Trace* trace) : environment_(trace) {}

    host::Environment& environment() override { return environment_; }
    host::HostLogin& ReadLogin(const std::string& path) override {
        return login_.emplace(LoginObjectOf(path, environment_));
    }

private:
    Apartment apartment_;
    server::TracedComEnvironment environment_;
    std::optional<server::ComLogin> login_;
};

} // namespace

std::vector<std::string> HostNames() { return {"reference", "com"}; }

std::unique_ptr<Host> OpenHost(std::string_view name, refhost::Trace* trace, OnLoss onLoss, Commits commits) {
    if (name == "com") {
        return std::make_unique<ComHost>(trace);
    }
    return OpenReferenceHost(trace, std::move(onLoss), commits);
}

std::string TransactByRegistered(std::string_view className, const std::string& request, const std::string& login,
                                 const std::string& trace) {
    if (!trace.empty()) {
        SetEnvironmentVariableW(L"KOVRA_TRACE", server::ToUtf16(trace).c_str());
    }
    ComHost host(nullptr);
    const DispatchObject loginObject = LoginObjectOf(login, host.environment());
    const DispatchObject instance = DispatchObject::Create((L"Kovra." + server::ToUtf16(className)).c_str());
    return server::ToText(
        instance.Call(L"Transact", VariantHolder(request), VariantHolder(loginObject.object().Get())).Get());
}

} // namespace cli
