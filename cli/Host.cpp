#include "cli/Host.h"

#include "cli/LoginFile.h"
#include "refhost/Environment.h"
#include "refhost/OpenDatabase.h"
#include "refhost/ado/LossWatch.h"
#include "refhost/trace/Traced.h"

#include <optional>
#include <utility>

namespace cli {
namespace {

refhost::DatabaseOpener Opener(OnLoss onLoss, Commits commits) {
    refhost::DatabaseOpener opener = commits == Commits::durably ? refhost::OpenDurably() : refhost::OpenExisting();
    return onLoss ? refhost::TellingOfLoss(std::move(opener), std::move(onLoss)) : opener;
}

class ReferenceHost final : public Host {
public:
    ReferenceHost(refhost::Trace* trace, OnLoss onLoss, Commits commits)
        : environment_(trace, Opener(std::move(onLoss), commits)) {}

    host::Environment& environment() override { return environment_; }
    host::HostLogin& ReadLogin(const std::string& path) override {
        return login_.emplace(cli::ReadLogin(path, environment_));
    }

private:
    refhost::Traced<refhost::Environment> environment_;
    std::optional<refhost::Login> login_;
};

} // namespace

std::unique_ptr<Host> OpenReferenceHost(refhost::Trace* trace, OnLoss onLoss, Commits commits) {
    return std::make_unique<ReferenceHost>(trace, std::move(onLoss), commits);
}

} // namespace cli
