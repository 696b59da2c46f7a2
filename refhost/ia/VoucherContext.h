#pragma once

#include "host/VoucherComponents.h"

namespace refhost {

/// The setting that the reference host's voucher components work in: the caller's login, which outlives it.
class VoucherContext : public host::VoucherContext {
public:
    explicit VoucherContext(host::HostLogin& login) : login_(login) {}

    host::HostLogin& Login() override { return login_; }

private:
    host::HostLogin& login_;
};

} // namespace refhost
