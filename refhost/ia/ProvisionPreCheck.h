#pragma once

#include "refhost/ia/ComponentConnection.h"

#include <string>

namespace refhost {

/// The check whether provisions may be made now: not when inventory accounting has closed the login's month
/// (`GL_mend.bflag_IA`).
class ProvisionPreCheck final : public host::ProvisionPreCheck {
public:
    /// @param connection outlives the component
    ProvisionPreCheck(host::Environment& environment, ComponentConnection& connection)
        : environment_(environment), connection_(connection) {}

    bool Check(host::HostLogin& login, std::string& message) override;

private:
    host::Environment& environment_;
    ComponentConnection& connection_;
};

} // namespace refhost
